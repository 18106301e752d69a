#include "kivifc/Site/EntityPage.h"

#include "Tools/kivifc/Site/SetTexts.h"
#include "Tools/kivifc/Site/SiteSample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* EntityPageDeclarations =
    "TYPE Label = STRING(80);\n"
    "END_TYPE;\n"
    "TYPE Labels = LIST [1:?] OF Label;\n"
    "END_TYPE;\n"
    "TYPE Kind = ENUMERATION OF (A1, A2, A3, A4, A5, A6, A7, A8, A9, A10);\n"
    "END_TYPE;\n"
    "ENTITY Root\n"
    " ABSTRACT SUPERTYPE OF (ONEOF (Wall));\n"
    "    Name : OPTIONAL Label;\n"
    "    Length : REAL;\n"
    " UNIQUE\n"
    "    UR1 : Name, Length;\n"
    " WHERE\n"
    "    Long : (Length > 1.0) AND (Length < 9.0);\n"
    "END_ENTITY;\n"
    "ENTITY Wall\n"
    " SUBTYPE OF (Root);\n"
    "    PredefinedType : Kind;\n"
    "    Names : Labels;\n"
    " DERIVE\n"
    "    SELF\\Root.Length : REAL := 2.0;\n"
    " INVERSE\n"
    "    Rooms : SET [0:?] OF Room FOR Bounds;\n"
    " WHERE\n"
    "    Kinds : PredefinedType <> Kind.A2;\n"
    "END_ENTITY;\n"
    "ENTITY Room;\n"
    "    Bounds : Wall;\n"
    "END_ENTITY;\n";

constexpr const char* Set = "<PropertySetDef><Name>Pset_Wall</Name>"
                            "<ApplicableClasses><ClassName>Root</ClassName></ApplicableClasses>"
                            "<PropertyDefs><PropertyDef><Name>Mark</Name></PropertyDef></PropertyDefs>"
                            "</PropertySetDef>";

class EntityPageTest : public testing::Test {
protected:
    /// A section of a page, from its heading to its end.
    std::string sSection(const std::string& page, const std::string& id) const {
        const auto text = sample_.sPage(page);
        const auto begin = text.find("<section id=\"" + id + "\">");
        return begin == std::string::npos ? "" : text.substr(begin, text.find("</section>", begin) - begin);
    }

    SiteSample sample_{EntityPageDeclarations, {{"TEST", Set}}};
};

TEST_F(EntityPageTest, OwnAttributeHasARowWithItsAddress) {
    const auto section = sSection("Root.html", "attributes");
    EXPECT_THAT(section, HasSubstr("<tr id=\"Name\"><th scope=\"row\"><code>Name</code><a class=\"anchor\" "
                                   "href=\"#Name\""));
    EXPECT_THAT(section, HasSubstr("optional"));
}

TEST_F(EntityPageTest, TypesAreUnfoldedOneStep) {
    EXPECT_THAT(sSection("Root.html", "attributes"),
                HasSubstr("<a href=\"Label.html\">Label</a> <span class=\"unfolded\">= <b>"
                          "STRING</b>(80)</span>"));
    // Items lead to their rows.
    const auto items = sSection("Wall.html", "attributes");
    EXPECT_THAT(items, HasSubstr("<b>ENUMERATION</b> (<a href=\"Kind.html#A1\">A1</a>, "
                                 "<a href=\"Kind.html#A2\">A2</a>, "));
    EXPECT_THAT(items, HasSubstr(", <a href=\"Kind.html#A10\">A10</a>)</span>"));
}

/// On the page of the entity that has the attribute and of one that inherits it.
TEST(EntityPage, TypesAreUnfoldedInFullUnlessTheyAreVeryLong) {
    const auto expectEnd = [](int count, const std::string& end) {
        std::string items = "B1";
        for (int number = 2; number <= count; ++number)
            items += ", B" + std::to_string(number);
        const SiteSample sample("TYPE Kind = ENUMERATION OF (" + items +
                                ");\nEND_TYPE;\nENTITY Wall;\n    Is : Kind;\nEND_ENTITY;\n"
                                "ENTITY Thick\n SUBTYPE OF (Wall);\nEND_ENTITY;\n");
        for (const std::string page : {"Wall.html", "Thick.html"})
            EXPECT_THAT(sample.sPage(page), HasSubstr(end)) << page << ' ' << count;
    };
    expectEnd(101, ", <a href=\"Kind.html#B101\">B101</a>)");
    expectEnd(102, ", <a href=\"Kind.html#B100\">B100</a>, <a href=\"Kind.html\">and 2 more</a>)");
}

