#include "kiv/Kit/Text/InvisibleCharacters.h"

#include <gtest/gtest.h>
#include <initializer_list>

namespace kiv::kit {

namespace {

TEST(InvisibleCharacters, AreThoseThatShowNothing) {
    for (const char32_t character :
         std::initializer_list<char32_t>{0x00AD, 0x061C, 0x180E, 0x200B, 0x200E, 0x200F, 0x2028, 0x202E,
                                         0x2060, 0x2064, 0x2066, 0x2069, 0xFEFF, 0xFFF9, 0xFFFB})
        EXPECT_TRUE(isInvisible(character, U'a')) << static_cast<unsigned>(character);
    for (const char32_t character :
         std::initializer_list<char32_t>{0x0020, 0x0041, 0x00A0, 0x00AC, 0x00AE, 0x0301, 0x200A, 0x2010,
                                         0x2027, 0x202F, 0x2065, 0x3000, 0xFE0F, 0xFFFC, 0x1F600})
        EXPECT_FALSE(isInvisible(character, U'a')) << static_cast<unsigned>(character);
}

TEST(InvisibleCharacters, AreJoinersWhereTheirScriptDoesNotNeedThem) {
    // The beginning, Latin, Greek, Latin with two marks, and after another joiner.
    for (const char32_t before : std::initializer_list<char32_t>{0x0000, 0x0041, 0x03B1, 0x1EA5, 0x200D}) {
        EXPECT_TRUE(isInvisible(0x200C, before)) << static_cast<unsigned>(before);
        EXPECT_TRUE(isInvisible(0x200D, before)) << static_cast<unsigned>(before);
    }
    // Arabic, Devanagari, Malayalam, Mongolian, a heart with its selector, a person.
    for (const char32_t before :
         std::initializer_list<char32_t>{0x06CC, 0x094D, 0x0D4D, 0x1820, 0xFE0F, 0x1F469}) {
        EXPECT_FALSE(isInvisible(0x200C, before)) << static_cast<unsigned>(before);
        EXPECT_FALSE(isInvisible(0x200D, before)) << static_cast<unsigned>(before);
    }
}

TEST(InvisibleCharacters, AreTagsWithoutAFlag) {
    EXPECT_TRUE(isInvisible(0xE0041, U'a'));
    EXPECT_FALSE(isInvisible(0xE0067, 0x1F3F4));
    EXPECT_FALSE(isInvisible(0xE007F, 0x1F3F4));
    for (const char32_t tag : std::initializer_list<char32_t>{0xE0000, 0xE0041, 0xE007F})
        EXPECT_TRUE(isTag(tag)) << static_cast<unsigned>(tag);
    for (const char32_t other : std::initializer_list<char32_t>{0x0041, 0xDFFFF, 0xE0080, 0x1F3F4})
        EXPECT_FALSE(isTag(other)) << static_cast<unsigned>(other);
}

} // namespace

} // namespace kiv::kit
