#include "Kit/Findings/Rules/ClassRules.h"

#include "../FindingLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A set whose classes begin in line 3, column 1.
std::string sSetOf(std::string_view classes, std::string_view typeValue = {},
                   std::string_view release = "IFC4") {
    return "<PropertySetDef>\n<IfcVersion version=\"" + std::string(release) +
           "\"/><Name>A</Name><Definition>B</Definition>\n" + std::string(classes) +
           "\n<ApplicableTypeValue>" + std::string(typeValue) +
           "</ApplicableTypeValue><PropertyDefs><PropertyDef><Name>P</Name><Definition>D</"
           "Definition><PropertyType><TypePropertySingleValue><DataType "
           "type=\"IfcLabel\"/></TypePropertySingleValue></PropertyType></PropertyDef></PropertyDefs>\n</"
           "PropertySetDef>\n";
}

/// The first class begins in column 31.
std::string sClasses(std::initializer_list<std::string_view> names, std::string_view typeValue = {},
                     std::string_view release = "IFC4") {
    std::string classes = "<ApplicableClasses>";
    for (const auto name : names)
        classes.append("<ClassName>").append(name).append("</ClassName>");
    return sSetOf(classes + "</ApplicableClasses>", typeValue, release);
}

struct ClassCase {
    const char* about;
    std::string document;
    std::vector<std::string> findings;
};

void PrintTo(const ClassCase& row, std::ostream* out) {
    *out << row.about;
}

class ClassRulesTest : public testing::TestWithParam<ClassCase> {};

TEST_P(ClassRulesTest, FindsExactly) {
    EXPECT_EQ(test::findingLines(GetParam().document), GetParam().findings);
}

const std::string Unknown =
    " | the library reports: Applicable class in xml set is not defined in schema (contain spaces?)";
const std::string NoneOnEntity =
    " | the library reports: Predefined type set on xml set, but no \"PredefinedType\" "
    "attribute found on entity";
const std::string Illegal =
    " | the library reports: Predefined type set on xml set, but the value is illegal for "
    "this enumeration";
const std::string OnlyUnrestricted =
    "without classes the set is listed only where sets without restriction are asked for";

/// In the order of the schema.
const std::string TypesOfWall = "the predefined types of IfcWall are \"MOVABLE\", \"PARAPET\", "
                                "\"PARTITIONING\", \"SOLIDWALL\", \"STANDARD\", \"USERDEFINED\" and "
                                "\"NOTDEFINED\"";

