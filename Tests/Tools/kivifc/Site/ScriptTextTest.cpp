#include "kivifc/Site/ScriptText.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

TEST(ScriptText, NothingEndsTheString) {
    EXPECT_EQ(sScriptString("a\"b\\c", 99), R"("a\"b\\c")");
    EXPECT_EQ(sScriptString("</script>", 99), "\"\\u003c/script>\"");
    EXPECT_EQ(sScriptString("a\nb\xE2\x80\xA8"
                            "c",
                            99),
              "\"a\\u000ab\\u2028c\"");
    EXPECT_EQ(sScriptString("\xFF", 99), "\"\xEF\xBF\xBD\"");
}

TEST(ScriptText, WhatIsTooLongIsCutBetweenCharacters) {
    EXPECT_EQ(sScriptString("\xC3\xA4\xC3\xA4", 2), "\"\xC3\xA4\xC3\xA4\"");
    EXPECT_EQ(sScriptString("\xC3\xA4\xC3\xA4\xC3\xA4", 2), "\"\xC3\xA4\xC3\xA4\xE2\x80\xA6\"");
}

} // namespace

} // namespace kiv::kivifc::site::test
