#include "Kit/Findings/FindingLines.h"
#include "Kit/Findings/Rules/Types/TypeCases.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using test::findingLines;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view Plain =
    "<QtoDef><Name>W</Name><Definition>d</Definition><QtoType>Q_AREA</QtoType></QtoDef>\n";

/// A quantity set with this on line 2, and this inside "QtoDefs" on line 4.
std::string setWith(std::string_view name, std::string_view quantities = {}) {
    return "<QtoSetDef><IfcVersion version=\"IFC4\"/>\n" + std::string(name) +
           "<Definition>d</Definition><ApplicableClasses><ClassName>IfcWall</ClassName></"
           "ApplicableClasses>\n<QtoDefs>\n" +
           std::string(quantities.empty() ? Plain : quantities) + "</QtoDefs></QtoSetDef>";
}

std::string quantity(std::string_view name) {
    return "<QtoDef>" + std::string(name) + "<Definition>d</Definition><QtoType>Q_AREA</QtoType></QtoDef>\n";
}

TEST(NameRulesTest, ASetNeedsAName) {
    EXPECT_THAT(findingLines(setWith("")),
                ElementsAre("1:2+9 error N001 the set has no name: there is no \"Name\""));
    for (const std::string_view name :
         {"<Name/>", "<Name></Name>", "<Name>\n</Name>", "<Name>\xC2\xA0</Name>"})
        EXPECT_THAT(findingLines(setWith(name)),
                    ElementsAre("2:2+4 error N001 the name of the set is empty"));
}

TEST(NameRulesTest, AMisspeltNameIsNoMissingOne) {
    EXPECT_EQ(findingLines(setWith("<name>A</name>")).size(), 1);
    EXPECT_EQ(findingLines(setWith("<x:Name xmlns:x=\"u\">A</x:Name>")).size(), 1);
}

TEST(NameRulesTest, AMemberNeedsAName) {
    EXPECT_THAT(findingLines(setWith("<Name>A</Name>", quantity("") + quantity("<Name/>"))),
                ElementsAre("4:2+6 error N002 the quantity has no name: there is no \"Name\"",
                            "5:10+4 error N002 the name of the quantity is empty"));
}

TEST(NameRulesTest, AnEnumerationNeedsAName) {
    struct Row {
        std::string_view name;
        std::string_view place;
    };
    // At the value, or at the name of the attribute where there is no value to show.
    for (const auto& [name, place] :
         {Row{"PEnum_", "5:46+6"}, Row{" PEnum_ ", "5:46+8"}, Row{" ", "5:46+1"}, Row{"", "5:40+4"}}) {
        const auto text =
            test::sSetOf("<TypePropertyEnumeratedValue><EnumList name=\"" + std::string(name) +
                         "\"><EnumItem>NEW</EnumItem></EnumList></TypePropertyEnumeratedValue>");
        EXPECT_THAT(findingLines(text),
                    ElementsAre(std::string(place) + " warning N003 the name of the enumeration is empty"))
            << name;
    }
}

TEST(NameRulesTest, BlanksAroundNamesAreMended) {
    const auto text = setWith("<Name>\n  A\n</Name>", quantity("<Name>B </Name>") + quantity("<Name>\xC2\xA0"
                                                                                             "C</Name>"));
    EXPECT_THAT(
        findingLines(text),
        ElementsAre("3:3+1 warning N004 the name of the set \"A\" begins with white space",
                    "6:16+1 warning N004 the name of the quantity \"B\" ends with white space",
                    "7:15+1 warning N004 the name of the quantity \"C\" begins with the character U+00A0"));
    EXPECT_THAT(findingLines(test::sMended(text)), IsEmpty());
    EXPECT_THAT(test::sMended(text), testing::HasSubstr("<Name>A</Name>"));
}

TEST(NameRulesTest, StrayBlanksAreFound) {
    for (const std::string_view name : {"A  B", "A\tB", "A\nB",
                                        "A\xE2\x80\x8B"
                                        "B",
                                        // A mark that turns the direction of writing, and the end of a line.
                                        "A\xE2\x80\xAE"
                                        "B",
                                        "A\xE2\x80\xA8"
                                        "B"}) {
        const auto lines = findingLines(setWith("<Name>" + std::string(name) + "</Name>"));
        ASSERT_EQ(lines.size(), 1) << name;
        EXPECT_THAT(lines[0], testing::HasSubstr("warning N005 ")) << name;
    }
    EXPECT_THAT(findingLines(setWith("<Name>A B</Name>")), IsEmpty());
}

