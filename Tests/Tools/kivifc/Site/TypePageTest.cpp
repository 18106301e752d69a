#include "kivifc/Site/TypePage.h"

#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

using testing::HasSubstr;
using testing::Not;

TEST(TypePage, EnumerationHasARowForEachItem) {
    const SiteSample sample("TYPE Kind = ENUMERATION OF\n (SOLID,\n HOLLOW);\nEND_TYPE;\n");
    const auto page = sample.sPage("Kind.html");
    EXPECT_THAT(page, HasSubstr("<span class=\"kind\">Enumeration</span>"));
    EXPECT_THAT(page, HasSubstr("<li id=\"SOLID\"><code>SOLID</code>"));
    EXPECT_THAT(page, HasSubstr("<li id=\"HOLLOW\"><code>HOLLOW</code>"));
}

/// The rule has the plain address, as links and the search have it; the member of a member has it not.
TEST(TypePage, RuleIsNamedLikeAMemberThatIsUnfolded) {
    const SiteSample sample("TYPE Length = REAL;\nEND_TYPE;\nTYPE Label = STRING;\nEND_TYPE;\n"
                            "TYPE Inner = SELECT (Length, Label);\nEND_TYPE;\n"
                            "TYPE Outer = SELECT (Inner);\n WHERE\n  Label : TRUE;\nEND_TYPE;\n");
    const auto page = sample.sPage("Outer.html");
    EXPECT_THAT(page, HasSubstr("<div class=\"rule\" id=\"Label\">"));
    EXPECT_THAT(page, HasSubstr("<li id=\"Label~~2\"><a href=\"Label.html\">"));
    EXPECT_THAT(sample.sPage("assets/search-index.js"), HasSubstr("\"Outer\",0,0,[[14,\"Label\"]]"));
}

/// Both have an address, the same for the page and the search.
TEST(TypePage, RuleIsNamedLikeAMember) {
    const SiteSample sample("TYPE Label = STRING;\nEND_TYPE;\n"
                            "TYPE Outer = SELECT (Label);\n WHERE\n  Label : TRUE;\nEND_TYPE;\n");
    const auto page = sample.sPage("Outer.html");
    EXPECT_THAT(page, HasSubstr("<li id=\"Label\"><a href=\"Label.html\">"));
    EXPECT_THAT(page, HasSubstr("<div class=\"rule\" id=\"Label~~2\">"));
    EXPECT_THAT(sample.sPage("assets/search-index.js"),
                HasSubstr("\"Outer\",0,0,[[14,[\"Label\",\"Label~~2\"]]]"));
}

TEST(TypePage, SelectIsUnfoldedThroughSelects) {
    const SiteSample sample("TYPE Length = REAL;\nEND_TYPE;\nTYPE Label = STRING;\nEND_TYPE;\n"
                            "TYPE Inner = SELECT (Length, Label);\nEND_TYPE;\n"
                            "TYPE Outer = SELECT (Inner, Label);\nEND_TYPE;\n");
    const auto page = sample.sPage("Outer.html");
    EXPECT_THAT(page, HasSubstr("<li id=\"Inner\"><a href=\"Inner.html\"><code>Inner</code></a>"));
    EXPECT_THAT(page, HasSubstr("<ul class=\"names\">\n<li id=\"Length\"><a href=\"Length.html\">"));
    // The member of the type itself has the plain address, although it comes later on the page.
    const auto inner = page.find("<li id=\"Label~~2\"><a href=\"Label.html\">");
    const auto own = page.find("<li id=\"Label\"><a href=\"Label.html\">");
    EXPECT_LT(inner, own);
    EXPECT_NE(own, std::string::npos);
    EXPECT_THAT(page, HasSubstr("<a class=\"anchor\" href=\"#Length\" aria-label=\"Link to Length\">#</a>"));
}

/// Each is unfolded once.
TEST(TypePage, SelectsThatSelectEachOtherEnd) {
    const SiteSample sample("TYPE A = SELECT (B);\nEND_TYPE;\nTYPE B = SELECT (A);\nEND_TYPE;\n");
    EXPECT_THAT(sample.sPage("A.html"),
                HasSubstr("<a href=\"B.html\"><code>B</code></a><a class=\"anchor\" href=\"#B\" "
                          "aria-label=\"Link to B\">#</a><ul"));
}

