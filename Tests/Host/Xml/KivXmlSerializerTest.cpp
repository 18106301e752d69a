#include "Host/Xml/KivXmlSerializer.h"

#include "Host/Xml/KivXmlRecords.h"

#include <gtest/gtest.h>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>

namespace kiv::xml {
namespace {

std::string sWritten(const NodeRecord& node, WriteStyle style) {
    std::ostringstream stream;
    vNodeWrite(stream, node, style);
    return stream.str();
}

/// A document whose root element is "r".
struct Tree {
    Tree() : root(pAppend(document.node, "r")) {}

    ElementRecord* pAppend(ElementRecord& parent, std::string_view name) {
        auto& element = document.elementMake(parent, name, 1);
        document.vElementAppend(parent, element);
        return &element;
    }
    void vText(ElementRecord& parent, std::string_view text) {
        document.vTextAppend(parent, text, [] { return 1U; });
    }

    DocumentRecords document;
    ElementRecord* root;
};

TEST(KivXmlSerializerTest, OfADocumentTheDeclarationComesFirst) {
    Tree tree;
    EXPECT_EQ(sWritten(tree.document.node, WriteStyle::Compact),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?><r/>");
    EXPECT_EQ(sWritten(tree.document.node, WriteStyle::Indented),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r/>\n");
}

TEST(KivXmlSerializerTest, OfAnEmptyDocumentNothingIsWritten) {
    const DocumentRecords document;
    EXPECT_EQ(sWritten(document.node, WriteStyle::Compact), "");
    EXPECT_EQ(sWritten(document.node, WriteStyle::Indented), "");
}

TEST(KivXmlSerializerTest, EachKindOfNode) {
    Tree tree;
    tree.document.vNodeAppend(*tree.root, NodeKind::Comment, " a < b ", 1);
    tree.document.vNodeAppend(*tree.root, NodeKind::ProcessingInstruction, "target data", 1);
    tree.pAppend(*tree.root, "e");
    tree.vText(*tree.root, "text");
    EXPECT_EQ(sWritten(*tree.root, WriteStyle::Compact), "<r><!-- a < b --><?target data?><e/>text</r>");
    EXPECT_EQ(sWritten(*tree.root->firstChild, WriteStyle::Compact), "<!-- a < b -->");
    EXPECT_EQ(sWritten(*tree.root->lastChild, WriteStyle::Compact), "text");
}

TEST(KivXmlSerializerTest, AnAttributeAloneWritesNothing) {
    Tree tree;
    const auto& attribute = tree.document.attributeAppend(*tree.root, "a", "1");
    EXPECT_EQ(sWritten(attribute, WriteStyle::Compact), "");
    EXPECT_EQ(sWritten(*tree.root, WriteStyle::Compact), "<r a=\"1\"/>");
}

// A carriage return would be read as a line feed, and white space in an attribute as a blank.
TEST(KivXmlSerializerTest, WhatAReaderWouldChangeIsEscaped) {
    Tree tree;
    tree.vText(*tree.root, "&<>\r\n\t\"'");
    EXPECT_EQ(sWritten(*tree.root, WriteStyle::Compact), "<r>&amp;&lt;&gt;&#13;\n\t\"'</r>");
    Tree other;
    other.document.attributeAppend(*other.root, "a", "&<>\r\n\t\"'");
    other.document.attributeAppend(*other.root, "b", "");
    EXPECT_EQ(sWritten(*other.root, WriteStyle::Compact),
              "<r a=\"&amp;&lt;&gt;&#13;&#10;&#9;&quot;'\" b=\"\"/>");
}

TEST(KivXmlSerializerTest, IndentedElementsAreFourSpacesDeeperButForThoseWithText) {
    Tree tree;
    auto* const set = tree.pAppend(*tree.root, "set");
    tree.pAppend(*set, "empty");
    auto* const name = tree.pAppend(*set, "name");
    tree.vText(*name, "Wall");
    auto* const inner = tree.pAppend(*name, "b");
    tree.pAppend(*inner, "c");
    EXPECT_EQ(sWritten(*tree.root, WriteStyle::Indented), "<r>\n"
                                                          "    <set>\n"
                                                          "        <empty/>\n"
                                                          "        <name>Wall<b><c/></b></name>\n"
                                                          "    </set>\n"
                                                          "</r>");
}

/// Counts the pieces that it gets.
class CountingBuffer final : public std::stringbuf {
public:
    int writes = 0;

protected:
    std::streamsize xsputn(const char* text, std::streamsize size) override {
        ++writes;
        return std::stringbuf::xsputn(text, size);
    }
};

TEST(KivXmlSerializerTest, ALongDocumentIsWrittenInPieces) {
    Tree tree;
    std::string expected = "<r>";
    for (int i = 0; i < 10'000; ++i) {
        tree.pAppend(*tree.root, "element");
        expected += "<element/>";
    }
    expected += "</r>";
    CountingBuffer buffer;
    std::ostream stream(&buffer);
    vNodeWrite(stream, *tree.root, WriteStyle::Compact);
    EXPECT_TRUE(buffer.str() == expected);
    // 100 kB in pieces of 16 kB.
    EXPECT_GE(buffer.writes, 6);
    EXPECT_LE(buffer.writes, 8);
}

TEST(KivXmlSerializerTest, AStreamThatFailsSaysSo) {
    Tree tree;
    std::ostringstream stream;
    stream.setstate(std::ios_base::badbit);
    vNodeWrite(stream, *tree.root, WriteStyle::Compact);
    EXPECT_TRUE(stream.bad());
    EXPECT_EQ(stream.str(), "");
}

} // namespace
} // namespace kiv::xml