TEST(NameRulesTest, StrayCharactersAreNamedAndShown) {
    struct Row {
        std::string name;
        std::string place;
        std::string what;
    };
    const std::string blanks = "blanks that do not belong there";
    const Row rows[] = {
        {"AB  C", "2:9+2", blanks},
        {"\u00E4B\u00A0C", "2:9+1", "the blank U+00A0"},
        {"AB\u200BC\u202E", "2:9+1", "the invisible character U+200B"},
        {"A\u2060B", "2:8+1", "the invisible character U+2060"},
        {"A\u00ADB", "2:8+1", "the invisible character U+00AD"},
        {"A\uFEFFB", "2:8+1", "the invisible character U+FEFF"},
        {"A\u200DB", "2:8+1", "the invisible character U+200D"},
        {"A\u202EB  C", "2:8+1", "the invisible character U+202E"},
    };
    for (const auto& row : rows) {
        const auto lines = findingLines(setWith("<Name>" + row.name + "</Name>"));
        ASSERT_EQ(lines.size(), 1) << row.name;
        EXPECT_THAT(lines[0], testing::StartsWith(row.place + " warning N005 ")) << row.name;
        EXPECT_THAT(lines[0], testing::EndsWith(" contains " + row.what)) << row.name;
    }
    // Between letters that are joined, or kept from it, such a character is right.
    EXPECT_THAT(findingLines(setWith("<Name>\u0645\u06CC\u200C\u062E\u0648</Name>")), IsEmpty());
}

/// ASCII as UTF-16 with a byte order mark.
std::string sUtf16(std::string_view text) {
    std::string units("\xFE\xFF");
    for (const char letter : text)
        units.append(1, '\0').append(1, letter);
    return units;
}

TEST(NameRulesTest, PlacesInsideNamesAreThoseOfCharacters) {
    for (const auto& text : {setWith("<Name>AB  C</Name>"), sUtf16(setWith("<Name>AB  C</Name>"))})
        EXPECT_THAT(findingLines(text), ElementsAre(testing::StartsWith("2:9+2 warning N005 ")));
    for (const auto& text : {setWith("<Name>AB </Name>"), sUtf16(setWith("<Name>AB </Name>"))})
        EXPECT_THAT(findingLines(text), ElementsAre(testing::StartsWith("2:9+1 warning N004 ")));
}

TEST(NameRulesTest, InvisibleCharactersAreRightWhereScriptsNeedThem) {
    // Persian, Devanagari at the end of a word, and pictures that are made of several.
    for (const std::string_view name : {"\u0645\u06CC\u200C\u062E\u0648", "\u0915\u094D\u200D",
                                        "\U0001F469\u200D\U0001F4BB", "\u2764\uFE0F\u200D\U0001F525"})
        EXPECT_THAT(findingLines(setWith("<Name>" + std::string(name) + "</Name>")), IsEmpty()) << name;
    // One that is right hides none that is not.
    EXPECT_THAT(findingLines(setWith("<Name>\u06CC\u200C\u062E A\u200CB</Name>")),
                ElementsAre(testing::StartsWith("2:12+1 warning N005 ")));
    EXPECT_THAT(findingLines(setWith("<Name>\u00E4\u200D\u00E4</Name>")),
                ElementsAre(testing::EndsWith(" contains the invisible character U+200D")));
}

std::string constants(std::string_view content) {
    return test::sSetOf("<TypePropertyEnumeratedValue><EnumList name=\"PEnum_A\"><EnumItem>X</EnumItem>"
                        "</EnumList><ConstantList>\n" +
                        std::string(content) + "</ConstantList></TypePropertyEnumeratedValue>");
}

TEST(NameRulesTest, BlanksAroundNamesOfConstantsAreMended) {
    const auto text = constants("<ConstantDef><Name>X </Name></ConstantDef>");
    EXPECT_THAT(findingLines(text),
                ElementsAre("6:21+1 warning N004 the name of the constant \"X\" ends with white space"));
    EXPECT_THAT(findingLines(test::sMended(text)), IsEmpty());
}

TEST(NameRulesTest, ConstantsHaveNames) {
    EXPECT_THAT(findingLines(constants("<ConstantDef><Name>X</Name></ConstantDef>")), IsEmpty());
    EXPECT_THAT(findingLines(constants("<ConstantDef><Definition>d</Definition></ConstantDef>")),
                ElementsAre("6:2+11 warning N007 the constant has no name: there is no \"Name\""));
    EXPECT_THAT(findingLines(constants("<ConstantDef><Name> </Name></ConstantDef>")),
                ElementsAre("6:15+4 warning N007 the name of the constant is empty"));
    EXPECT_THAT(findingLines(constants("<ConstDef><Definition>d</Definition></ConstDef>")),
                ElementsAre(testing::StartsWith("6:2+8 warning S001 ")));
    // What is there in a wrong way is not missing.
    for (const std::string_view content :
         {"<ConstantDef><Nam>X</Nam></ConstantDef>", "<ConstantDef><Name name=\"X\"/></ConstantDef>"}) {
        const auto lines = findingLines(constants(content));
        ASSERT_EQ(lines.size(), 1) << content;
        EXPECT_THAT(lines[0], testing::HasSubstr(" error S00")) << content;
    }
}

