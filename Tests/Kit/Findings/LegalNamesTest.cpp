#include "Kit/Findings/LegalNames.h"

#include <gtest/gtest.h>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

/// What a name among legal ones was meant to be.
struct Case {
    std::string_view about;
    std::string_view name;
    std::vector<std::string_view> legal;
    std::string_view meant = {};
    bool isLetterCase = false;
    bool isSure = false;
};

const Case Cases[] = {
    {"the same", "Name", {"Name", "Definition"}, "Name", true, true},
    {"another letter case", "propertydef", {"Name", "PropertyDef"}, "PropertyDef", true, true},
    {"a letter too many", "PropertyDeff", {"Name", "PropertyDef"}, "PropertyDef", false, true},
    {"a letter too few in a short one", "typ", {"type", "currencytype"}, "type", false, true},
    {"two letters wrong",
     "DefinitionAliasis",
     {"NameAliases", "DefinitionAliases"},
     "DefinitionAliases",
     false,
     true},
    {"too many letters wrong", "Nxyz", {"Name"}},
    {"one of two short letters", "ab", {"xb"}},
    {"as near to one as to the other", "Nam1", {"Name", "Nam2"}},
    {"the beginning", "Class", {"ClassName", "Definition"}, "ClassName"},
    {"the end", "LENGTH", {"Q_COUNT", "Q_LENGTH"}, "Q_LENGTH"},
    {"the beginning of two", "Unit", {"UnitType", "UnitName"}},
    {"too short for a part", "Cl", {"ClassName"}},
    {"ends with a legal one and is like another", "PropertyName", {"Name", "PropertyType"}, "Name"},
    {"begins with a legal one", "ifdguid2a", {"ifdguid", "templatetype"}, "ifdguid", false, true},
    {"with a little after it", "versionnumber", {"version", "schema"}, "version"},
    {"with much after it", "NameOfTheOwner", {"Name"}},
    {"nothing", "", {"Name"}},
    {"nothing is legal", "Name", {}},
};

TEST(LegalNames, MatchWhatWasMeant) {
    for (const auto& row : Cases) {
        const auto match = legalMatch(row.name, row.legal);
        EXPECT_EQ(match.name, row.meant) << row.about;
        EXPECT_EQ(match.isLetterCase, row.isLetterCase) << row.about;
        EXPECT_EQ(match.isSure, row.isSure) << row.about;
    }
}

TEST(LegalNames, AreTrimmedOfAllKindsOfBlanks) {
    EXPECT_EQ(trimmedBlanks(" \t\r\nName\n"), "Name");
    EXPECT_EQ(trimmedBlanks("\xC2\xA0Name\xE3\x80\x80\xE2\x80\xAF"), "Name");
    EXPECT_EQ(trimmedBlanks("\xEF\xBB\xBFName\xE2\x80\x8B"), "Name");
    EXPECT_EQ(trimmedBlanks("First name"), "First name");
    EXPECT_EQ(trimmedBlanks("\xE2\x80\x83 \xC2\xA0"), "");
    EXPECT_EQ(trimmedBlanks(""), "");
}

TEST(LegalNames, KeepLettersThatShareBytesWithBlanks) {
    // U+00E0 and U+200D begin and end with bytes of U+00A0 and U+2000.
    EXPECT_EQ(trimmedBlanks("\xC3\xA0"), "\xC3\xA0");
    EXPECT_EQ(trimmedBlanks("\xE2\x80\x8D"), "\xE2\x80\x8D");
    EXPECT_EQ(trimmedBlanks("\xC2"), "\xC2");
}

} // namespace

} // namespace kiv::kit