INSTANTIATE_TEST_SUITE_P(
    Names, ClassRulesTest,
    testing::ValuesIn<std::vector<ClassCase>>({
        {"unknown, with the nearest",
         sClasses({"IfcWal"}),
         {"3:31+6 error C001 IFC4 has no entity \"IfcWal\" | did you mean \"IfcWall\"?" + Unknown}},
        {"in another release",
         sClasses({"IfcBuildingElementComponent"}),
         {"3:31+27 error C001 IFC4 has no entity \"IfcBuildingElementComponent\" | IFC2X3 has it" + Unknown}},
        {"several in one",
         sClasses({"IfcWall, IfcSlab"}),
         {"3:31+16 error C001 IFC4 has no entity \"IfcWall, IfcSlab\" | each \"ClassName\" names one class" +
          Unknown}},
        {"several with blanks between them",
         sClasses({"IfcWal IfcSlab"}),
         {"3:31+14 error C001 IFC4 has no entity \"IfcWal IfcSlab\" | each \"ClassName\" names one class" +
          Unknown}},
        {"a blank inside a name",
         sClasses({"If cWall"}),
         {"3:31+8 error C001 IFC4 has no entity \"If cWall\" | did you mean \"IfcWall\"?" + Unknown}},
        {"a blank inside a name, after that of another class",
         sClasses({"IfcMaterial Definition"}),
         {"3:31+22 error C001 IFC4 has no entity \"IfcMaterial Definition\" | did you mean "
          "\"IfcMaterialDefinition\"?" +
          Unknown}},
        {"a defined type",
         sClasses({"IfcLabel"}),
         {"3:31+8 error C002 \"IfcLabel\" is a defined type, not an entity" + Unknown}},
        {"letter case",
         sClasses({"ifcwall"}),
         {"3:31+7 error C003 the class \"ifcwall\" is written \"IfcWall\" in IFC4 | look-ups by class "
          "compare letter "
          "case, so the set is not found for IfcWall"}},
        {"repeated",
         sClasses({"IfcWall", "IfcWall"}),
         {"3:61+7 warning C004 the class \"IfcWall\" is listed twice | it is here already @3:31"}},
        {"with its supertype",
         sClasses({"IfcWall", "IfcElement"}),
         {"3:31+7 note C005 \"IfcWall\" is listed with its supertype \"IfcElement\" | the supertype is here; "
          "it "
          "includes every IfcWall @3:61"}},
        {"repeated beside its supertype",
         sClasses({"IfcWall", "IfcElement", "IfcWall"}),
         {"3:31+7 note C005 \"IfcWall\" is listed with its supertype \"IfcElement\" | the supertype is here; "
          "it includes every IfcWall @3:61",
          "3:94+7 warning C004 the class \"IfcWall\" is listed twice | it is here already @3:31"}},
        {"with a part of its supertype", sClasses({"IfcWallStandardCase", "IfcWall/SOLIDWALL"}), {}},
        {"one is empty",
         sClasses({"", "IfcWall"}),
         {"3:21+9 warning C006 the class name is empty and is ignored"}},
        {"all are empty",
         sClasses({" "}),
         {"3:21+9 warning C006 the class name is empty and is ignored | no class is left: " +
          OnlyUnrestricted}},
        {"none in the list",
         sSetOf("<ApplicableClasses/>"),
         {"3:2+17 note C007 the set names no class that it applies to | " + OnlyUnrestricted}},
        {"no list",
         sSetOf(""),
         {"1:2+14 note C007 the set names no class that it applies to | " + OnlyUnrestricted}},
        {"blanks around", sClasses({"  IfcWall/SOLIDWALL "}), {}},
    }));