TEST_F(EntityPageTest, InheritedAttributeIsBelowItsEntityAndLinksThere) {
    const auto section = sSection("Wall.html", "attributes");
    const auto group = section.find("From <a href=\"Root.html\">");
    ASSERT_NE(group, std::string::npos);
    EXPECT_GT(section.find("<a href=\"Root.html#Name\">Name</a>"), group);
    EXPECT_LT(section.find("PredefinedType"), group);
}

TEST_F(EntityPageTest, RedeclarationIsSaidOnBothSides) {
    EXPECT_THAT(sSection("Root.html", "attributes"),
                HasSubstr("Further down: derived in <a href=\"Wall.html\"><code>Wall</code></a>"));
    EXPECT_THAT(sSection("Wall.html", "attributes"), HasSubstr("derived</span> in <a href=\"Wall.html\">"));
    const auto derived = sSection("Wall.html", "derived");
    EXPECT_THAT(derived, HasSubstr("<tr id=\"Length\">"));
    EXPECT_THAT(derived, HasSubstr("<a href=\"Root.html#Length\"><code>Root.Length</code></a>"));
}

TEST_F(EntityPageTest, InverseAttributeNamesWhatItMirrors) {
    EXPECT_THAT(sSection("Wall.html", "inverse"), HasSubstr("<a href=\"Room.html#Bounds\">Bounds</a>"));
}

TEST_F(EntityPageTest, UniqueRuleLinksItsAttributes) {
    EXPECT_THAT(sSection("Root.html", "unique"), HasSubstr("<tr id=\"UR1\">"));
    EXPECT_THAT(sSection("Root.html", "unique"),
                HasSubstr("<a href=\"Root.html#Name\">Name</a>, <a href=\"Root.html#Length\">Length</a>"));
}

TEST_F(EntityPageTest, EachOperandOfAndIsAnItem) {
    EXPECT_THAT(sSection("Root.html", "where"),
                HasSubstr("<li><code>(<a href=\"Root.html#Length\">Length</a> &gt; 1.0)</code></li>\n"
                          "<li><code><b>AND</b> (<a href=\"Root.html#Length\">Length</a> &lt; "
                          "9.0)</code></li>"));
}

/// The rules of a schema that has what they name, as their section has them.
std::string sRules(const std::string& rules) {
    const SiteSample sample(
        "FUNCTION F\n (x : REAL) : BOOLEAN;\n RETURN (TRUE);\nEND_FUNCTION;\nENTITY Wall;\n WHERE\n" + rules +
        "END_ENTITY;\n");
    auto page = sample.sPage("Wall.html");
    for (const std::string mark : {"<a href=\"F.html\">F</a>"}) {
        for (auto at = page.find(mark); at != std::string::npos; at = page.find(mark))
            page.replace(at, mark.size(), "F");
    }
    return page;
}

/// Without them a reader has to know that AND comes first.
TEST(EntityPage, AndWithinOrIsInParentheses) {
    EXPECT_THAT(
        sRules("    W : F(1) OR F(2) AND F(3);\n"),
        HasSubstr("<li><code>F(1)</code></li>\n<li><code><b>OR</b> (</code><ul>\n<li><code>F(2)</code>"
                  "</li>\n<li><code><b>AND</b> F(3))</code></li>\n</ul>\n</li>\n</ul>\n"));
    EXPECT_THAT(
        sRules("    W : F(1) AND F(2) XOR F(3);\n"),
        HasSubstr("<ul class=\"operands\">\n<li><code>(</code><ul>\n<li><code>F(1)</code></li>\n<li><code>"
                  "<b>AND</b> F(2)</code></li>\n</ul>\n<code>) <b>XOR</b> F(3)</code></li>\n</ul>\n"));
}

