#include "Kit/Positions/XmlTagScanner.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

/// "name=value" for each attribute, as written, after the name of the tag and up to its end.
std::string sScanned(std::string_view text, std::size_t nameEnd) {
    std::string found;
    XmlTagScanner scanner(text, nameEnd);
    const auto tagEnd = text.find('>') + 1;
    while (scanner.hasNext(tagEnd)) {
        const auto written = scanner.next();
        found.append(text.substr(written.name, written.nameSize)).append("=");
        found.append(text.substr(written.value, written.valueSize)).append(";");
    }
    return found;
}

TEST(XmlTagScanner, FindsAttributesAsTheyAreWritten) {
    EXPECT_EQ(sScanned("<A>b='c'", 2), "");
    EXPECT_EQ(sScanned("<A/>", 2), "");
    EXPECT_EQ(sScanned("<A b=\"c\">", 2), "b=c;");
    EXPECT_EQ(sScanned("<A b='c' x:d=''/>", 2), "b=c;x:d=;");
    EXPECT_EQ(sScanned("<A\n b \t= \r\n\"c=&amp;'/\"\n d='\"' >", 2), "b=c=&amp;'/;d=\";");
}

TEST(XmlTagScanner, KnowsWhereAnAttributeBegins) {
    XmlTagScanner scanner("<A  b='c' d='e'>", 2);
    const auto first = scanner.next();
    // The blanks before it go with it.
    EXPECT_EQ(first.before, 2);
    EXPECT_EQ(first.name, 4);
    EXPECT_EQ(scanner.next().before, 9);
}

} // namespace

} // namespace kiv::kit