TEST(TypePage, TypeOfTypesIsFollowedToItsEnd) {
    const SiteSample sample(
        "TYPE Length = REAL;\nEND_TYPE;\nTYPE Positive = Length;\n WHERE\n    WR1 : SELF > 0.0;\n"
        "END_TYPE;\n");
    const auto page = sample.sPage("Positive.html");
    EXPECT_THAT(page, HasSubstr("Positive = <a href=\"Length.html\">Length</a>;"));
    EXPECT_THAT(page, HasSubstr("<a href=\"Length.html\"><code>Length</code></a> = <code><b>REAL"));
    EXPECT_THAT(page, HasSubstr("<div class=\"rule\" id=\"WR1\">"));
    EXPECT_THAT(sample.sPage("Length.html"), HasSubstr("<a href=\"Positive.html\">"));
}

/// A clause that was resolved with each type that is built on it has its rules that many times.
TEST(TypePage, RuleIsThereOnce) {
    const SiteSample sample("TYPE A = REAL;\n WHERE\n    WR1 : SELF > 0.0;\nEND_TYPE;\n"
                            "TYPE B = A;\nEND_TYPE;\nTYPE C = A;\nEND_TYPE;\n");
    const auto page = sample.sPage("A.html");
    const auto first = page.find("<div class=\"rule\"");
    ASSERT_NE(first, std::string::npos);
    EXPECT_EQ(page.find("<div class=\"rule\"", first + 1), std::string::npos);
}

TEST(TextPage, FunctionHasItsTextAndItsCallers) {
    const SiteSample sample(
        "ENTITY Wall;\n    Length : REAL;\n WHERE\n    WR1 : Twice(Length) > 1.0;\nEND_ENTITY;\n"
        "FUNCTION Twice\n    (x : REAL) : REAL;\n  -- of 'TEST.WALL' and <b>\n\n"
        "  RETURN(x * 2);\nEND_FUNCTION;\n");
    const auto page = sample.sPage("Twice.html");
    EXPECT_THAT(page, HasSubstr("<b>FUNCTION</b> Twice\n    (x : <b>REAL</b>) : "));
    EXPECT_THAT(page, HasSubstr("<span class=\"com\">-- of &#39;TEST.WALL&#39; and &lt;b&gt;</span>\n\n"));
    EXPECT_THAT(page, HasSubstr("<b>END_FUNCTION</b>"));
    EXPECT_THAT(page, HasSubstr("<a href=\"Wall.html#WR1\"><code>Wall.WR1</code></a>"));
}

/// Names after that of a parameter or of a local variable are those of its type.
TEST(TextPage, NamesAfterPointsOfLocalNamesAreLinks) {
    const SiteSample sample(
        "ENTITY Wall;\n    Size : REAL;\nEND_ENTITY;\n"
        "FUNCTION F\n    (w : LIST [1:?] OF Wall; x : REAL) : REAL;\n    LOCAL\n        v : Wall := w[1];\n"
        "    END_LOCAL;\n    RETURN (w[1].Size + v.Size + x.Size);\nEND_FUNCTION;\n");
    const std::string size = "<a href=\"Wall.html#Size\">Size</a>";
    EXPECT_THAT(sample.sPage("F.html"), HasSubstr("(w[1]." + size + " + v." + size + " + x.Size);"));
}

TEST(TextPage, RuleHasItsText) {
    const SiteSample sample(
        "ENTITY Wall;\nEND_ENTITY;\nRULE One FOR (Wall);\n WHERE\n    WR1 : SIZEOF(Wall) <= 1;\n"
        "END_RULE;\n");
    EXPECT_THAT(sample.sPage("One.html"), HasSubstr("SIZEOF</b>(<a href=\"Wall.html\">Wall</a>)"));
    EXPECT_THAT(sample.sPage("One.html"), Not(HasSubstr("id=\"uses\"")));
    EXPECT_THAT(sample.sPage("Wall.html"), HasSubstr("<a href=\"One.html\"><code>One</code></a>"));
}

TEST(TypePage, SelectsBelowALimitSayWhereTheirMembersAre) {
    std::string text = "TYPE S12 = REAL;\nEND_TYPE;\n";
    for (int number = 11; number >= 0; --number)
        text += "TYPE S" + std::to_string(number) + " = SELECT (S" + std::to_string(number + 1) +
                ");\nEND_TYPE;\n";
    const auto page = SiteSample(text).sPage("S0.html");
    EXPECT_THAT(page, HasSubstr("<li id=\"S9\">"));
    EXPECT_THAT(page, HasSubstr("has its members on its page"));
    EXPECT_THAT(page, Not(HasSubstr("<li id=\"S10\">")));
}

} // namespace

} // namespace kiv::kivifc::site::test
