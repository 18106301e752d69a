#include "Host/Xml/KivXmlParser.h"

#include "Host/Xml/KivXmlDocument.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace kiv::xml {
namespace {

/// The reason for which the text is refused when a token can have a MiB; empty when it is read.
std::string sReasonWithinAMegabyte(const std::string& text) {
    std::istringstream stream(text);
    ParseError error;
    return pDocumentRead(stream, error, std::size_t{1} << 20) == nullptr ? error.reason : "";
}

TEST(KivXmlParser, TokenThatIsTooLongIsRefused) {
    const std::string within(1000 * 1000, 'x');
    const std::string beyond(std::size_t{4} << 20, 'x');
    const std::string reason = "a piece of markup is longer than 1 MiB";
    EXPECT_EQ(sReasonWithinAMegabyte("<a><!--" + within + "--></a>"), "");
    EXPECT_EQ(sReasonWithinAMegabyte("<a><!--" + beyond + "--></a>"), reason);
    EXPECT_EQ(sReasonWithinAMegabyte("<a b='" + beyond + "'/>"), reason);
    EXPECT_EQ(sReasonWithinAMegabyte("<a>" + beyond + "</a>"), "") << "a text is no token";
    EXPECT_EQ(sReasonWithinAMegabyte("<!--" + beyond), reason) << "also when it never ends";
}

} // namespace
} // namespace kiv::xml
