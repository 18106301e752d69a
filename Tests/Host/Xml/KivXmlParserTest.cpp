#include "Host/Xml/KivXmlParser.h"

#include "Host/Xml/KivXmlRecords.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <string_view>

namespace kiv::xml {
namespace {

/// The reason for which the text is refused when a token can have a MiB; empty when it is read.
std::string sReasonWithinAMegabyte(const std::string& text) {
    std::istringstream stream(text);
    ParseError error;
    return pDocumentRead(stream, error, std::size_t{1} << 20) == nullptr ? error.reason : "";
}

TEST(KivXmlParserTest, TokenThatIsTooLongIsRefused) {
    const std::string within(1000 * 1000, 'x');
    const std::string beyond(std::size_t{4} << 20, 'x');
    const std::string reason = "a piece of markup is longer than 1 MiB";
    EXPECT_EQ(sReasonWithinAMegabyte("<a><!--" + within + "--></a>"), "");
    EXPECT_EQ(sReasonWithinAMegabyte("<a><!--" + beyond + "--></a>"), reason);
    EXPECT_EQ(sReasonWithinAMegabyte("<a b='" + beyond + "'/>"), reason);
    EXPECT_EQ(sReasonWithinAMegabyte("<a>" + beyond + "</a>"), "") << "a text is no token";
    EXPECT_EQ(sReasonWithinAMegabyte("<!--" + beyond), reason) << "also when it never ends";
}

/// Whether a comment that begins the text and has this many bytes is too long; it has no end.
bool isTooLong(std::size_t size, std::size_t limit) {
    constexpr std::string_view Open = "<!--";
    std::istringstream stream(std::string(Open) + std::string(size - Open.size(), 'x'));
    ParseError error;
    pDocumentRead(stream, error, limit);
    return error.reason.starts_with("a piece of markup is longer than");
}

TEST(KivXmlParserTest, TokenOfTheLimitPassesAndTheNextByteDoesNotWhereABlockEnds) {
    // Where blocks end is no promise: it is found as the last size of such a text for which a limit was
    // looked at.
    constexpr std::size_t Size = std::size_t{1} << 20;
    std::size_t passes = Size;
    for (std::size_t refused = 4; passes - refused > 1;) {
        const auto middle = (passes + refused) / 2;
        (isTooLong(Size, middle) ? refused : passes) = middle;
    }
    ASSERT_LT(passes, Size);
    EXPECT_FALSE(isTooLong(passes, passes));
    EXPECT_FALSE(isTooLong(passes - 1, passes - 1));
    EXPECT_TRUE(isTooLong(passes, passes - 1));
}

TEST(KivXmlParserTest, TokensOfExactlyTheLimitAreRead) {
    constexpr std::size_t Limit = std::size_t{1} << 20;
    const std::string_view rows[][2] = {{"<!--", "-->"}, {"<a b='", "'/>"}, {"<?b ", "?>"}, {"<a ", "/>"}};
    for (const auto& [open, close] : rows) {
        const auto filled = Limit - open.size() - close.size();
        const auto token = std::string(open).append(filled, open == "<a " ? ' ' : 'x').append(close);
        EXPECT_EQ(sReasonWithinAMegabyte("<a>" + token + "</a>"), "") << open;
    }
}

} // namespace
} // namespace kiv::xml