TEST(NameRulesTest, TwoMembersOfOneNameAreFound) {
    EXPECT_THAT(
        findingLines(setWith("<Name>A</Name>", quantity("<Name>B</Name>") + quantity("<Name>b</Name>") +
                                                   quantity("<Name>B</Name>"))),
        ElementsAre(
            "6:15+1 error N006 the set has another quantity of the name \"B\" | the first one is here "
            "@4:15"));
}

TEST(NameRulesTest, TheCharacterIsShownOnItsLine) {
    EXPECT_THAT(findingLines(setWith("<Name>A\n B \n</Name>")),
                ElementsAre("3:3+1 warning N004 the name of the set \"A\n B\" ends with white space"));
    EXPECT_THAT(
        findingLines(setWith("<Name>A\nB  C</Name>")),
        ElementsAre("2:8+0 warning N005 the name of the set \"A\nB  C\" contains blanks that do not belong "
                    "there"));
    EXPECT_THAT(findingLines(setWith("<Name>A\n</Name>")),
                ElementsAre("2:8+0 warning N004 the name of the set \"A\" ends with white space"));
}

TEST(NameRulesTest, LettersOfAnotherScriptAreFound) {
    EXPECT_THAT(
        findingLines(setWith("<Name>Pset_W\u0430ll</Name>")),
        ElementsAre("2:13+1 warning N008 the name of the set \"Pset_W\u0430ll\" contains U+0430, a letter of "
                    "Cyrillic that looks like \"a\" | did you mean \"Pset_Wall\"?"));
    EXPECT_THAT(
        findingLines(setWith("<Name>A</Name>", quantity("<Name>L\u03BFad</Name>"))),
        ElementsAre("4:16+1 warning N008 the name of the quantity \"L\u03BFad\" contains U+03BF, a letter of "
                    "Greek that looks like \"o\" | did you mean \"Load\"?"));
    for (const std::string_view name : {"\u0421\u0442\u0435\u043D\u0430", "\u0394T", "W\u00E4nde"})
        EXPECT_THAT(findingLines(setWith("<Name>" + std::string(name) + "</Name>")), IsEmpty()) << name;
}

TEST(NameRulesTest, LettersOfAnotherScriptInEnumerationsAreOneMistake) {
    const auto enumeration = [](std::string_view name, std::string_view item, std::string_view constant) {
        return test::sSetOf(
            "<TypePropertyEnumeratedValue><EnumList name=\"" + std::string(name) + "\">\n<EnumItem>" +
            std::string(item) + "</EnumItem></EnumList>\n<ConstantList><ConstantDef><Name>" +
            std::string(constant) + "</Name></ConstantDef></ConstantList></TypePropertyEnumeratedValue>");
    };
    EXPECT_THAT(findingLines(enumeration("PEnum_A", "NEW", "NEW")), IsEmpty());
    EXPECT_THAT(findingLines(enumeration("PEnum_St\u0430tus", "NEW", "NEW")),
                ElementsAre(testing::StartsWith("5:54+1 warning N008 the name of the enumeration ")));
    EXPECT_THAT(findingLines(enumeration("PEnum_A", "N\u0415W", "NEW")),
                ElementsAre(testing::StartsWith("6:12+1 warning N008 the item ")));
    EXPECT_THAT(findingLines(enumeration("PEnum_A", "NEW", "N\u0415W")),
                ElementsAre(testing::StartsWith("7:35+1 warning N008 the name of the constant ")));
    EXPECT_THAT(findingLines(enumeration("PEnum_A", "N\u200BEW", "NEW")),
                ElementsAre(testing::StartsWith("6:12+1 warning N005 the item ")));
    // Items may be texts with several blanks, after which there is something all the same.
    EXPECT_THAT(findingLines(enumeration("PEnum_A", "A  B\u200Bx", "A  Bx")),
                ElementsAre(testing::StartsWith("6:15+1 warning N005 the item ")));
}

TEST(NameRulesTest, TheNameOfAComplexPropertyHasLettersOfOneScript) {
    const std::string inner =
        "<PropertyDef><Name>Q</Name><Definition>d</Definition><PropertyType><TypePropertySingleValue>"
        "<DataType type=\"IfcLabel\"/></TypePropertySingleValue></PropertyType></PropertyDef>";
    const auto lines = findingLines(
        "<PropertySetDef><IfcVersion "
        "version=\"IFC4\"/><Name>A</Name><Definition>d</Definition><ApplicableClasses>"
        "<ClassName>IfcWall</ClassName></ApplicableClasses><PropertyDefs><PropertyDef><Name>P</Name>"
        "<Definition>d</Definition><PropertyType>\n<TypeComplexProperty name=\"St\u0430tus\">" +
        inner + "</TypeComplexProperty></PropertyType></PropertyDef></PropertyDefs></PropertySetDef>");
    EXPECT_THAT(lines,
                ElementsAre(testing::StartsWith("2:30+1 warning N008 the name of the complex property ")));
}

} // namespace

} // namespace kiv::kit