TEST(EntityPage, LastOperandHasTheClosingParenthesis) {
    EXPECT_THAT(
        sRules("    W : F(1) AND (F(2) OR F(3) AND F(4));\n"),
        HasSubstr("<li><code>F(1)</code></li>\n<li><code><b>AND</b> (</code><ul>\n"
                  "<li><code>F(2)</code></li>\n<li><code><b>OR</b> (</code><ul>\n<li><code>F(3)</code>"
                  "</li>\n<li><code><b>AND</b> F(4)))</code></li>\n</ul>\n</li>\n</ul>\n</li>"));
}

/// The variable and its type, which were said on the line before.
TEST(EntityPage, NamesOfAQueryAreKnownOnAllItsLines) {
    const SiteSample sample("ENTITY Door;\n    Leaf : REAL;\n    Side : Wall;\nEND_ENTITY;\n"
                            "ENTITY Wall;\n    Doors : SET OF Door;\n WHERE\n"
                            "    A : SIZEOF(QUERY(d <* Doors | (d.Leaf > 1) AND EXISTS(d.Side))) = 0;\n"
                            "END_ENTITY;\n");
    EXPECT_THAT(
        sample.sPage("Wall.html"),
        HasSubstr("<a href=\"Wall.html#Doors\">Doors</a> |</code><ul>\n"
                  "<li><code>(d.<a href=\"Door.html#Leaf\">Leaf</a> &gt; 1)</code></li>\n"
                  "<li><code><b>AND</b> <b>EXISTS</b>(d.<a href=\"Door.html#Side\">Side</a>)</code></li>\n"
                  "</ul>\n<code>)) = 0</code></li>\n</ul>\n"));
}

/// What comes after a point belongs to the type of what is before it, be that an element of a list.
TEST(EntityPage, NamesAfterPointsAreFollowed) {
    const SiteSample sample(
        "ENTITY Kind;\n    Title : STRING;\n    Of : Wall;\nEND_ENTITY;\n"
        "TYPE Kinds = LIST [0:?] OF Kind;\nEND_TYPE;\n"
        "ENTITY Point;\n DERIVE\n    Dim : INTEGER := 3;\n    All : LIST [3:3] OF Point := [SELF];\n"
        "END_ENTITY;\n"
        "ENTITY Wall;\n    Is : Kinds;\n    At : Point;\n INVERSE\n    Of : SET [0:1] OF Kind FOR Of;\n"
        " WHERE\n    A : Is[Is[1].Of.At.Dim].Title = 'x';\n    B : SELF\\Wall.Of[1].Of.At.Dim = 3;\n"
        "    C : At.All[1].Dim = At.Title;\n    D : F(At).Dim = 1;\nEND_ENTITY;\n");
    auto page = sample.sPage("Wall.html");
    page = page.substr(page.find("<div class=\"rule\" id=\"A\""));
    const std::string is = "<a href=\"Wall.html#Is\">Is</a>";
    const std::string at = "<a href=\"Wall.html#At\">At</a>";
    const std::string dim = "<a href=\"Point.html#Dim\">Dim</a>";
    const std::string kindOf = "<a href=\"Kind.html#Of\">Of</a>";
    EXPECT_THAT(page, HasSubstr(is + "[" + is + "[1]." + kindOf + "." + at + "." + dim +
                                "].<a href=\"Kind.html#Title\">Title</a> = "));
    EXPECT_THAT(page, HasSubstr("<a href=\"Wall.html\">Wall</a>.<a href=\"Wall.html#Of\">Of</a>[1]." +
                                kindOf + "." + at + "." + dim + " = 3"));
    // A point has no title, and what a function returns is not followed.
    EXPECT_THAT(page,
                HasSubstr(at + ".<a href=\"Point.html#All\">All</a>[1]." + dim + " = " + at + ".Title"));
    EXPECT_THAT(page, HasSubstr("(" + at + ").Dim = 1"));
}

