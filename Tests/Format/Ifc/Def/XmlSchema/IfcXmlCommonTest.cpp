#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlCommon.h"

#include "Format/Ifc/Def/XmlSchema/ConfigTools.h"
#include "Support/Allocations.h"
#include "Support/XmlFromText.h"

#include <algorithm>

namespace kiv::test {

namespace {

using ifc::def::xmlschema::expAttributeFromString;

TEST(ExpAttributeTest, IsReadFromItsText) {
    const struct {
        const char* text;
        int number;
    } rows[] = {{"attribute-tag", 1}, {"attribute-content", 2}, {"double-tag", 3}};
    const AssertCollector reports;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(numberOf(expAttributeFromString(row.text)), row.number);
    }
    EXPECT_EQ(reports.getRecords(), Reports());
}

TEST(ExpAttributeTest, AnyOtherTextIsReportedAndMeansContent) {
    for (const auto* text : {"", "ATTRIBUTE-TAG", "Double-Tag", "Attribute-Content", " double-tag",
                             "double-tag ", "no-tag", "3"}) {
        SCOPED_TRACE(text);
        const AssertCollector reports;
        EXPECT_EQ(numberOf(expAttributeFromString(text)), 2);
        EXPECT_EQ(reports.getRecords(),
                  Reports{report("Illegal string", "expAttributeFromString", "Common")});
    }
}

TEST(ExpAttributeTest, AnyOtherTextCostsNoMemoryWhenNobodyListens) {
    const auto before = allocationCount();
    const auto representation = expAttributeFromString("no-tag");
    EXPECT_EQ(allocationCount(), before);
    EXPECT_EQ(numberOf(representation), 2);
}

/// What one element may hold, and how its reader is named in reports.
struct ElementRow {
    std::string tag;
    /// The elements around it, below the root.
    std::string before;
    std::string after;
    /// What it needs to be read as a whole.
    std::string needed;
    Texts attributes;
    Texts children;
    std::string function;
    std::string module;
};

const std::string InEntity = "<cnf:entity select='IfcRoot'>";

const std::vector<ElementRow>& elementRows() {
    static const std::vector<ElementRow> rows = {
        {"cnf:entity", "", "", "", {"select"}, {"cnf:attribute", "cnf:inverse"}, "Entity::vRead", "Entity"},
        {"cnf:type", "", "", "", {"select", "map", "keep"}, {}, "Type::vRead", "Type"},
        {"cnf:attribute",
         InEntity,
         "</cnf:entity>",
         "select='Name'",
         {"select", "tagless", "keep", "exp-attribute"},
         {},
         "Attribute::{ctor}",
         "Attribute"},
        {"cnf:inverse",
         InEntity,
         "</cnf:entity>",
         "select='OwnerOf'",
         {"select", "exp-attribute"},
         {},
         "AttributeInverse::{ctor}",
         "Attribute"},
        {"cnf:schema",
         "",
         "",
         "",
         {"targetNamespace", "elementFormDefault", "attributeFormDefault", "embed-schema-items"},
         {"cnf:namespace"},
         "Schema::vInit",
         "Schema"},
        {"cnf:namespace",
         "<cnf:schema>",
         "</cnf:schema>",
         "",
         {"prefix", "alias"},
         {},
         "Namespace::vInit",
         "Namespace"},
        {"cnf:option",
         "",
         "",
         "",
         {"inheritance", "exp-type", "concrete-attribute", "entity-attribute", "tagless", "naming-convention",
          "generate-key"},
         {},
         "Option::vInit",
         "Option"},
        {"cnf:uosElement", "", "", "", {"name"}, {}, "UosElement::vInit", "UosElement"},
    };
    return rows;
}

bool isAmong(const Texts& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// All names that any element knows, and some that none does.
Texts allNames(Texts ElementRow::*known, Texts names) {
    for (const auto& row : elementRows())
        names.insert(names.end(), (row.*known).begin(), (row.*known).end());
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

/// The element with this further attribute and these children, in its place in a document.
std::string sElement(const ElementRow& row, const std::string& attribute, const std::string& children) {
    return row.before + "<" + row.tag + " " + row.needed + " " + attribute + ">" + children + "</" + row.tag +
           ">" + row.after;
}

Reports reportsOf(const std::string& children) {
    return ReadConfig(children).reports.getRecords();
}

TEST(ConfigElementsTest, KnowTheirAttributesAndReportAllOthers) {
    const auto names = allNames(&ElementRow::attributes, {"Select", "SELECT", "cnf:select", "expattribute",
                                                          "generate-keys", "id", "xmlns:x", "Name"});
    ASSERT_EQ(names.size(), 18U + 8U);
    for (const auto& row : elementRows()) {
        for (const auto& name : names) {
            SCOPED_TRACE(row.tag + " " + name);
            const bool known = isAmong(row.attributes, name);
            // "select" is there already where it is needed; the value is one that each attribute may have.
            const bool given = known && !row.needed.empty() && name == "select";
            const auto reports = reportsOf(sElement(row, given ? "" : name + "='double-tag'", ""));
            EXPECT_EQ(reports, known
                                   ? Reports()
                                   : Reports{report("Unknown attribute",
                                                    row.function + "::<lambda_1>::operator ()", row.module)});
        }
    }
}

TEST(ConfigElementsTest, KnowTheirChildrenAndReportAllOthers) {
    const auto names = allNames(&ElementRow::children,
                                {"cnf:Attribute", "attribute", "other:attribute", "cnf:entity", "cnf:type",
                                 "cnf:schema", "cnf:option", "cnf:uosElement", "namespace"});
    ASSERT_EQ(names.size(), 3U + 9U);
    for (const auto& row : elementRows()) {
        for (const auto& name : names) {
            SCOPED_TRACE(row.tag + " " + name);
            auto reports = reportsOf(sElement(row, "", "<" + name + "/>"));
            // A child that is known has reports of its own, of what it lacks.
            std::erase_if(reports, [](const auto& record) { return record.message != "Unknown element"; });
            EXPECT_EQ(reports, isAmong(row.children, name)
                                   ? Reports()
                                   : Reports{report("Unknown element",
                                                    row.function + "::<lambda_2>::operator ()", row.module)});
        }
    }
}

TEST(ConfigElementsTest, ReportEachUnknownOneAttributesFirst) {
    for (const auto& row : elementRows()) {
        SCOPED_TRACE(row.tag);
        const auto attribute =
            report("Unknown attribute", row.function + "::<lambda_1>::operator ()", row.module);
        const auto element =
            report("Unknown element", row.function + "::<lambda_2>::operator ()", row.module);
        EXPECT_EQ(reportsOf(sElement(row, "x='1' y='2'", "<x/>text<!-- comment --><y><z/></y><x/>")),
                  (Reports{attribute, attribute, element, element, element}));
    }
}

/// How many allocations it takes to read an option with that many attributes and children that it does not
/// know.
std::size_t allocationsFor(std::size_t unknown) {
    std::string attributes;
    std::string children;
    for (std::size_t index = 0; index < unknown; ++index) {
        attributes += " x" + std::to_string(index) + "='1'";
        children += "<x/>";
    }
    const XmlFromText document("<any" + attributes + ">" + children + "</any>");
    ifc::def::xmlschema::Option option;
    const auto before = allocationCount();
    option.vInit(document.root());
    return allocationCount() - before;
}

TEST(ConfigElementsTest, WhatIsUnknownCostsNoMemoryWhenNobodyListens) {
    EXPECT_EQ(allocationsFor(20), allocationsFor(0));
    const AssertCollector reports;
    EXPECT_GE(allocationsFor(20), allocationsFor(0) + 40) << "a report each";
}

TEST(ConfigElementsTest, KnowNoTextAndNeedNone) {
    for (const auto& row : elementRows()) {
        SCOPED_TRACE(row.tag);
        EXPECT_EQ(reportsOf(sElement(row, "", "text <!-- comment --> <?target data?> <![CDATA[<x/>]]>")),
                  Reports());
    }
}

} // namespace

} // namespace kiv::test
