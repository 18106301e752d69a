#include "Format/Ifc/Def/IfcDefXmlNodes.h"

#include "Support/ErrorRecords.h"
#include "Support/XmlFromText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def::xml;

TEST(ElementChildren, AreTheElementsInDocumentOrder) {
    const XmlFromText document("<r>text<a/><!-- c --><b><x/></b>more<a/></r>");
    std::vector<std::string> tags;
    for (const auto& child : ElementChildren(document.root()))
        tags.push_back(child.tagName());
    EXPECT_EQ(tags, (std::vector<std::string>{"a", "b", "a"}));
}

TEST(ElementChildren, AreNoneWhereThereIsOnlyText) {
    const XmlFromText document("<r>text<!-- c --></r>");
    for (const auto& child : ElementChildren(document.root()))
        ADD_FAILURE() << child.tagName();
}

struct TextRow {
    const char* xml;
    /// What becomes of a text that was "before".
    const char* taken;
};

TEST(XmlNodes, TextIsTheValueOfTheFirstChildAlone) {
    const TextRow rows[] = {
        {"<r>text</r>", "text"},
        {"<r>  text\n</r>", "  text\n"},
        {"<r/>", "before"},
        {"<r></r>", "before"},
        {"<r>one<b/>two</r>", "one"},
        {"<r>one<!-- c -->two</r>", "one"},
        {"<r><b>inner</b>two</r>", ""},
        {"<r><!-- c -->two</r>", ""},
        {"<r>a<![CDATA[<b>]]>&amp;</r>", "a<b>&"},
    };
    for (const TextRow& row : rows) {
        SCOPED_TRACE(row.xml);
        const XmlFromText document(row.xml);
        std::string text = "before";
        vTextTake(document.root(), text);
        EXPECT_EQ(text, row.taken);
    }
}

TEST(XmlNodes, AttributeIsTakenWhenItIsThere) {
    const XmlFromText document("<r a='value' empty=''/>");
    std::string target = "before";
    EXPECT_FALSE(boAttributeTake(document.root(), "missing", target));
    EXPECT_EQ(target, "before");
    EXPECT_FALSE(boAttributeTake(document.root(), "A", target));
    EXPECT_EQ(target, "before");
    EXPECT_TRUE(boAttributeTake(document.root(), "a", target));
    EXPECT_EQ(target, "value");
    EXPECT_TRUE(boAttributeTake(document.root(), "empty", target));
    EXPECT_EQ(target, "");
}

TEST(XmlNodes, UnknownNodeIsRecordedWithItsTagAndLine) {
    const XmlFromText document("<r>\n<p:odd\n/></r>");
    XmlSetErrors errors;
    vUnknownNodeAdd(*kiv::xml::const_Element(document.root()).FirstElementChildGet(), errors);
    EXPECT_EQ(errors.getRecords(), (Records{error("p:odd", "Unknown xml node", 2)}));
}

TEST(XmlNodes, TextElementIsWrittenAlsoWithoutText) {
    XmlTarget target("r");
    vTextElementAppend(target.root(), "a", "1 < 2");
    vTextElementAppend(target.root(), "b", "");
    EXPECT_EQ(target.sText(), "<r><a>1 &lt; 2</a><b/></r>");
}

} // namespace

} // namespace kiv::test