TEST(EntityPage, NamesThatAreSearchedOrCalledAreFollowed) {
    const SiteSample sample(
        "TYPE Wood = ENUMERATION OF (Oak, Other);\nEND_TYPE;\n"
        "TYPE Stone = ENUMERATION OF (Slate, Other);\nEND_TYPE;\n"
        "ENTITY Door;\n    Leaf : Wood;\n    In : Wall;\nEND_ENTITY;\n"
        "ENTITY Gate\n SUBTYPE OF (Door);\n    Bars : REAL;\nEND_ENTITY;\n"
        "ENTITY Wall;\n    Of : SET OF Door;\n WHERE\n"
        "    A : SIZEOF(QUERY(d <* Of | d.Leaf = OAK)) = 0;\n"
        "    B : SIZEOF(QUERY(d <* QUERY(e <* (Of + Of) | e.Bars > 1) | d.In = SELF)) = 0;\n"
        "    C : SIZEOF(QUERY(d <* USEDIN(SELF, 'TEST.DOOR.IN') | d.Leaf = Other)) = 0;\n"
        "    D : SIZEOF(QUERY(d <* F(SELF) | (d).Leaf = Wood.oak)) = F(SELF)[1].Leaf;\n"
        "    E : SIZEOF(QUERY(d <* G(SELF) | d.Leaf = 1)) = G(SELF).Leaf;\n"
        "END_ENTITY;\n"
        "FUNCTION F\n    (w : Wall) : SET OF Door;\n    RETURN(w.Of);\nEND_FUNCTION;\n");
    const auto page = sample.sPage("Wall.html");
    const auto rule = [&](const std::string& label) {
        auto text = page.substr(page.find("<div class=\"rule\" id=\"" + label + "\""));
        text = text.substr(text.find("</h3>"));
        return text.substr(0, text.find("</div>"));
    };
    const std::string leaf = "d.<a href=\"Door.html#Leaf\">Leaf</a>";
    const std::string oak = "<a href=\"Wood.html#Oak\">";
    EXPECT_THAT(rule("A"), HasSubstr(leaf + " = " + oak + "OAK</a>"));
    EXPECT_THAT(rule("B"), HasSubstr("e.<a href=\"Gate.html#Bars\">Bars</a>"));
    EXPECT_THAT(rule("B"), HasSubstr("d.<a href=\"Door.html#In\">In</a>"));
    // Two enumerations have that item.
    EXPECT_THAT(rule("C"), HasSubstr(leaf + " = Other"));
    EXPECT_THAT(rule("D"),
                HasSubstr(".<a href=\"Door.html#Leaf\">Leaf</a> = <a href=\"Wood.html\">Wood</a>." + oak +
                          "oak</a>"));
    EXPECT_THAT(rule("D"), HasSubstr("[1].<a href=\"Door.html#Leaf\">Leaf</a>"));
    // Nothing is known of G.
    EXPECT_THAT(rule("E"), HasSubstr("d.Leaf = 1"));
    EXPECT_THAT(rule("E"), HasSubstr(").Leaf"));
}

/// Thick has a name and a size, each in two or three rows.
TEST(EntityPage, AttributesThatAreDeclaredAgainCountOnce) {
    const SiteSample sample("ENTITY Wall;\n    Name : STRING;\n    Size : REAL;\nEND_ENTITY;\n"
                            "ENTITY Mid\n SUBTYPE OF (Wall);\n    SELF\\Wall.Name : STRING(9);\n DERIVE\n"
                            "    SELF\\Wall.Size : REAL := 1.0;\nEND_ENTITY;\n"
                            "ENTITY Thick\n SUBTYPE OF (Mid);\n    SELF\\Wall.Name : STRING(5);\n DERIVE\n"
                            "    SELF\\Wall.Size : REAL := 2.0;\n    Half : REAL := 1.0;\nEND_ENTITY;\n");
    const auto sCount = [](const std::string& title, int count) {
        return "<h2>" + title + " <span class=\"count\">" + std::to_string(count) + "</span></h2>";
    };
    for (const std::string page : {"Wall.html", "Mid.html", "Thick.html"})
        EXPECT_THAT(sample.sPage(page), HasSubstr(sCount("Attributes", 2))) << page;
    EXPECT_THAT(sample.sPage("Mid.html"), HasSubstr(sCount("Derived attributes", 1)));
    EXPECT_THAT(sample.sPage("Thick.html"), HasSubstr(sCount("Derived attributes", 2)));
}

