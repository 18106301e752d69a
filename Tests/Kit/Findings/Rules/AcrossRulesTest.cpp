#include "Kit/Findings/Rules/AcrossRules.h"

#include "../FindingLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::string_view Plain =
    "<PropertyDef><Name>Plain</Name><Definition>D</"
    "Definition><PropertyType><TypePropertySingleValue><DataType "
    "type=\"IfcLabel\"/></TypePropertySingleValue></PropertyType></PropertyDef>";

/// The set's name is in line 2, column 35; its members begin in line 3, column 15.
std::string sSetOf(std::string_view name, std::string_view members = {}, std::string_view guid = {}) {
    return "<PropertySetDef" + (guid.empty() ? "" : " ifdguid=\"" + std::string(guid) + "\"") +
           ">\n<IfcVersion version=\"IFC4\"/><Name>" + std::string(name) +
           "</Name><Definition>B</Definition><ApplicableClasses><ClassName>IfcWall</ClassName></"
           "ApplicableClasses>\n"
           "<PropertyDefs>" +
           std::string(members.empty() ? Plain : members) + "</PropertyDefs>\n</PropertySetDef>\n";
}

/// "<PropertyDef><Name>" has 19 characters.
std::string sProperty(std::string_view name, std::string_view kind, std::string_view guid = {}) {
    return "<PropertyDef" + (guid.empty() ? "" : " ifdguid=\"" + std::string(guid) + "\"") + "><Name>" +
           std::string(name) + "</Name><Definition>D</Definition><PropertyType>" + std::string(kind) +
           "</PropertyType></PropertyDef>";
}

std::string sSingle(std::string_view type) {
    return "<TypePropertySingleValue><DataType type=\"" + std::string(type) +
           "\"/></TypePropertySingleValue>";
}

std::string sEnumeration(std::string_view name, std::initializer_list<std::string_view> items) {
    std::string list = "<TypePropertyEnumeratedValue><EnumList name=\"" + std::string(name) + "\">";
    for (const auto item : items)
        list.append("<EnumItem>").append(item).append("</EnumItem>");
    return list + "</EnumList></TypePropertyEnumeratedValue>";
}

/// The files as one text, as examples have them; without names they are A.xml, B.xml and so on.
std::string sFiles(const std::vector<std::string>& files, std::vector<std::string> paths = {}) {
    std::string text;
    for (std::size_t i = 0; i != files.size(); ++i)
        text += "---- " +
                (i < paths.size() ? paths[i] : std::string(1, static_cast<char>('A' + i)) + ".xml") + "\n" +
                files[i];
    return text;
}

std::vector<std::string> linesBetween(const std::string& text) {
    std::vector<std::string> lines;
    for (const auto& finding : test::findingsBetween(text))
        lines.push_back(
            finding.place.path + ":" + test::sFindingLine(finding) +
            (finding.notes.empty() || !finding.notes[0].place ? "" : " " + finding.notes[0].place->path));
    return lines;
}

constexpr std::string_view Guid1 = "11111111-2222-3333-4444-555555555555";

TEST(AcrossRules, FindsTwoSetsOfOneName) {
    EXPECT_THAT(
        linesBetween(sFiles({sSetOf("Pset_A"), sSetOf("Pset_B"), sSetOf("PSET_A")})),
        ElementsAre(
            "C.xml:2:35+6 error X001 there are two sets \"PSET_A\" | the other one is \"Pset_A\" @2:35 "
            "A.xml"));
}

TEST(AcrossRules, NotesASetThatHidesAnother) {
    const auto files = sFiles({sSetOf("Pset_A"), sSetOf("Pset_A"), sSetOf("Pset_A")},
                              {"standard/A.xml", "office/A.xml", "office/B.xml"});
    EXPECT_THAT(linesBetween(files),
                ElementsAre("office/A.xml:2:35+6 note X002 there is a set \"Pset_A\" in the context "
                            "\"standard\" too | the other "
                            "one is \"Pset_A\" @2:35 standard/A.xml",
                            "office/B.xml:2:35+6 error X001 there are two sets \"Pset_A\" | the other one is "
                            "\"Pset_A\" @2:35 office/A.xml"));
}

TEST(AcrossRules, FindsEnumerationsWithOtherItems) {
    const auto one = sProperty("P", sEnumeration("PEnum_E", {"X", "Y"}));
    const auto other = sProperty("Q", sEnumeration("PEnum_E", {"Y", "Z"}));
    // 14 + 19 + 1 + "</Name><Definition>D</Definition><PropertyType>" (47) + "<TypePropertyEnumeratedValue>"
    // (29) +
    // "<EnumList name="" (16), so that the name begins in column 127.
    EXPECT_THAT(
        linesBetween(sFiles({sSetOf("A", one), sSetOf("B", other)})),
        ElementsAre(
            "B.xml:3:127+7 warning X003 the enumeration \"PEnum_E\" has other items elsewhere | it is "
            "here too @3:127 | only the one here has \"Z\" | only the other has \"X\" A.xml"));
}