INSTANTIATE_TEST_SUITE_P(
    PredefinedTypes, ClassRulesTest,
    testing::ValuesIn<std::vector<ClassCase>>({
        {"illegal",
         sClasses({"IfcSlab/WINDOW"}),
         {"3:31+14 error C008 \"WINDOW\" is no predefined type of IfcSlab | the predefined types of IfcSlab "
          "are "
          "\"FLOOR\", \"ROOF\", \"LANDING\", \"BASESLAB\", \"USERDEFINED\" and \"NOTDEFINED\"" +
          Illegal}},
        {"nearly legal",
         sClasses({"IfcSlab/FLOR"}),
         {"3:31+12 error C008 \"FLOR\" is no predefined type of IfcSlab | did you mean \"FLOOR\"? | the "
          "predefined "
          "types of IfcSlab are \"FLOOR\", \"ROOF\", \"LANDING\", \"BASESLAB\", \"USERDEFINED\" and "
          "\"NOTDEFINED\"" +
          Illegal}},
        {"of a supertype", sClasses({"IfcWallStandardCase/SOLIDWALL"}), {}},
        {"on an entity without",
         sClasses({"IfcDoor/GATE"}),
         {"3:31+12 error C009 IfcDoor has no predefined types, so \"GATE\" is none of them" + NoneOnEntity}},
        {"nothing after the slash",
         sClasses({"IfcWall/"}),
         {"3:31+8 warning C008 nothing comes after \"/\" in \"IfcWall/\", where a predefined type belongs"}},
        {"older spelling of the domain",
         sClasses({"IFCSHAREDBLDGELEMENTS/IfcWall"}),
         {"3:31+29 error C011 \"IFCSHAREDBLDGELEMENTS/IfcWall\" is the older spelling DOMAIN/Class | "
          "the class is written without its domain now: \"IfcWall\"" +
          Unknown}},
        {"older spelling of the predefined type",
         sClasses({"IfcWall.PredefinedType=\"SOLIDWALL\""}),
         {"3:31+34 error C012 \"IfcWall.PredefinedType=\"SOLIDWALL\"\" is the older spelling "
          "Class.PredefinedType=\"X\" | today it is written \"IfcWall/SOLIDWALL\"" +
          Unknown}},
        {"older spelling of the domain, with an unknown class",
         sClasses({"IFCSHAREDBLDGELEMENTS/IfcWal"}),
         {"3:31+28 error C011 \"IFCSHAREDBLDGELEMENTS/IfcWal\" is the older spelling DOMAIN/Class | "
          "IFC4 has no entity \"IfcWal\" | did you mean \"IfcWall\"?" +
          Unknown}},
        {"older spelling of the predefined type, with an unknown class",
         sClasses({"IfcWal.PredefinedType=\"SOLIDWALL\""}),
         {"3:31+33 error C012 \"IfcWal.PredefinedType=\"SOLIDWALL\"\" is the older spelling "
          "Class.PredefinedType=\"X\" | IFC4 has no entity \"IfcWal\" | did you mean \"IfcWall\"?" +
          Unknown}},
        {"older spelling of an unknown predefined type",
         sClasses({"IfcWall.PredefinedType=\"SOLIDWAL\""}),
         {"3:31+33 error C012 \"IfcWall.PredefinedType=\"SOLIDWAL\"\" is the older spelling "
          "Class.PredefinedType=\"X\" | \"SOLIDWAL\" is no predefined type of IfcWall | did you mean "
          "\"SOLIDWALL\"? | " +
          TypesOfWall + Unknown}},
        {"a point in place of the slash",
         sClasses({"IfcWall.SOLIDWALL"}),
         {"3:31+17 error C001 IFC4 has no entity \"IfcWall.SOLIDWALL\" | write it as \"IfcWall/SOLIDWALL\"" +
          Unknown}},
        {"a backslash in place of the slash",
         sClasses({"IfcWall\\SOLIDWALL"}),
         {"3:31+17 error C001 IFC4 has no entity \"IfcWall\\SOLIDWALL\" | write it as \"IfcWall/SOLIDWALL\"" +
          Unknown}},
        {"colons in place of the slash",
         sClasses({"IfcWall::SOLIDWALL"}),
         {"3:31+18 error C001 IFC4 has no entity \"IfcWall::SOLIDWALL\" | write it as \"IfcWall/SOLIDWALL\"" +
          Unknown}},
        {"a backslash, and a misspelt predefined type",
         sClasses({"IfcWall\\SOLIDWAL"}),
         {"3:31+16 error C001 IFC4 has no entity \"IfcWall\\SOLIDWAL\" | \"/\" separates a class from its "
          "predefined "
          "type | did you mean \"SOLIDWALL\"?" +
          Unknown}},
        {"a domain before a colon",
         sClasses({"IfcSharedBldgElements:IfcWall"}),
         {"3:31+29 error C011 \"IfcSharedBldgElements:IfcWall\" is the older spelling DOMAIN/Class | the "
          "class is "
          "written without its domain now: \"IfcWall\"" +
          Unknown}},
        {"a letter of another script",
         sClasses({"IfcW\u0430ll"}),
         {"3:31+7 error C001 IFC4 has no entity \"IfcW\u0430ll\" | did you mean \"IfcWall\"? | character 5 "
          "is U+0430, "
          "a letter of Cyrillic that looks like \"a\"" +
          Unknown}},
        {"an older spelling without quotes",
         sClasses({"IfcWall.PredefinedType=SOLIDWALL"}),
         {"3:31+32 error C001 IFC4 has no entity \"IfcWall.PredefinedType=SOLIDWALL\" | write it as "
          "\"IfcWall/SOLIDWALL\"" +
          Unknown}},
        {"no class before the slash",
         sClasses({"/SOLIDWALL"}),
         {"3:31+10 error C001 nothing is before \"/\" in \"/SOLIDWALL\", where a class belongs" + Unknown}},
    }));

TEST(ClassRules, OlderSpellingsAreMendedOnlyWhereBothNamesAreRight) {
    const std::pair<const char*, const char*> rows[] = {
        {"IFCSHAREDBLDGELEMENTS/IfcWall/SOLIDWALL", "IfcWall/SOLIDWALL"},
        {"IfcWall.PredefinedType=\"SOLIDWALL\"", "IfcWall/SOLIDWALL"},
        {"IFCSHAREDBLDGELEMENTS/IfcWall", "IfcWall"},
        {"IFCSHAREDBLDGELEMENTS/IfcWal", nullptr},
        {"IfcWal.PredefinedType=\"SOLIDWALL\"", nullptr},
        {"IfcWall.PredefinedType=\"SOLIDWAL\"", nullptr},
        {"IfcWall.SOLIDWALL", nullptr},
    };
    for (const auto& [name, mended] : rows) {
        const auto text = sClasses({name});
        EXPECT_EQ(test::sMended(text), mended ? sClasses({mended}) : text) << name;
    }
}