/// A comment ends with its line, and what comes after it is part of the value.
TEST(EntityPage, DerivedValueKeepsItsLines) {
    const SiteSample sample(
        "ENTITY Wall;\n    Size : REAL;\n DERIVE\n    Twice : REAL := Least(Size, -- own\n"
        "        Doubled(Size)); -- note\nEND_ENTITY;\n"
        "FUNCTION Doubled\n (x : REAL) : REAL;\n RETURN (2 * x);\nEND_FUNCTION;\n"
        "FUNCTION Least\n (x, y : REAL) : REAL;\n RETURN (x);\nEND_FUNCTION;\n");
    const auto page = sample.sPage("Wall.html");
    EXPECT_THAT(page,
                HasSubstr(", <span class=\"com\">-- own</span>\n        <a href=\"Doubled.html\">Doubled</a>("
                          "<a href=\"Wall.html#Size\">Size</a>))</code>"));
    EXPECT_THAT(page, Not(HasSubstr("note")));
    EXPECT_THAT(sample.sPage("Doubled.html"), HasSubstr("<a href=\"Wall.html#Twice\">"));
}

/// A rule without an operand cannot be parsed, and the library reads none after it.
TEST(EntityPage, RulesThatCouldNotBeReadAreThereAsText) {
    const SiteSample sample("ENTITY Wall;\n    Size : REAL;\n WHERE\n    First : Size > 1.0;\n"
                            "    Broken : Size > ;\n    Last : Doubled(Size) < 9.0;\nEND_ENTITY;\n"
                            "ENTITY Thick\n SUBTYPE OF (Wall);\nEND_ENTITY;\n"
                            "FUNCTION Doubled\n (x : REAL) : REAL;\n RETURN (2 * x);\nEND_FUNCTION;\n");
    const auto page = sample.sPage("Wall.html");
    EXPECT_THAT(page, HasSubstr("<h2>Rules <span class=\"count\">1</span></h2>"));
    EXPECT_THAT(page, HasSubstr("<h2>Rules that could not be read <span class=\"count\">2</span></h2>"));
    EXPECT_THAT(page, HasSubstr("<div class=\"rule\" id=\"Broken\">"));
    EXPECT_THAT(page, HasSubstr("<div class=\"rule\" id=\"Last\">"));
    EXPECT_THAT(page, HasSubstr("<pre class=\"express\"><code><a href=\"Doubled.html\">Doubled</a>("
                                "<a href=\"Wall.html#Size\">Size</a>) &lt; 9.0</code></pre>"));
    EXPECT_THAT(sample.sPage("Doubled.html"), HasSubstr("<a href=\"Wall.html#Last\">"));
    EXPECT_THAT(sample.sPage("Thick.html"),
                HasSubstr("<a href=\"Wall.html#Last\"><code>Wall.Last</code></a>"));
    const auto start = sample.sPage("index.html");
    EXPECT_THAT(start, HasSubstr("<dt>WHERE rules</dt><dd>3</dd>"));
    EXPECT_THAT(start, HasSubstr("<dt>of which could not be read</dt><dd>2</dd>"));
}

TEST_F(EntityPageTest, RuleLinksItsNames) {
    EXPECT_THAT(sSection("Wall.html", "where"),
                HasSubstr("<a href=\"Kind.html\">Kind</a>.<a href=\"Kind.html#A2\">A2</a>"));
    EXPECT_THAT(sample_.sPage("Wall.html"),
                HasSubstr("<a href=\"Root.html#Long\"><code>Root.Long</code></a>"));
}

TEST(EntityPage, NoUsesAreSaid) {
    EXPECT_THAT(SiteSample("ENTITY Wall;\nEND_ENTITY;\n").sPage("Wall.html"),
                HasSubstr("<h2>Used by</h2>\n<p>Nothing in the schema or the sets refers to it.</p>"));
}

