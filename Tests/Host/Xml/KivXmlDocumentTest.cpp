#include "Host/Xml/XmlDump.h"
#include "kiv/Host/Xml/KivXml.h"

#include <gtest/gtest.h>
#include <random>
#include <sstream>
#include <vector>

namespace kiv::xml {
namespace {

using namespace std::string_literals;
using test::sDump;
using test::sDumpRead;
using test::sWritten;

constexpr std::string_view declaration = R"(<?xml version="1.0" encoding="UTF-8"?>)";

std::string sWrittenDocument(const Document& document, WriteStyle style) {
    std::ostringstream stream;
    document.vWrite(stream, style);
    return stream.str();
}

/// An element in a document of its own.
struct Root {
    Document document;
    Element element = document.getNode().ElementNodeAppend("r");
};

TEST(KivXmlDocumentTest, CompactOutputAddsNothing) {
    Root root;
    root.element.ElementNodeAppend("Name").boTextNodeAppend("Pset_WallCommon");
    root.element.ElementNodeAppend("Empty").vAttributeSet("lang", "de");
    EXPECT_EQ(sWrittenDocument(root.document, WriteStyle::Compact),
              std::string(declaration) + R"(<r><Name>Pset_WallCommon</Name><Empty lang="de"/></r>)");
}

TEST(KivXmlDocumentTest, IndentedOutputGivesEachChildALine) {
    Root root;
    auto set = root.element.ElementNodeAppend("Set");
    set.ElementNodeAppend("Name").boTextNodeAppend("Pset");
    set.ElementNodeAppend("Empty");
    EXPECT_EQ(sWrittenDocument(root.document, WriteStyle::Indented), std::string(declaration) +
                                                                         "\n"
                                                                         "<r>\n"
                                                                         "    <Set>\n"
                                                                         "        <Name>Pset</Name>\n"
                                                                         "        <Empty/>\n"
                                                                         "    </Set>\n"
                                                                         "</r>\n");
}

TEST(KivXmlDocumentTest, IndentedOutputAddsNothingBelowAnElementWithText) {
    Root root;
    auto mixed = root.element.ElementNodeAppend("m");
    mixed.ElementNodeAppend("a").ElementNodeAppend("b");
    mixed.boTextNodeAppend(" ");
    EXPECT_EQ(sWritten(root.element, WriteStyle::Indented), "<r>\n    <m><a><b/></a> </m>\n</r>");
}

TEST(KivXmlDocumentTest, WithoutRootElementWritesNothing) {
    Document document;
    EXPECT_FALSE(document.DocumentElementGet());
    EXPECT_EQ(sWrittenDocument(document, WriteStyle::Compact), "");
    EXPECT_EQ(sWrittenDocument(document, WriteStyle::Indented), "");
}

TEST(KivXmlDocumentTest, ItsNodeIsWrittenLikeTheDocument) {
    Root root;
    EXPECT_EQ(sWritten(root.document.getNode()), sWrittenDocument(root.document, WriteStyle::Compact));
    EXPECT_EQ(root.document.getNode().getNodeName(), "#document");
    EXPECT_EQ(root.document.getNode().FirstChildGet(), root.element);
}

TEST(KivXmlDocumentTest, KnowsItsRootElement) {
    Root root;
    EXPECT_EQ(root.document.DocumentElementGet(), const_Element(root.element));
}

TEST(KivXmlDocumentTest, SecondRootElementIsRefusedAndHangsNowhere) {
    Root root;
    auto second = root.document.getNode().ElementNodeAppend("second");
    second.vAttributeSet("a", "1");
    second.ElementNodeAppend("child").boTextNodeAppend("text");
    EXPECT_EQ(sDump(second), "second[a='1'](child('text'))");
    EXPECT_EQ(sDump(root.document.getNode()), "#document(r)");
}

TEST(KivXmlDocumentTest, TextOutsideTheRootElementIsRefused) {
    Root root;
    EXPECT_FALSE(root.document.getNode().boTextNodeAppend("text"));
    EXPECT_FALSE(root.document.getNode().boTextNodeAppend(""));
    EXPECT_EQ(sDump(root.document.getNode()), "#document(r)");
}

TEST(KivXmlDocumentTest, ElementBelowTheDeepestLevelIsRefused) {
    Root root;
    Element deepest = root.element;
    for (std::size_t level = 2; level <= maxElementDepth; ++level)
        deepest = deepest.ElementNodeAppend("e");
    Element refused = deepest.ElementNodeAppend("refused");
    refused.ElementNodeAppend("too");
    EXPECT_EQ(sDump(deepest), "e");
    EXPECT_EQ(sDump(refused), "refused") << "its children would be too deep as well";
    EXPECT_EQ(sDumpRead(sWrittenDocument(root.document, WriteStyle::Compact)), sDump(root.element));
}

TEST(KivXmlDocumentTest, HandlesStayValidWhenItIsMoved) {
    Root root;
    Document moved = std::move(root.document);
    root.element.ElementNodeAppend("later");
    EXPECT_EQ(sDump(*moved.DocumentElementGet()), "r(later)");
    Document assigned;
    assigned = std::move(moved);
    root.element.ElementNodeAppend("still");
    EXPECT_EQ(sDump(*assigned.DocumentElementGet()), "r(later still)");
}

TEST(KivXmlElementTest, ChildrenAreAppendedAfterThoseThatAreThere) {
    Root root;
    root.element.ElementNodeAppend("a");
    EXPECT_TRUE(root.element.boTextNodeAppend("text"));
    root.element.ElementNodeAppend("b");
    EXPECT_EQ(sDump(root.element), "r(a 'text' b)");
}

TEST(KivXmlElementTest, TextsThatTouchBecomeOne) {
    Root root;
    root.element.boTextNodeAppend("1");
    root.element.boTextNodeAppend("2");
    auto child = root.element.ElementNodeAppend("a");
    root.element.boTextNodeAppend("3");
    child.boTextNodeAppend("inner");
    root.element.boTextNodeAppend("4");
    child.boTextNodeAppend(" more");
    EXPECT_EQ(sDump(root.element), "r('12' a('inner more') '34')");
}

TEST(KivXmlElementTest, EmptyTextAppendsNothing) {
    Root root;
    EXPECT_TRUE(root.element.boTextNodeAppend(""));
    EXPECT_FALSE(root.element.FirstChildGet());
}

TEST(KivXmlElementTest, AttributeSetAgainIsReplacedInItsPlace) {
    Root root;
    root.element.vAttributeSet("a", "1");
    root.element.vAttributeSet("b", "2");
    root.element.vAttributeSet("a", "other");
    EXPECT_EQ(sDump(root.element), "r[a='other' b='2']");
}

TEST(KivXmlElementTest, TakesManyAttributesAndKeepsHandlesToThem) {
    Root root;
    root.element.vAttributeSet("a0", "0");
    const const_Attr first = *const_Element(root.element).AttributeNodeGet("a0");
    for (int i = 1; i != 100; ++i) {
        const std::string number = std::to_string(i);
        root.element.vAttributeSet("a" + number, number);
    }
    root.element.vAttributeSet("a0", "changed");
    EXPECT_EQ(first.getValue(), "changed");
    EXPECT_EQ(root.element.AttributesGet()->LengthGet(), 100U);
    EXPECT_EQ(const_Element(root.element).AttributeNodeGet("a99")->getValue(), "99");
}

struct ReplaceRow {
    std::string given;
    std::string kept;
};

TEST(KivXmlElementTest, NamesThatAreNoXmlNamesAreMadeSome) {
    const ReplaceRow rows[] = {
        {"Name", "Name"},
        {"a:b", "a:b"},
        {"_-.9", "_-.9"},
        {"", "_"},
        {"1a", "_a"},
        {"-", "_"},
        {"a b", "a_b"},
        {"a<b>", "a_b_"},
        {"a\nb", "a_b"},
        {"a='1' b", "a__1__b"},
        {"a\0b"s, "a_b"},
        {"gr\xC3\xB6\xC3\x9F"
         "e",
         "gr\xC3\xB6\xC3\x9F"
         "e"},
        {"\xE5\x90\x8D\xE5\x89\x8D", "\xE5\x90\x8D\xE5\x89\x8D"}, // ideographs
        {"a\xC2\xA0z", "a_z"},                                    // a space that does not break
        {"\xCC\x81z", "_z"},                                      // an accent cannot be first,
        {"e\xCC\x81", "e\xCC\x81"},                               // but after a letter
        {"a\xE4z", "a_z"},                                        // not UTF-8
        {"a\xE2\x82", "a__"},                                     // not UTF-8, two bytes
        {"\xF0\x9F\x98\x80", "_"},
    };
    for (const ReplaceRow& row : rows) {
        Root root;
        root.element.ElementNodeAppend(row.given);
        EXPECT_EQ(root.element.FirstChildGet()->getNodeName(), row.kept) << row.given;
        root.element.vAttributeSet(row.given, "v");
        EXPECT_EQ(root.element.AttributesGet()->ItemGet(0).getNodeName(), row.kept) << row.given;
        EXPECT_EQ(sDumpRead(sWritten(root.element)), sDump(root.element)) << row.given;
    }
}

TEST(KivXmlElementTest, AttributeNamesThatBecomeTheSameAreTheSame) {
    Root root;
    root.element.vAttributeSet("a b", "1");
    root.element.vAttributeSet("a_b", "2");
    root.element.vAttributeSet("a\tb", "3");
    EXPECT_EQ(sDump(root.element), "r[a_b='3']");
}

TEST(KivXmlElementTest, CharactersThatXmlCannotCarryAreReplaced) {
    const std::string replacement = "\xEF\xBF\xBD";
    const ReplaceRow rows[] = {
        {"plain", "plain"},
        {"\t\n\r", "\t\n\r"},
        {"\x7F", "\x7F"},
        {"a\0b"s, "a" + replacement + "b"},
        {"\x1B[0m", replacement + "[0m"},
        {"\xE4", replacement},
        {"\xC0\x80", replacement + replacement},
        {"\xE2\x82", replacement + replacement},
        {"\xED\xA0\x80", replacement + replacement + replacement}, // half of a surrogate pair
        {"\xF5\x80\x80\x80", replacement + replacement + replacement + replacement}, // begins nothing
        {"\xF4\x90\x80\x80", replacement + replacement + replacement + replacement},
        {"\xEF\xBF\xBE", replacement}, // U+FFFE is one character
        {"\xEF\xBF\xBF", replacement},
        {"\xEF\xBF\xBC", "\xEF\xBF\xBC"},
        {"\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"}, // U+10FFFF is the last
        {"\xE2\x82\xAC", "\xE2\x82\xAC"},
    };
    for (const ReplaceRow& row : rows) {
        Root root;
        root.element.boTextNodeAppend(row.given);
        root.element.vAttributeSet("a", row.given);
        EXPECT_EQ(root.element.FirstChildGet()->getNodeValue(), row.kept) << row.given;
        EXPECT_EQ(root.element.AttributesGet()->ItemGet(0).getNodeValue(), row.kept) << row.given;
        EXPECT_EQ(sDumpRead(sWritten(root.element)), sDump(root.element)) << row.given;
    }
}

TEST(KivXmlElementTest, EscapesWhatAReaderWouldTakeForMarkupOrChange) {
    Root root;
    root.element.vAttributeSet("a", "<&>\"'\t\n\r");
    root.element.boTextNodeAppend("<&>\"'\t\n\r]]>");
    EXPECT_EQ(sWritten(root.element), "<r a=\"&lt;&amp;&gt;&quot;'&#9;&#10;&#13;\">"
                                      "&lt;&amp;&gt;\"'\t\n&#13;]]&gt;</r>");
}

TEST(KivXmlNodeTest, WritesEachKindByItself) {
    std::istringstream stream("<a x='1'>t&amp;<!-- c --><?p  d ?><?q?></a>");
    File file(nullptr, VerboseLevel::Quiet, ValidateLevel::None);
    const const_Element root = *file.parse(stream, "", nullptr);
    std::vector<std::string> written{sWritten(*root.AttributeNodeGet("x"))};
    for (auto child = root.FirstChildGet(); child; child = child->NextSiblingGet())
        written.push_back(sWritten(*child));
    EXPECT_EQ(written, (std::vector<std::string>{"", "t&amp;", "<!-- c -->", "<?p d ?>", "<?q?>"}));
}

TEST(KivXmlNodeTest, WhatWasReadIsWrittenAndReadsBackTheSame) {
    const std::string texts[] = {
        "<a/>",
        "<a> <b x='1' y='&lt;&#10;&quot;'/>\n\t<!-- c --><?p d?>text<![CDATA[<]]>&#13;<c>]]&gt;</c></a>",
        "<?xml version='1.0' encoding='ISO-8859-1'?><\xE4 \xF6='\xFC'>\xDF</\xE4>",
        "<a><!--c--><b/><!--d--></a>",
    };
    for (const std::string& text : texts) {
        std::istringstream stream(text);
        File file(nullptr, VerboseLevel::Quiet, ValidateLevel::None);
        const const_Element root = *file.parse(stream, "", nullptr);
        EXPECT_EQ(sDumpRead(sWritten(root)), sDump(root)) << text;
    }
}

TEST(KivXmlNodeTest, CommentsAreIndentedLikeElements) {
    std::istringstream stream("<a><!--c--><b/><?p?></a>");
    File file(nullptr, VerboseLevel::Quiet, ValidateLevel::None);
    EXPECT_EQ(sWritten(*file.parse(stream, "", nullptr), WriteStyle::Indented),
              "<a>\n    <!--c-->\n    <b/>\n    <?p?>\n</a>");
}

/// Every code point, the ones that are none included, as UTF-8 would write them.
std::string sEncoded(std::uint32_t codePoint) {
    const auto byte = [](std::uint32_t value) { return static_cast<char>(value); };
    const auto tail = [&](int shift) { return byte(0x80 | (codePoint >> shift & 0x3F)); };
    if (codePoint < 0x80)
        return {byte(codePoint)};
    if (codePoint < 0x800)
        return {byte(0xC0 | codePoint >> 6), tail(0)};
    if (codePoint < 0x10000)
        return {byte(0xE0 | codePoint >> 12), tail(6), tail(0)};
    return {byte(0xF0 | codePoint >> 18), tail(12), tail(6), tail(0)};
}

/// The range "Char" of XML 1.0.
bool isXmlCharacter(std::uint32_t codePoint) {
    return codePoint == 0x9 || codePoint == 0xA || codePoint == 0xD ||
           (codePoint >= 0x20 && codePoint <= 0xD7FF) || (codePoint >= 0xE000 && codePoint <= 0xFFFD) ||
           codePoint >= 0x10000;
}

TEST(KivXmlDocumentTest, EveryCharacterReadsBackOrWasReplaced) {
    Root root;
    std::string all;
    std::string carried;
    for (std::uint32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
        if (codePoint >= 0xD800 && codePoint <= 0xDFFF)
            continue;
        all += sEncoded(codePoint);
        carried += isXmlCharacter(codePoint) ? sEncoded(codePoint) : "\xEF\xBF\xBD";
    }
    root.element.boTextNodeAppend(all);
    root.element.vAttributeSet("a", all);
    std::istringstream stream(sWrittenDocument(root.document, WriteStyle::Compact));
    File file(nullptr, VerboseLevel::Quiet, ValidateLevel::None);
    const auto read = file.parse(stream, "", nullptr);
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->FirstChildGet()->getNodeValueView() == carried);
    EXPECT_TRUE(read->AttributesGet()->ItemGet(0).getNodeValueView() == carried);
}

TEST(KivXmlDocumentTest, EveryNameReadsBack) {
    Root root;
    for (std::uint32_t codePoint = 0; codePoint <= 0xFFFF; codePoint += codePoint < 0x800 ? 1 : 101) {
        const std::string character = sEncoded(codePoint);
        root.element.ElementNodeAppend(character);
        root.element.ElementNodeAppend("a" + character).vAttributeSet(character, "");
    }
    EXPECT_EQ(sDumpRead(sWritten(root.element)), sDump(root.element));
}

/// Builds trees at random, the same ones in each run.
class RandomTree {
public:
    explicit RandomTree(unsigned seed) : random_(seed) { vFill(root.element, 0); }

