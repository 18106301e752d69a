#include "Kit/Names/MisspeltKeyword.h"

#include <gtest/gtest.h>
#include <string_view>

namespace kiv::kit {

namespace {

constexpr std::string_view Keywords[] = {"ENTITY", "INVERSE", "TYPE", "WHERE"};

TEST(MisspeltKeyword, IsTheNearestOne) {
    struct Row {
        std::string_view word;
        std::string_view keyword;
    };
    const Row rows[] = {
        {"ENTITIY", "ENTITY"},                                       // one letter too many
        {"ENTIY", "ENTITY"},                                         // one too few
        {"INVERS", "INVERSE"},  {"WHRE", "WHERE"}, {"TPYE", "TYPE"}, // two letters exchanged
        {"INVXRXE", "INVERSE"},                                      // two others
    };
    for (const auto& row : rows)
        EXPECT_EQ(misspeltKeyword(row.word, Keywords), row.keyword) << row.word;
}

TEST(MisspeltKeyword, IsMissedByFewLetters) {
    constexpr std::string_view Two[] = {"TYPE", "ENTITY"};
    EXPECT_EQ(misspeltKeyword("TYP", Two), "TYPE");
    EXPECT_EQ(misspeltKeyword("ENITTY", Two), "ENTITY");
    for (const auto* word : {"TYPE", "type", "Typ", "ENTRY", "TY", "ENTITIES_", "", "TYPEDEF"})
        EXPECT_EQ(misspeltKeyword(word, Two), "") << word;
}

TEST(MisspeltKeyword, IsNoneOfOtherWords) {
    // A keyword itself; three letters away; a beginning and a part; not in capitals; no letters at all.
    for (const std::string_view word :
         {"ENTITY", "IXVXRXE", "INVERSEFOREIGN", "entitiy", "Entitiy", "ENT1TY", ""})
        EXPECT_EQ(misspeltKeyword(word, Keywords), "") << word;
    EXPECT_EQ(misspeltKeyword("ENTITIY", {}), "");
}

} // namespace

} // namespace kiv::kit