TEST_F(EntityPageTest, UsesAreListed) {
    EXPECT_THAT(sSection("Wall.html", "uses"),
                HasSubstr("<a href=\"Room.html#Bounds\"><code>Room.Bounds</code></a>"));
    EXPECT_THAT(sSection("Wall.html", "uses"), Not(HasSubstr("Nothing in the schema")));
}

TEST_F(EntityPageTest, SetsOfSupertypesAreThereWithTheirMembers) {
    const auto section = sSection("Wall.html", "sets");
    EXPECT_THAT(section, HasSubstr("From <a href=\"Root.html\">"));
    EXPECT_THAT(section, HasSubstr("sets/Pset_Wall.html#Mark"));
    EXPECT_EQ(sSection("Room.html", "sets"), "");
}

TEST_F(EntityPageTest, TreeHasABoxForEachEntityOfTheLine) {
    const auto tree = sSection("Wall.html", "tree");
    EXPECT_THAT(tree, HasSubstr("<a href=\"Root.html\"><rect class=\"box abstract\""));
    EXPECT_THAT(tree, HasSubstr("<g class=\"here\"><rect class=\"box\""));
    EXPECT_THAT(tree, Not(HasSubstr("more</text>")));
}

/// Not its supertypes, with which the line begins.
TEST(EntityPage, AbstractIsSaidAfterTheNameOfTheEntity) {
    const SiteSample sample(
        "ENTITY Root;\nEND_ENTITY;\nENTITY Sub\n ABSTRACT SUPERTYPE\n SUBTYPE OF (Root);\n"
        "END_ENTITY;\n");
    EXPECT_THAT(
        sample.sPage("Sub.html"),
        HasSubstr("<p class=\"lead\"><a href=\"Root.html\"><code>Root</code></a> &gt; <code>Sub</code> "
                  "<span class=\"badge abstract\">abstract</span></p>"));
}

TEST(EntityPageTree, OfManySubtypesSomeAreShownAndTheOthersCounted) {
    std::string text = "ENTITY Top;\nEND_ENTITY;\n";
    for (int number = 100; number < 150; ++number)
        text += sEntity("Sub" + std::to_string(number), "Top");
    // One below an entity that is not shown.
    text += sEntity("Deep", "Sub149");
    const SiteSample sample(text);
    const auto page = sample.sPage("Top.html");
    // 50 subtypes and the one below them, less the 40 that are shown.
    EXPECT_THAT(page, HasSubstr(">and 11 more</text></a>"));
    EXPECT_THAT(page, HasSubstr("<a href=\"entities.html#Top\"><text class=\"more\""));
    EXPECT_THAT(page, HasSubstr("<a href=\"Sub139.html\">"));
    EXPECT_THAT(page, Not(HasSubstr("<a href=\"Sub140.html\">")));
}

TEST(EntityPageTree, LevelsThatDoNotFitAreCountedBesideTheirBox) {
    std::string text = "ENTITY Top;\nEND_ENTITY;\n" + sEntity("Middle", "Top");
    for (int number = 100; number < 150; ++number)
        text += sEntity("Sub" + std::to_string(number), "Middle");
    const SiteSample sample(text);
    EXPECT_THAT(sample.sPage("Top.html"), HasSubstr(">+ 50 below</text></a>"));
    EXPECT_THAT(sample.sPage("Top.html"), HasSubstr("<a href=\"entities.html#Middle\"><text class=\"more\""));
}

/// Else n entities in one line would take n * n rows.
TEST(EntityPageGrowth, LongLineOfSupertypesDoesNotMakeEachPageAsLong) {
    std::string text = "ENTITY E0;\nA0 : REAL;\nEND_ENTITY;\n";
    for (int number = 1; number <= 400; ++number) {
        const auto name = std::to_string(number);
        text += "ENTITY E" + name + "\n SUBTYPE OF (E" + std::to_string(number - 1) + ");\n A" + name +
                " : REAL;\nEND_ENTITY;\n";
    }
    const SiteSample sample(text);
    EXPECT_LT(sample.sPage("E400.html").size(), sample.sPage("E100.html").size() + 1000);
    EXPECT_THAT(sample.sPage("E400.html"), Not(HasSubstr("E300.html")));
}