    Root root;

private:
    std::size_t getBelow(std::size_t limit) { return random_() % limit; }

    std::string sText() {
        static const std::string pieces[] = {
            "a",        " ",    "\n",   "\r",    "\t",           "<", ">", "&", "\"", "'", "]]>", "--",
            "\xC3\xA4", "\xE4", "\x01", "&amp;", "\xEF\xBF\xBF", "1", ":", "?>"};
        std::string text;
        for (std::size_t i = getBelow(5); i != 0; --i)
            text += pieces[getBelow(std::size(pieces))];
        return text;
    }

    void vFill(Element element, int depth) {
        for (std::size_t i = getBelow(4); i != 0; --i)
            element.vAttributeSet(sText(), sText());
        for (std::size_t i = getBelow(6); i != 0; --i) {
            if (depth < 6 && getBelow(2) == 0)
                vFill(element.ElementNodeAppend(sText()), depth + 1);
            else
                element.boTextNodeAppend(sText());
        }
    }

    std::mt19937 random_;
};

/// The dump without texts of white space alone, which are put between elements to indent them.
std::string sDumpWithoutIndent(const const_Node& node) {
    if (node.boNodeNameIs("#text"))
        return node.getNodeValue().find_first_not_of(" \n") == std::string::npos ? "" : sDump(node);
    std::string dump = node.getNodeName() + "(";
    for (auto child = node.FirstChildGet(); child; child = child->NextSiblingGet())
        dump += sDumpWithoutIndent(*child) + ",";
    return dump + ")";
}

TEST(KivXmlDocumentTest, CompactOutputReadsBackToTheSameTree) {
    for (unsigned seed = 0; seed != 500; ++seed) {
        const RandomTree tree(seed);
        const std::string written = sWrittenDocument(tree.root.document, WriteStyle::Compact);
        ASSERT_EQ(sDumpRead(written), sDump(tree.root.element)) << "seed " << seed;
    }
}

TEST(KivXmlDocumentTest, IndentedOutputReadsBackToTheSameTreeButForWhiteSpace) {
    const auto sStripped = [](const const_Node& node) {
        std::string dump = sDumpWithoutIndent(node);
        for (std::size_t at = dump.find(",,"); at != std::string::npos; at = dump.find(",,"))
            dump.erase(at, 1);
        for (std::size_t at = dump.find("(,"); at != std::string::npos; at = dump.find("(,"))
            dump.erase(at + 1, 1);
        return dump;
    };
    for (unsigned seed = 0; seed != 500; ++seed) {
        const RandomTree tree(seed);
        std::istringstream stream(sWrittenDocument(tree.root.document, WriteStyle::Indented));
        File file(nullptr, VerboseLevel::Quiet, ValidateLevel::None);
        const auto read = file.parse(stream, "", nullptr);
        ASSERT_TRUE(read) << "seed " << seed;
        ASSERT_EQ(sStripped(*read), sStripped(tree.root.element)) << "seed " << seed;
    }
}

} // namespace
} // namespace kiv::xml
