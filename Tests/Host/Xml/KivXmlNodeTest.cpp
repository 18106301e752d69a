#include "Host/Xml/XmlDump.h"
#include "kiv/Host/Xml/KivXml.h"

#include <gtest/gtest.h>
#include <sstream>
#include <vector>

namespace kiv::xml {
namespace {

using namespace std::string_literals;

/// A document read from a text in the test.
class Parsed {
public:
    explicit Parsed(const std::string& text) : file_(nullptr, VerboseLevel::Quiet, ValidateLevel::None) {
        std::istringstream stream(text);
        root_ = file_.parse(stream, "test", nullptr);
    }
    const_Element getRoot() const { return root_.value(); }

private:
    File file_;
    std::optional<Element> root_;
};

TEST(KivXmlElementTest, WithoutElementChildrenHasNoFirstElementChild) {
    const Parsed document("<a>text<!-- comment -->more<?target data?></a>");
    EXPECT_FALSE(document.getRoot().FirstElementChildGet());
}

TEST(KivXmlElementTest, ElementChildrenAreWalkedInDocumentOrder) {
    const Parsed document("<r> <a/>text<b><x/></b><!-- c --><?p?><c/> </r>");
    std::string tags;
    for (auto child = document.getRoot().FirstElementChildGet(); child;
         child = child->NextElementSiblingGet())
        tags += child->tagName() + " ";
    EXPECT_EQ(tags, "a b c ");
}

TEST(KivXmlElementTest, TagIsAsWrittenWithPrefixAndCase) {
    const Parsed document("<Pre:taG xmlns:Pre='u'/>");
    EXPECT_EQ(document.getRoot().tagName(), "Pre:taG");
    EXPECT_EQ(document.getRoot().tagNameView(), "Pre:taG");
    EXPECT_EQ(document.getRoot().getNodeName(), "Pre:taG");
}

TEST(KivXmlElementTest, AttributeIsFoundByItsExactNameOnly) {
    const Parsed document("<a lang='de' xml:lang='en'/>");
    EXPECT_EQ(document.getRoot().AttributeNodeGet("lang")->getValue(), "de");
    EXPECT_EQ(document.getRoot().AttributeNodeGet("xml:lang")->getValueView(), "en");
    EXPECT_FALSE(document.getRoot().AttributeNodeGet("Lang"));
    EXPECT_FALSE(document.getRoot().AttributeNodeGet("lan"));
    EXPECT_FALSE(document.getRoot().AttributeNodeGet(""));
}

TEST(KivXmlElementTest, RootHasNoSiblings) {
    const Parsed document("<!-- before --><a/><!-- after --><?after?>");
    EXPECT_FALSE(document.getRoot().NextSiblingGet());
    EXPECT_FALSE(document.getRoot().NextElementSiblingGet());
}

TEST(KivXmlElementTest, WrapperIsAbsentForEveryOtherKind) {
    const Parsed document("<a x='1'>text<!--c--><?p?><b/></a>");
    std::vector<bool> isElement;
    for (auto child = document.getRoot().FirstChildGet(); child; child = child->NextSiblingGet())
        isElement.push_back(const_Element::toWrapper(*child).has_value());
    EXPECT_EQ(isElement, (std::vector{false, false, false, true}));
    EXPECT_FALSE(const_Element::toWrapper(*document.getRoot().AttributeNodeGet("x")));
}

TEST(KivXmlElementTest, WrapperIsTheSameNode) {
    const Parsed document("<a><b/></a>");
    const const_Node child = *document.getRoot().FirstChildGet();
    EXPECT_EQ(*const_Element::toWrapper(child), child);
    EXPECT_FALSE(document.getRoot() == child);
}

TEST(KivXmlAttrTest, WrapperIsAbsentForEveryOtherKind) {
    const Parsed document("<a x='1'>text<!--c--><?p?><b/></a>");
    for (auto child = document.getRoot().FirstChildGet(); child; child = child->NextSiblingGet())
        EXPECT_FALSE(const_Attr::toWrapper(*child)) << child->getNodeName();
    EXPECT_FALSE(const_Attr::toWrapper(document.getRoot()));
    EXPECT_EQ(const_Attr::toWrapper(document.getRoot().AttributesGet()->ItemGet(0))->getValue(), "1");
}

TEST(KivXmlAttrTest, HasNameAndValueButNoChildrenNorSiblings) {
    const Parsed document("<a x='1' y='2'/>");
    const const_Attr attribute = *document.getRoot().AttributeNodeGet("x");
    EXPECT_EQ(attribute.getNodeName(), "x");
    EXPECT_EQ(attribute.getNodeValue(), "1");
    EXPECT_FALSE(attribute.FirstChildGet());
    EXPECT_FALSE(attribute.NextSiblingGet());
    EXPECT_FALSE(attribute.AttributesGet());
}

TEST(KivXmlNodeTest, NameIsComparedExactly) {
    const Parsed document("<Name/>");
    EXPECT_TRUE(document.getRoot().boNodeNameIs("Name"));
    EXPECT_TRUE(document.getRoot().boNodeNameIs(std::string("Name")));
    EXPECT_FALSE(document.getRoot().boNodeNameIs("name"));
    EXPECT_FALSE(document.getRoot().boNodeNameIs("Nam"));
    EXPECT_FALSE(document.getRoot().boNodeNameIs(""));
}

TEST(KivXmlNodeTest, ProcessingInstructionIsNeverTakenForAnElementOfItsTarget) {
    const Parsed document("<a><?Name data?></a>");
    const const_Node child = *document.getRoot().FirstChildGet();
    EXPECT_FALSE(child.boNodeNameIs("Name"));
    EXPECT_EQ(child.getNodeName(), "#processing-instruction");
}

TEST(KivXmlNodeTest, OnlyTextsAndAttributesHaveValues) {
    const Parsed document("<a x='v'>text<!--comment--><?target data?><b>inner</b></a>");
    std::vector<std::string> values;
    for (auto child = document.getRoot().FirstChildGet(); child; child = child->NextSiblingGet())
        values.push_back(child->getNodeValue());
    EXPECT_EQ(values, (std::vector<std::string>{"text", "", "", ""}));
    EXPECT_EQ(document.getRoot().getNodeValueView(), "");
}

TEST(KivXmlNodeTest, EmptyTagAndEmptyElementHaveNoFirstChild) {
    for (const char* text : {"<a/>", "<a></a>", "<a><![CDATA[]]></a>"})
        EXPECT_FALSE(Parsed(text).getRoot().FirstChildGet()) << text;
}

TEST(KivXmlNodeTest, CommentInFrontOfTheTextIsTheFirstChild) {
    const Parsed document("<a><!-- c -->text</a>");
    const auto first = document.getRoot().FirstChildGet();
    EXPECT_EQ(first->getNodeName(), "#comment");
    EXPECT_EQ(first->getNodeValue(), "");
    EXPECT_EQ(first->NextSiblingGet()->getNodeValue(), "text");
}

TEST(KivXmlNodeTest, ChildListStartsTheWalkOverTheChildren) {
    const Parsed document("<a>1<b/>2</a>");
    std::string dump;
    for (auto node = document.getRoot().ChildNodesGet().FirstItemGet(); node; node = node->NextSiblingGet())
        dump += test::sDump(*node);
    EXPECT_EQ(dump, "'1'b'2'");
    EXPECT_FALSE(document.getRoot().FirstChildGet()->ChildNodesGet().FirstItemGet())
        << "a text has no children";
}

TEST(KivXmlNodeTest, AttributesAreAbsentForTextsAndEmptyForBareElements) {
    const Parsed document("<a>text</a>");
    EXPECT_FALSE(document.getRoot().FirstChildGet()->AttributesGet());
    EXPECT_EQ(document.getRoot().AttributesGet()->LengthGet(), 0U);
}

TEST(KivXmlNodeTest, AttributesKeepTheirOrder) {
    const Parsed document("<a z='1' b='2' m='3'/>");
    const const_NamedNodeMap attributes = *document.getRoot().AttributesGet();
    ASSERT_EQ(attributes.LengthGet(), 3U);
    EXPECT_EQ(attributes.ItemGet(0).getNodeName(), "z");
    EXPECT_EQ(attributes.ItemGet(1).getNodeName(), "b");
    EXPECT_EQ(attributes.ItemGet(2).getNodeName(), "m");
}

TEST(KivXmlNodeTest, ConvertsBooleanTexts) {
    struct Row {
        std::string_view text;
        std::optional<bool> value;
    };
    const Row rows[] = {
        {"true", true},        {"false", false},         {"1", true},
        {"0", false},          {" true ", true},         {"\t\r\n0\n", false},
        {"", std::nullopt},    {"TRUE", std::nullopt},   {"True", std::nullopt},
        {"yes", std::nullopt}, {"01", std::nullopt},     {"true false", std::nullopt},
        {" ", std::nullopt},   {"true\v", std::nullopt}, {"\xC2\xA0true", std::nullopt},
    };
    for (const Row& row : rows)
        EXPECT_EQ(const_Node::from_string<bool>(row.text), row.value) << "\"" << row.text << "\"";
}

/// The lines of all nodes in document order, attributes after their element.
std::string sLines(const const_Node& node) {
    std::string lines = node.getNodeName() + ":" + std::to_string(node.getLine());
    if (const auto attributes = node.AttributesGet())
        for (std::uint64_t i = 0; i != attributes->LengthGet(); ++i)
            lines += " @"s + sLines(attributes->ItemGet(i));
    for (auto child = node.FirstChildGet(); child; child = child->NextSiblingGet())
        lines += " "s + sLines(*child);
    return lines;
}

std::string sWithLineEnds(const std::string& text, std::string_view lineEnd) {
    std::string changed;
    for (const char c : text)
        c == '\n' ? changed.append(lineEnd) : changed.append(1, c);
    return changed;
}

TEST(KivXmlNodeTest, KnowsTheLineOnWhichItBegan) {
    const std::string text = "<?xml version='1.0'?>\n"  // 1
                             "<!-- two\n"               // 2
                             "lines -->\n"              // 3
                             "<a\n"                     // 4
                             "  x='1'\n"                // 5
                             "  y='2\n"                 // 6
                             "'>text\n"                 // 7
                             "more<b/><c>\n"            // 8
                             "<!-- c\n"                 // 9
                             "--><?p\n"                 // 10
                             "?><d/>\n"                 // 11
                             "</c><![CDATA[\n"          // 12
                             "\n"                       // 13
                             "]]>&#10;&#10;<e/></a>\n"; // 14
    const std::string expected =
        "a:4 @x:4 @y:4 #text:7 b:8 c:8 #text:8 #comment:9 #processing-instruction:10 "
        "d:11 #text:11 #text:12 e:14";
    for (const std::string_view lineEnd : {"\n", "\r\n", "\r"})
        EXPECT_EQ(sLines(Parsed(sWithLineEnds(text, lineEnd)).getRoot()), expected)
            << "line ends of " << lineEnd.size() << " bytes";
}

TEST(KivXmlNodeTest, KnowsItsLineInEveryEncoding) {
    const std::string text = "<a>\n\n<b/>\r\n<c/></a>";
    std::string utf16("\xFF\xFE");
    for (const char c : text)
        utf16.append(1, c).append(1, '\0');
    for (const std::string& encoded :
         {text, "\xEF\xBB\xBF" + text, "<?xml version='1.0' encoding='ISO-8859-1'?>" + text, utf16})
        EXPECT_EQ(sLines(Parsed(encoded).getRoot()), "a:1 #text:1 b:3 #text:3 c:4") << encoded;
}

TEST(KivXmlNodeTest, KnowsItsLineInLongDocuments) {
    for (const std::string lineEnd : {"\n", "\r\n", "\r"}) {
        std::string text = "<r>" + lineEnd; // so the element with number i is on line i
        for (int i = 2; i != 20000; ++i)
            text += "<e n='"s + std::to_string(i) + "'/>" + lineEnd;
        const Parsed document(text + "</r>");
        for (auto child = document.getRoot().FirstElementChildGet(); child;
             child = child->NextElementSiblingGet())
            ASSERT_EQ(std::to_string(child->getLine()), child->AttributeNodeGet("n")->getValueView())
                << "line ends of " << lineEnd.size() << " bytes";
    }
}

TEST(KivXmlNodeTest, MadeByAProgramHasNoLine) {
    Document document;
    auto root = document.getNode().ElementNodeAppend("a");
    root.vAttributeSet("x", "1");
    root.boTextNodeAppend("text");
    EXPECT_EQ(sLines(root), "a:0 @x:0 #text:0");
}

} // namespace
} // namespace kiv::xml