TEST(EntityPageHostile, NamesAreText) {
    // What the library takes as a name ends at a blank.
    const SiteSample sample("ENTITY <script>alert(1)</script>;\n    <img/src=x> : REAL;\nEND_ENTITY;\n");
    const auto& entity = *sample.getModel().getEntities().front();
    const auto page = sample.sPage(std::string(sample.getModel().getAddresses().of(entity).getPath()));
    EXPECT_THAT(page, Not(HasSubstr("<script>alert")));
    EXPECT_THAT(page, HasSubstr("&lt;script&gt;"));
    EXPECT_THAT(page, Not(HasSubstr("<img")));
}

TEST_F(EntityPageTest, InheritedRowHasALinkToCopy) {
    EXPECT_THAT(sSection("Wall.html", "attributes"),
                HasSubstr("<tr id=\"Name\"><th scope=\"row\"><a href=\"Root.html#Name\">Name</a>"
                          "<a class=\"anchor\" href=\"#Name\""));
}

TEST_F(EntityPageTest, RegionsOfAPageHaveDifferentNames) {
    const auto page = sample_.sPage("Wall.html");
    EXPECT_THAT(page, HasSubstr("aria-label=\"Attributes of Wall\""));
    EXPECT_THAT(page, HasSubstr("aria-label=\"Inverse attributes of Wall\""));
    EXPECT_THAT(page, HasSubstr("aria-label=\"Derived attributes of Wall\""));
}

TEST(EntityPage, LineThatIsTooLongForAPageSaysWhereItGoesOn) {
    std::string text = "ENTITY E0;\nEND_ENTITY;\n";
    for (int number = 1; number < 40; ++number)
        text += "ENTITY E" + std::to_string(number) + "\n SUBTYPE OF (E" + std::to_string(number - 1) +
                ");\nEND_ENTITY;\n";
    const SiteSample sample(text);
    // Of 40 entities in a line, a page has the nearest 32.
    EXPECT_THAT(sample.sPage("E39.html"), HasSubstr("listed up to <a href=\"E8.html\"><code>E8</code></a>"));
    EXPECT_THAT(sample.sPage("E31.html"), Not(HasSubstr("listed up to")));
}

TEST(EntityPage, InheritedRulesThatAreNotListedAreCounted) {
    std::string text = "ENTITY Root;\n    Size : REAL;\n WHERE\n";
    for (int number = 0; number < 120; ++number)
        text += "    W" + std::to_string(number) + " : Size > 1.0;\n";
    const SiteSample sample(text + "END_ENTITY;\nENTITY Child\n SUBTYPE OF (Root);\nEND_ENTITY;\n");
    EXPECT_THAT(sample.sPage("Child.html"), HasSubstr(" and 20 more on the pages of the supertypes"));
}

/// The rule has the plain address, as links and the search have it; the inherited row has it not.
TEST(EntityPage, RuleIsNamedLikeAnInheritedAttribute) {
    const SiteSample sample("ENTITY Root;\n Name : REAL;\nEND_ENTITY;\n"
                            "ENTITY Wall\n SUBTYPE OF (Root);\n WHERE\n  Name : TRUE;\nEND_ENTITY;\n"
                            "ENTITY Thick\n SUBTYPE OF (Wall);\nEND_ENTITY;\n");
    const auto page = sample.sPage("Wall.html");
    EXPECT_THAT(page, HasSubstr("<div class=\"rule\" id=\"Name\">"));
    EXPECT_THAT(page, HasSubstr("<tr id=\"Name~~2\"><th scope=\"row\"><a href=\"Root.html#Name\">"));
    EXPECT_THAT(sample.sPage("Thick.html"), HasSubstr("<a href=\"Wall.html#Name\"><code>Wall.Name</code>"));
    EXPECT_THAT(sample.sPage("assets/search-index.js"), HasSubstr("\"Wall\",0,0,[[14,\"Name\"]]"));
}

} // namespace

} // namespace kiv::kivifc::site::test