TEST(AcrossRules, PassesOverEnumerationsWithoutItems) {
    const auto one = sProperty("P", sEnumeration("PEnum_E", {"X", "Y"}));
    const auto empty = sProperty("Q", sEnumeration("PEnum_E", {}));
    // Nothing between them.
    EXPECT_THAT(linesBetween(sFiles({sSetOf("A", one), sSetOf("B", empty)})),
                ElementsAre(testing::HasSubstr(" warning T009 ")));
}

TEST(AcrossRules, TakesTheItemsThatMostHaveForTheRightOnes) {
    const auto one = sProperty("P", sEnumeration("PEnum_E", {"X"}));
    const auto other = sProperty("P", sEnumeration("E", {"X", "Y"}));
    EXPECT_THAT(
        linesBetween(sFiles({sSetOf("A", one), sSetOf("B", other), sSetOf("C", other)})),
        ElementsAre(
            "A.xml:3:127+7 warning X003 the enumeration \"PEnum_E\" has other items elsewhere | it is here "
            "too @3:127 | only the other has \"Y\" B.xml"));
}

TEST(AcrossRules, TakesEnumerationsOfOtherContextsAndOrdersForWhatTheyAre) {
    const auto one = sProperty("P", sEnumeration("PEnum_E", {"X", "Y"}));
    const auto turned = sProperty("Q", sEnumeration("PEnum_E", {"Y", "X"}));
    const auto other = sProperty("R", sEnumeration("PEnum_E", {"Z"}));
    EXPECT_THAT(linesBetween(sFiles({sSetOf("A", one), sSetOf("B", turned)})), IsEmpty());
    EXPECT_THAT(
        linesBetween(sFiles({sSetOf("A", one), sSetOf("B", other)}, {"standard/A.xml", "office/B.xml"})),
        IsEmpty());
}

TEST(AcrossRules, NotesNamesThatDifferInCase) {
    const auto one = sProperty("Width", sSingle("IfcReal"));
    const auto other = sProperty("width", sSingle("IfcReal"));
    EXPECT_THAT(
        linesBetween(sFiles({sSetOf("A", one), sSetOf("B", other), sSetOf("C", other)})),
        ElementsAre("B.xml:3:34+5 note X004 the name \"width\" differs from \"Width\" in letter case only | "
                    "\"Width\" is here @3:34 A.xml"));
}

TEST(AcrossRules, FindsAGuidInTwoDocuments) {
    const auto one = sProperty("P", sSingle("IfcReal"), Guid1);
    const auto other = sProperty("Q", sSingle("IfcReal"), Guid1);
    // "<PropertyDefs>" and "<PropertyDef ifdguid="" have 14 and 22 characters.
    EXPECT_THAT(
        linesBetween(sFiles({sSetOf("A", one), sSetOf("B", other)})),
        ElementsAre(
            "B.xml:3:37+36 error G101 the GUID of the member \"B.Q\" is in another document too | it is "
            "used here @3:37 A.xml"));
}

TEST(AcrossRules, FindsTheGuidOfASetInTwoDocuments) {
    EXPECT_THAT(
        linesBetween(sFiles({sSetOf("A", {}, Guid1), sSetOf("B", {}, Guid1)})),
        ElementsAre("B.xml:1:26+36 warning G101 the GUID of the set \"B\" is in another document too | it is "
                    "used here @1:26 A.xml"));
}

TEST(AcrossRules, CountsTheNullGuidAndThoseOfCopiesAsNothing) {
    const auto null = sProperty("P", sSingle("IfcReal"), "00000000-0000-0000-0000-000000000000");
    EXPECT_THAT(linesBetween(sFiles({sSetOf("A", null), sSetOf("B", null)})), IsEmpty());
    const auto one = sProperty("P", sSingle("IfcReal"), Guid1);
    EXPECT_THAT(linesBetween(sFiles({sSetOf("A", one), sSetOf("A", one)})), SizeIs(1));
}

TEST(AcrossRules, NotesTheRarerTypeOfAName) {
    const auto label = sProperty("P", sSingle("IfcLabel"));
    const auto text = sProperty("P", sSingle("IfcText"));
    EXPECT_THAT(
        linesBetween(sFiles({sSetOf("A", text), sSetOf("B", label), sSetOf("C", label)})),
        ElementsAre("A.xml:3:34+1 note D003 \"P\" is a single value of IfcText here and a single value of "
                    "IfcLabel in other sets | here it is a single value of IfcLabel @3:34 B.xml"));
}

TEST(AcrossRules, KeepsALimitedNumberOfFindings) {
    AcrossDocuments across;
    constexpr std::size_t Documents = AcrossRun::maxFindingsPerCode + 10;
    for (std::size_t i = 0; i != Documents; ++i)
        across.vAdd(setTextRead("<PropertySetDef><Name>A</Name></PropertySetDef>", std::to_string(i)));
    EXPECT_THAT(across.getFindings(), SizeIs(AcrossRun::maxFindingsPerCode));
}

} // namespace

} // namespace kiv::kit