TEST(ClassRules, FindsWhiteSpaceThatBecomesAPartOfTheName) {
    const auto lines = test::findingLines(sClasses({"\nIfcWall\n"}));
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_TRUE(lines[0].starts_with("4:1+7 error C010 there is white space in the class name \"IfcWall\""))
        << lines[0];
}

INSTANTIATE_TEST_SUITE_P(
    TypeValues, ClassRulesTest,
    testing::ValuesIn<std::vector<ClassCase>>({
        {"another class",
         sClasses({"IfcWall"}, "IfcSlab"),
         {"4:22+7 warning C013 the applicable type value \"IfcSlab\" contradicts the "
          "applicable classes | the classes "
          "are \"IfcWall\" @3:2"}},
        {"another predefined type",
         sClasses({"IfcWall/SOLIDWALL"}, "IfcWall/PARAPET"),
         {"4:22+15 warning C013 the applicable type value \"IfcWall/PARAPET\" "
          "contradicts the applicable classes | "
          "the classes are \"IfcWall/SOLIDWALL\" @3:2"}},
        {"one of several is another class",
         sClasses({"IfcWall"}, "IfcWall | IfcSlab"),
         {"4:32+7 warning C013 the applicable type value \"IfcSlab\" contradicts the "
          "applicable classes | the "
          "classes are \"IfcWall\" @3:2"}},
        {"an unknown class",
         sClasses({"IfcWall"}, "IfcWal"),
         {"4:22+6 warning C013 the applicable type value \"IfcWal\" contradicts the "
          "applicable classes | the classes "
          "are \"IfcWall\" @3:2 | did you mean \"IfcWall\"?"}},
        {"another mark",
         sClasses({"IfcWall"}, "IfcWall\\SOLIDWALL"),
         {"4:22+17 note C014 the applicable type value is not written as readers expect it | "
          "today it is written \"IfcWall/SOLIDWALL\""}},
        {"a colon, and a semicolon between classes",
         sClasses({"IfcWall"}, "IfcWall:SOLIDWALL; ifcslab"),
         {"4:22+26 note C014 the applicable type value is not written as readers expect it | "
          "today it is written \"IfcWall/SOLIDWALL,IfcSlab\""}},
        {"a domain",
         sClasses({"IfcWall"}, "IfcSharedBldgElements/IfcWall"),
         {"4:22+29 note C014 the applicable type value is not written as readers expect it | "
          "today it is written \"IfcWall\""}},
        {"a letter of another script",
         sClasses({"IfcWall"}, "IfcW\u0430ll"),
         {"4:22+7 warning C013 the applicable type value \"IfcW\u0430ll\" names no class | did "
          "you mean \"IfcWall\"? | character 5 is U+0430, a letter of Cyrillic that looks like "
          "\"a\""}},
        {"a predefined type that the class does not have",
         sClasses({"IfcWall"}, "IfcWall/SHEER"),
         {"4:30+5 warning C008 \"SHEER\" is no predefined type of IfcWall | " + TypesOfWall}},
        {"the same in the older spelling",
         sClasses({"IfcWall"}, "IfcWall.PredefinedType=\"SHEER\""),
         {"4:46+5 warning C008 \"SHEER\" is no predefined type of IfcWall | " + TypesOfWall}},
        {"the same with a class that has another one",
         sClasses({"IfcWall/SOLIDWALL"}, "IfcWall/SHEER"),
         {"4:30+5 warning C008 \"SHEER\" is no predefined type of IfcWall | " + TypesOfWall}},
        {"each of several",
         sClasses({"IfcWall"}, "IfcWall/SHEER,IfcWall/SOLIDWALL,IfcWall/PARAPETT"),
         {"4:30+5 warning C008 \"SHEER\" is no predefined type of IfcWall | " + TypesOfWall,
          "4:62+8 warning C008 \"PARAPETT\" is no predefined type of IfcWall | did you mean \"PARAPET\"? | " +
              TypesOfWall}},
        {"a predefined type in another letter case",
         sClasses({"IfcWall"}, "IfcWall/solidWall"),
         {"4:30+9 warning C008 \"solidWall\" is no predefined type of IfcWall | did you mean \"SOLIDWALL\"? "
          "| " +
          TypesOfWall}},
        {"a class in another letter case",
         sClasses({"IfcWall"}, "IFCWALL/SOLIDWALL"),
         {"4:22+7 warning C003 the class \"IFCWALL\" is written \"IfcWall\" in IFC4"}},
        {"a predefined type of a class that has none",
         sClasses({"IfcDoor"}, "IfcDoor/GATE"),
         {"4:30+4 warning C009 IfcDoor has no predefined types, so \"GATE\" is none of them"}},
        {"what is a mistake of the class already",
         sClasses({"IfcWall/SHEER"}, "IfcWall/SHEER"),
         {"3:31+13 error C008 \"SHEER\" is no predefined type of IfcWall | " + TypesOfWall + Illegal}},
        {"the letter case of the class",
         sClasses({"ifcwall"}, "ifcwall"),
         {"3:31+7 error C003 the class \"ifcwall\" is written \"IfcWall\" in IFC4 | look-ups by class "
          "compare letter case, so the set is not found for IfcWall"}},
        {"words after a colon", sClasses({"IfcWall"}, "IfcWall: of any kind"), {}},
        {"another relation", sClasses({"IfcWall"}, "RelatedEntityIs:IfcSlab.PredefinedType=\"X\""), {}},
        {"the same", sClasses({"IfcWall", "IfcSlab"}, "IfcWall,IfcSlab"), {}},
        {"a subtype", sClasses({"IfcElement"}, "IfcWall/SOLIDWALL"), {}},
        {"the type of the class", sClasses({"IfcWall"}, "IfcWallType"), {}},
        {"a text", sClasses({"IfcWall"}, "walls of all kinds"), {}},
        {"another attribute", sClasses({"IfcWall"}, "IfcSlab.ObjectType=\"X\""), {}},
        {"an attribute of the class", sClasses({"IfcWall"}, "IfcWall.Name"), {}},
        {"another attribute of the class", sClasses({"IfcWall"}, "IfcWall.ObjectType"), {}},
        {"the older spelling",
         sClasses({"IfcWall"}, "IfcWall.PredefinedType=\"SOLIDWALL\""),
         {"4:22+34 note C014 the applicable type value is in the older spelling "
          "Class.PredefinedType=\"X\" | today it "
          "is written \"IfcWall/SOLIDWALL\""}},
    }));

