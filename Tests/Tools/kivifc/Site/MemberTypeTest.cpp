#include "kivifc/Site/MemberType.h"

#include "kiv/Kit/Documents/SetMembers.h"

#include "Tools/kivifc/Site/SetTexts.h"
#include "Tools/kivifc/Site/SiteSample.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

constexpr const char* MemberTypeDeclarations = "TYPE Label = STRING;\nEND_TYPE;\nENTITY Wall;\nEND_ENTITY;\n";

struct Shown {
    std::string kind;
    std::string type;
};

/// How the only member of a set is shown.
Shown shown(const std::string& set, const MemberTypeDetail& detail = {}) {
    const SiteSample sample(MemberTypeDeclarations, {{"TEST", set}});
    const auto members = kit::setMembers(*sample.getModel().getSets().front().set);
    Html html("");
    vMemberTypeWrite(sample.getModel(), *members.at(0), detail, html);
    return {std::string(memberKind(*members.at(0)).getView()), html.takeText()};
}

Shown shownType(const std::string& type, const MemberTypeDetail& detail = {}) {
    return shown(sSet("S", {}, sProperty("P", type)), detail);
}

TEST(MemberType, EachKindShowsWhatItHas) {
    const std::string label = "<a href=\"Label.html\"><code>Label</code></a>";
    const std::string wall = "<a href=\"Wall.html\"><code>Wall</code></a>";
    struct Row {
        std::string type;
        std::string kind;
        std::string shown;
    };
    const Row rows[] = {
        {sSingle("Label"), "Single value", label},
        {sSingle("LABEL"), "Single value", label},
        {sSingle("Unknown", "METRE"), "Single value",
         "<code>Unknown</code> <span class=\"badge warning\">not in the schema</span> in <code>METRE</code>"},
        {sSingle(""), "Single value", ""},
        {"<TypePropertyBoundedValue><DataType type=\"Label\"/><ValueRangeDef><LowerBoundValue value=\"1\"/>"
         "<UpperBoundValue value=\"9\"/></ValueRangeDef></TypePropertyBoundedValue>",
         "Bounded value", label + " from <code>1</code> to <code>9</code>"},
        {"<TypePropertyReferenceValue reftype=\"Wall\"/>", "Reference", wall},
        {sEnumeration("PEnum_Kind", {"A", "B"}), "Enumeration", "<code>Kind</code>: <code>A, B</code>"},
        {"<TypePropertyListValue><ListValue><DataType type=\"Label\"/></ListValue></TypePropertyListValue>",
         "List", "of " + label},
        {"<TypePropertyListValue/>", "List", "of no type given"},
        {"<TypePropertyTableValue><Expression>y = x</Expression><DefiningValue><DataType type=\"Label\"/>"
         "<Values>1 2</Values></DefiningValue><DefinedValue><DataType type=\"Label\"/><UnitType "
         "type=\"METRE\"/></DefinedValue></TypePropertyTableValue>",
         "Table", label + ": <code>1 2</code> to " + label + " in <code>METRE</code> by <code>y = x</code>"},
        {"<TypePropertyTableValue/>", "Table", "no types given"},
        {"<TypePropertyTableValue><DefiningValue><DataType type=\"Label\"/></DefiningValue>"
         "</TypePropertyTableValue>",
         "Table", label + " to no type given"},
        {"<TypeComplexProperty name=\"CP\">" + sProperty("Q", sSingle("Label")) + "</TypeComplexProperty>",
         "Complex", "<code>CP</code> of 1 property"},
        {"", "No known type", ""},
        {"<TypePropertyRangeValue/>", "No known type", ""},
    };
    for (const auto& row : rows) {
        const auto found = shownType(row.type);
        EXPECT_EQ(found.kind, row.kind) << row.type;
        EXPECT_EQ(found.type, row.shown) << row.type;
    }
}

/// Rows without a column for the kind say it where the type does not.
TEST(MemberType, KindComesBeforeATypeThatDoesNotSayIt) {
    const std::string label = "<a href=\"Label.html\">Label</a>";
    struct Row {
        std::string type;
        std::string shown;
    };
    const Row rows[] = {
        {sSingle("Label"), label},
        {sSingle(""), "<span class=\"note\">no type given</span>"},
        {"", "<span class=\"note\">no type given</span>"},
        {"<TypePropertyBoundedValue><DataType type=\"Label\"/></TypePropertyBoundedValue>",
         "Bounded value " + label},
        {"<TypePropertyReferenceValue reftype=\"Wall\"/>", "Reference <a href=\"Wall.html\">Wall</a>"},
        {sEnumeration("K", {"A"}), "<code>K</code>: <code>A</code>"},
        {"<TypePropertyListValue><ListValue><DataType type=\"Label\"/></ListValue></TypePropertyListValue>",
         "List of " + label},
        {"<TypePropertyTableValue><DefiningValue><DataType type=\"Label\"/></DefiningValue><DefinedValue>"
         "<DataType type=\"Label\"/></DefinedValue></TypePropertyTableValue>",
         "Table: " + label + " to " + label},
        {"<TypePropertyTableValue/>", "Table: no types given"},
        {"<TypeComplexProperty name=\"CP\"></TypeComplexProperty>",
         "Complex <code>CP</code> of 0 properties"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(shownType(row.type, {.withKind = true}).type, row.shown) << row.type;
}

TEST(MemberType, QuantityHasItsMeasure) {
    const auto found =
        shown("<QtoSetDef><Name>Q</Name><QtoDefs><QtoDef><Name>A</Name><QtoType>Q_AREA</QtoType>"
              "</QtoDef></QtoDefs></QtoSetDef>");
    EXPECT_EQ(found.kind, "Area");
    EXPECT_EQ(found.type, "<code>IfcAreaMeasure</code>");
}

TEST(MemberType, ItemsBeyondTheLimitAreCounted) {
    EXPECT_EQ(shownType(sEnumeration("K", {"A", "B", "C", "D"}), {.itemsMax = 2}).type,
              "<code>K</code>: <code>A, B</code> and 2 more");
}

/// Hebrew letters are written from right to left, and would turn the order of all.
TEST(MemberType, ItemsOfOtherLettersAreApart) {
    EXPECT_EQ(shownType(sEnumeration("K", {"\xD7\x90", "\xD7\x91"})).type,
              "<code>K</code>: <code>\xD7\x90</code>, <code>\xD7\x91</code>");
}

/// The definitions come from the constants, the first of each name; a constant that is no item is shown too.
TEST(MemberType, ItemsHaveTheirDefinitionsWhenTheseAreAskedFor) {
    const auto constant = [](const std::string& name, const std::string& definition) {
        return sTagged("ConstantDef", sTagged("Name", name) + sTagged("Definition", definition));
    };
    const auto type = sEnumeration("K", {"A", "B"}, constant("A", "First.") + constant("C", "Third."));
    EXPECT_EQ(shownType(type, {.hasDefinitions = true}).type,
              "<code>K</code>: <ul>\n<li><code>A</code> <span class=\"note\">First.</span></li>\n"
              "<li><code>B</code></li>\n<li><code>C</code> <span class=\"note\">Third.</span></li>\n</ul>");
    EXPECT_EQ(shownType(type).type, "<code>K</code>: <code>A, B, C</code>");
}

} // namespace

} // namespace kiv::kivifc::site::test
