#include "kivifc/Site/Html.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

namespace kiv::kivifc::site::test {

namespace {

template <typename Text>
constexpr bool isAppended = requires(Html html, Text text) {
    html << text;
};

// Text that is only known when the program runs does not become HTML by itself, nor the name of an attribute
// or of a page.
template <typename Text>
constexpr bool isTrusted =
    isAppended<Text> || std::is_constructible_v<Html, Text> || std::is_constructible_v<Markup, Text> ||
    std::is_constructible_v<AttributeName, Text> || std::is_constructible_v<PageName, Text> ||
    std::is_constructible_v<Address, Text>;

static_assert(!isTrusted<std::string>);
static_assert(!isTrusted<const std::string&>);
static_assert(!isTrusted<std::string_view>);
static_assert(!isTrusted<const char*>);
static_assert(!isTrusted<const char* const&>);
static_assert(!isTrusted<char*>);
static_assert(!isTrusted<char (&)[8]>);
static_assert(!isTrusted<std::nullptr_t>);

// The same questions have an answer for what is written with quotes, and for text that is escaped.
static_assert(isAppended<Markup>);
static_assert(isAppended<Escaped>);
static_assert(isAppended<const char (&)[8]>);
static_assert(std::is_constructible_v<Markup, const char (&)[8]>);
static_assert(std::is_constructible_v<AttributeName, const char (&)[8]>);
static_assert(std::is_constructible_v<PageName, const char (&)[8]>);

// A browser takes capitals for small letters.
static_assert(AttributeName::isHarmless("viewBox"));
static_assert(!AttributeName::isHarmless("HREF"));
static_assert(!AttributeName::isHarmless("onclick"));
static_assert(!AttributeName::isHarmless("ONCLICK"));
static_assert(!AttributeName::isHarmless("ping"));
static_assert(!AttributeName::isHarmless("manifest"));
static_assert(!AttributeName::isHarmless("a b"));

struct EscapedText {
    std::string text;
    std::string html;
};

void PrintTo(const EscapedText& row, std::ostream* stream) {
    *stream << row.html;
}

class HtmlEscaped : public testing::TestWithParam<EscapedText> {};

TEST_P(HtmlEscaped, IsTextAndNoMarkup) {
    Html html("");
    html << escaped(GetParam().text);
    EXPECT_EQ(html.getText(), GetParam().html);
}

TEST_P(HtmlEscaped, IsTheSameInTheValueOfAnAttribute) {
    Html html("");
    html << "<b" << attribute("title", GetParam().text) << ">";
    EXPECT_EQ(html.getText(), "<b title=\"" + GetParam().html + "\">");
}

INSTANTIATE_TEST_SUITE_P(
    Texts, HtmlEscaped,
    testing::Values(EscapedText{"IfcWall", "IfcWall"}, EscapedText{"", ""},
                    EscapedText{"<script>", "&lt;script&gt;"}, EscapedText{"a & b", "a &amp; b"},
                    EscapedText{"\"'", "&quot;&#39;"}, EscapedText{"line\n\ttab", "line\n\ttab"},
                    EscapedText{"two\r\nlines\rand\r\r\nmore\r", "two\nlines\nand\n\nmore\n"},
                    EscapedText{"W\xC3\xA4nde", "W\xC3\xA4nde"},
                    // U+202E turns the direction of writing.
                    EscapedText{"a\xE2\x80\xAE"
                                "b",
                                "a\\u{202E}b"},
                    EscapedText{std::string("\0\x1B", 2), "\\x00\\x1B"}, EscapedText{"\xFF<", "\\xFF&lt;"},
                    // U+FFFE is no character.
                    EscapedText{"\xEF\xBF\xBE", "\\u{FFFE}"}));

TEST(Html, IsolatedTextIsEscapedToo) {
    Html html("");
    html << isolated("<a>");
    EXPECT_EQ(html.getText(), "<bdi>&lt;a&gt;</bdi>");
}

TEST(Html, TextWithinATagIsAMistake) {
    Html html("");
    html << "<td";
    EXPECT_THROW(html << escaped(" onclick=x"), std::logic_error);
    EXPECT_THROW(html << std::size_t{1}, std::logic_error);
    EXPECT_THROW(html << "<b>", std::logic_error);
}

TEST(Html, AttributeOutsideOfATagIsAMistake) {
    Html html("");
    EXPECT_THROW(html << attribute("id", "a"), std::logic_error);
    EXPECT_THROW(html << rowHref("A"), std::logic_error);
    EXPECT_THROW(html << ">", std::logic_error);
}

TEST(Html, AddressesAreRelativeToThePage) {
    Html html("../");
    html << "<a" << href(Address(PageName("entities.html"))) << ">";
    EXPECT_EQ(html.getText(), "<a href=\"../entities.html\">");
}

TEST(Html, AddressOfARowHasItsAnchor) {
    Html html("");
    const auto address = Address(PageName("sets.html")).row("Pset_Wall");
    html << "<a" << href(address) << "></a><a" << rowHref("Pset_Wall") << ">";
    EXPECT_EQ(html.getText(), "<a href=\"sets.html#Pset_Wall\"></a><a href=\"#Pset_Wall\">");
}

} // namespace

} // namespace kiv::kivifc::site::test