TEST(ClassRules, AcceptsTheOlderTypeValueInOlderDocuments) {
    for (const auto& finding :
         test::exampleFindings(sClasses({"IfcWall"}, "IfcWall.PredefinedType=\"SOLIDWALL\"", "2x3 TC1")))
        EXPECT_EQ(finding.code, "V001");
}

TEST(ClassRules, Mends) {
    EXPECT_EQ(test::sMended(sClasses({"ifcwall/SOLIDWALL"})), sClasses({"IfcWall/SOLIDWALL"}));
    EXPECT_EQ(test::sMended(sClasses({"IfcWall/solidwall"})), sClasses({"IfcWall/SOLIDWALL"}));
    EXPECT_EQ(test::sMended(sClasses({"IfcWall"}, "IFCWALL|ifcwall.PredefinedType='solidwall'", "2x3")),
              sClasses({"IfcWall"}, "IfcWall|IfcWall.PredefinedType='SOLIDWALL'", "2x3"));
    EXPECT_EQ(test::sMended(sClasses({"IFCHVACDOMAIN/IfcWall"})), sClasses({"IfcWall"}));
    EXPECT_EQ(test::sMended(sClasses({"IFCHVACDOMAIN/IfcWall/SOLIDWALL"})), sClasses({"IfcWall/SOLIDWALL"}));
    EXPECT_EQ(test::sMended(sClasses({"IfcWall.PredefinedType='SOLIDWALL'"})),
              sClasses({"IfcWall/SOLIDWALL"}));
}

} // namespace

} // namespace kiv::kit
