#include "kiv/Kit/Positions/XmlPositions.h"

#include <atomic>
#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace kiv::kit {

namespace {

using testing::ElementsAre;

/// The bytes of the file that a range is about.
std::string_view bytesOf(std::string_view file, const ByteRange& range) {
    return range.isKnown() ? file.substr(range.offset, range.length) : std::string_view("(unknown)");
}

const XmlElement& elementOf(const XmlPositions& xml, std::string_view name) {
    for (const auto& element : xml.getElements()) {
        if (element.name == name)
            return element;
    }
    throw std::logic_error("no element " + std::string(name));
}

std::vector<std::string> elementLines(const XmlPositions& xml) {
    std::vector<std::string> lines;
    for (const auto& element : xml.getElements()) {
        const auto position = xml.positionOf(element);
        lines.push_back(std::to_string(position.line) + ":" + std::to_string(position.column) + "+" +
                        std::to_string(position.length) + " " + std::string(element.name));
    }
    return lines;
}

/// The text in UTF-16 with a byte order mark; ASCII and what takes one unit.
std::string utf16(std::u16string_view text, bool isBigEndian) {
    std::string bytes = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char16_t unit : text) {
        const auto high = static_cast<char>(unit >> 8);
        const auto low = static_cast<char>(unit & 0xFF);
        bytes.push_back(isBigEndian ? high : low);
        bytes.push_back(isBigEndian ? low : high);
    }
    return bytes;
}

TEST(XmlPositionsTest, FindsTheNamesOfElements) {
    const XmlPositions xml("<a>\n\t<b/><p:c\n/>\r\n<d></d>\r<e/></a>");
    EXPECT_THAT(elementLines(xml), ElementsAre("1:2+1 a", "2:3+1 b", "2:7+3 p:c", "4:2+1 d", "5:2+1 e"));
    EXPECT_EQ(xml.pError(), nullptr);
}

TEST(XmlPositionsTest, CountsCodePointsAndNoBytes) {
    const XmlPositions xml("<a><!-- \xC3\xA4\xE6\xA2\x81\xF0\x9F\x98\x80\t--><b/></a>");
    // "<a>" is 3, "<!-- " 5, four code points, "-->" 3, "<" 1.
    EXPECT_EQ(xml.positionOf(elementOf(xml, "b")), (TextPosition{1, 17, 1}));
}

TEST(XmlPositionsTest, GivesTheTreeOfElements) {
    const XmlPositions xml("<a><b><c/></b><d/></a>");
    const auto elements = xml.getElements();
    ASSERT_EQ(elements.size(), 4);
    EXPECT_EQ(elements[0].parent, NoXmlElement);
    EXPECT_EQ(elements[0].firstChild, 1);
    EXPECT_EQ(elements[0].nextSibling, NoXmlElement);
    EXPECT_EQ(elements[0].descendantsEnd, 4);
    EXPECT_EQ(elements[1].firstChild, 2);
    EXPECT_EQ(elements[1].nextSibling, 3);
    EXPECT_EQ(elements[1].descendantsEnd, 3);
    EXPECT_EQ(elements[2].parent, 1);
    EXPECT_EQ(elements[3].parent, 0);
}

TEST(XmlPositionsTest, FindsAttributesAndTheirBytes) {
    const std::string file = "<a one='1'\n  two = \"x y\" three=\"&lt;\"/>";
    const XmlPositions xml(file);
    const auto attributes = xml.getAttributes(*xml.pRoot());
    ASSERT_EQ(attributes.size(), 3);
    EXPECT_EQ(attributes[0].name, "one");
    EXPECT_EQ(xml.positionOf(attributes[0]), (TextPosition{1, 4, 3}));
    EXPECT_EQ(attributes[0].value, "1");
    EXPECT_EQ(xml.valuePositionOf(attributes[0]), (TextPosition{1, 9, 1}));
    EXPECT_EQ(xml.positionOf(attributes[1]), (TextPosition{2, 3, 3}));
    EXPECT_EQ(xml.valuePositionOf(attributes[1]), (TextPosition{2, 10, 3}));
    EXPECT_EQ(bytesOf(file, xml.valueOf(attributes[1]).bytes), "x y");
    EXPECT_EQ(bytesOf(file, xml.nameBytesOf(attributes[1])), "two");
    EXPECT_EQ(bytesOf(file, xml.bytesOf(attributes[1])), "\n  two = \"x y\"");
    EXPECT_EQ(attributes[2].value, "<");
    EXPECT_EQ(xml.valuePositionOf(attributes[2]), (TextPosition{2, 22, 4}));
    EXPECT_FALSE(xml.valueOf(attributes[2]).bytes.isKnown());
}

TEST(XmlPositionsTest, FindsAnAttributeByName) {
    const XmlPositions xml("<a one='1' xml:two='2'/>");
    ASSERT_NE(xml.pAttribute(*xml.pRoot(), "xml:two"), nullptr);
    EXPECT_EQ(xml.pAttribute(*xml.pRoot(), "xml:two")->value, "2");
    EXPECT_EQ(xml.pAttribute(*xml.pRoot(), "two"), nullptr);
}

TEST(XmlPositionsTest, GivesTextsWithAndWithoutBlanks) {
    const std::string file = "<a><b>\n  Wall Common\t</b><c/><d></d><e> </e></a>";
    const XmlPositions xml(file);
    const auto& b = elementOf(xml, "b");
    EXPECT_EQ(b.text, "\n  Wall Common\t");
    EXPECT_EQ(b.trimmedText, "Wall Common");
    EXPECT_EQ(xml.textPositionOf(b), (TextPosition{2, 3, 11}));
    EXPECT_EQ(bytesOf(file, xml.textOf(b).bytes), "Wall Common");
    EXPECT_EQ(bytesOf(file, xml.textBytesOf(b)), "\n  Wall Common\t");
    EXPECT_EQ(elementOf(xml, "c").text, "");
    EXPECT_FALSE(xml.textOf(elementOf(xml, "c")).bytes.isKnown());
    EXPECT_EQ(xml.textPositionOf(elementOf(xml, "d")), (TextPosition{2, 26, 0}));
    EXPECT_EQ(elementOf(xml, "e").text, " ");
    EXPECT_EQ(elementOf(xml, "e").trimmedText, "");
}

TEST(XmlPositionsTest, GivesTheBytesOfATextWithLineEndsOfTwo) {
    const std::string file = "<a>\r\n Wall \r\n</a>";
    for (const auto wellFormed : {XmlPositions::WellFormed::Unknown, XmlPositions::WellFormed::Yes}) {
        const XmlPositions xml(file, wellFormed);
        EXPECT_EQ(xml.pRoot()->text, "\n Wall \n");
        EXPECT_EQ(bytesOf(file, xml.textBytesOf(*xml.pRoot())), "\r\n Wall \r\n");
    }
}

TEST(XmlPositionsTest, GivesNoBytesOfATextThatIsWrittenInAnotherWay) {
    for (const std::string text : {"R&amp;D", "<![CDATA[R&D]]>", "R&#38;D"}) {
        const XmlPositions xml("<a>" + text + "</a>");
        EXPECT_EQ(xml.pRoot()->text, "R&D") << text;
        EXPECT_EQ(xml.textPositionOf(*xml.pRoot()).line, 1) << text;
        EXPECT_FALSE(xml.textOf(*xml.pRoot()).bytes.isKnown()) << text;
        EXPECT_FALSE(xml.textBytesOf(*xml.pRoot()).isKnown()) << text;
    }
}

TEST(XmlPositionsTest, NotesTextThatReadersDoNotSee) {
    const XmlPositions xml("<a><b>x<!-- -->y</b><c><!-- -->z</c><d>x<e/> \n w</d><f>x<!-- --> </f></a>");
    EXPECT_EQ(elementOf(xml, "b").text, "x");
    EXPECT_EQ(xml.laterTextPositionOf(elementOf(xml, "b")), (TextPosition{1, 16, 1}));
    EXPECT_FALSE(elementOf(xml, "b").isTextHidden);
    EXPECT_EQ(elementOf(xml, "c").text, " ");
    EXPECT_TRUE(elementOf(xml, "c").isTextHidden);
    EXPECT_EQ(xml.laterTextPositionOf(elementOf(xml, "c")), (TextPosition{1, 32, 1}));
    EXPECT_EQ(xml.laterTextPositionOf(elementOf(xml, "d")), (TextPosition{2, 2, 1}));
    EXPECT_EQ(xml.laterTextPositionOf(elementOf(xml, "f")).line, 0);
}

TEST(XmlPositionsTest, GivesTheBytesOfTagsAndElements) {
    const std::string file = "<a><bb x='1'>t</bb ><c/></a>";
    const XmlPositions xml(file);
    const auto& b = elementOf(xml, "bb");
    EXPECT_EQ(bytesOf(file, xml.nameBytesOf(b)), "bb");
    EXPECT_EQ(xml.endNameBytesOf(b).offset, file.find("bb >"));
    EXPECT_EQ(bytesOf(file, xml.bytesOf(b)), "<bb x='1'>t</bb >");
    EXPECT_EQ(xml.endOf(b), (TextPosition{1, 21, 0}));
    EXPECT_EQ(bytesOf(file, xml.bytesOf(elementOf(xml, "c"))), "<c/>");
    EXPECT_FALSE(xml.endNameBytesOf(elementOf(xml, "c")).isKnown());
}

TEST(XmlPositionsTest, CountsTheByteOrderMarkInBytesOnly) {
    const std::string file = "\xEF\xBB\xBF<a><b/></a>";
    const XmlPositions xml(file);
    EXPECT_EQ(xml.positionOf(elementOf(xml, "b")), (TextPosition{1, 5, 1}));
    EXPECT_EQ(bytesOf(file, xml.bytesOf(elementOf(xml, "b"))), "<b/>");
    EXPECT_EQ(xml.getLine(1), "<a><b/></a>");
}

TEST(XmlPositionsTest, ReadsUtf16WithoutOfferingBytes) {
    for (const bool isBigEndian : {false, true}) {
        const XmlPositions xml(
            utf16(u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<\u00E4>\u6881<b/></\u00E4>", isBigEndian));
        EXPECT_EQ(xml.pError(), nullptr);
        EXPECT_EQ(xml.getEncoding(), XmlEncoding::Utf16);
        EXPECT_THAT(elementLines(xml), ElementsAre("2:2+1 \xC3\xA4", "2:6+1 b"));
        EXPECT_EQ(xml.pRoot()->text, "\xE6\xA2\x81");
        EXPECT_EQ(xml.textPositionOf(*xml.pRoot()), (TextPosition{2, 4, 1}));
        EXPECT_TRUE(xml.textOf(*xml.pRoot()).isAsWritten);
        EXPECT_FALSE(xml.nameBytesOf(*xml.pRoot()).isKnown());
        EXPECT_FALSE(xml.textOf(*xml.pRoot()).bytes.isKnown());
    }
}

TEST(XmlPositionsTest, ReadsLatin1WithoutOfferingBytes) {
    const XmlPositions xml("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4<b/></a>");
    EXPECT_EQ(xml.pError(), nullptr);
    EXPECT_EQ(xml.getEncoding(), XmlEncoding::Latin1);
    EXPECT_EQ(xml.pRoot()->text, "\xC3\xA4");
    EXPECT_EQ(xml.positionOf(elementOf(xml, "b")), (TextPosition{1, 49, 1}));
    EXPECT_FALSE(xml.bytesOf(elementOf(xml, "b")).isKnown());
}

TEST(XmlPositionsTest, PutsWhatEntitiesMakeAtTheirReference) {
    const XmlPositions xml(
        "<!DOCTYPE a [<!ENTITY e \"<b x='1'>t</b>\"><!ATTLIST a y CDATA \"2\">]>\n<a>&e;</a>");
    EXPECT_EQ(xml.pError(), nullptr);
    ASSERT_EQ(xml.getElements().size(), 2);
    const auto& b = elementOf(xml, "b");
    EXPECT_EQ(xml.positionOf(b), (TextPosition{2, 4, 3}));
    EXPECT_FALSE(xml.nameBytesOf(b).isKnown());
    EXPECT_EQ(b.text, "t");
    ASSERT_NE(xml.pAttribute(b, "x"), nullptr);
    EXPECT_EQ(xml.pAttribute(b, "x")->value, "1");
    EXPECT_FALSE(xml.valueOf(*xml.pAttribute(b, "x")).bytes.isKnown());
    ASSERT_NE(xml.pAttribute(*xml.pRoot(), "y"), nullptr);
    EXPECT_EQ(xml.pAttribute(*xml.pRoot(), "y")->value, "2");
}

TEST(XmlPositionsTest, WhatAnEntityHasIsWhereItIsUsed) {
    const XmlPositions xml("<!DOCTYPE a [<!ENTITY e \"<b><c>t</c></b> more\">]>\n<a> x &e;</a>");
    EXPECT_EQ(xml.pError(), nullptr);
    const auto& c = elementOf(xml, "c");
    EXPECT_EQ(xml.tagPositionOf(c), (TextPosition{2, 7, 3}));
    EXPECT_EQ(xml.beginOf(c), (TextPosition{2, 7, 0}));
    EXPECT_FALSE(xml.textOf(c).isAsWritten);
    EXPECT_EQ(xml.textPositionOf(c), (TextPosition{2, 7, 3}));
    EXPECT_EQ(xml.endOf(c), (TextPosition{2, 10, 0}));
    EXPECT_EQ(c.trimmedText, "t");
    for (const auto& bytes : {xml.bytesOf(c), xml.endNameBytesOf(c), xml.textBytesOf(c), xml.textOf(c).bytes})
        EXPECT_FALSE(bytes.isKnown());
}

TEST(XmlPositionsTest, PlacesStayWhereTheyAreWhenItIsMoved) {
    XmlPositions first("<a>\n <b c='d'/></a>");
    const auto position = first.positionOf(elementOf(first, "b"));
    const XmlPositions second(std::move(first));
    EXPECT_EQ(second.positionOf(elementOf(second, "b")), position);
    EXPECT_EQ(position, (TextPosition{2, 3, 1}));
}

/// Lines are looked for when the first place is asked for, which may be on several threads at once.
TEST(XmlPositionsTest, PlacesAreAskedForByManyThreads) {
    constexpr std::size_t Elements = 200;
    std::string text = "<a>\n";
    for (std::size_t number = 0; number != Elements; ++number)
        text += "\t<b/>\n";
    text += "</a>";
    for (int round = 0; round != 20; ++round) {
        const XmlPositions xml(text);
        ASSERT_EQ(xml.getElements().size(), Elements + 1);
        std::atomic<int> wrong = 0;
        const auto vAsk = [&] {
            for (std::size_t number = 1; number <= Elements; ++number) {
                const auto position = xml.positionOf(xml.getElement(static_cast<XmlIndex>(number)));
                wrong += position == TextPosition{number + 1, 3, 1} ? 0 : 1;
            }
        };
        {
            std::vector<std::jthread> threads;
            for (int thread = 0; thread != 4; ++thread)
                threads.emplace_back(vAsk);
        }
        EXPECT_EQ(wrong, 0);
    }
}

TEST(XmlPositionsTest, KeepsIgnoreCommentsWithTheElementThatFollows) {
    const XmlPositions xml("<!-- kivifc: ignore A001 -->\n<a><!--kivifc:ignore B001, B002--> t <b/>"
                           "<!-- kivifc: ignored --><!-- other --><c><!-- kivifc: ignore --></c><d/></a>");
    const auto ignores = xml.getIgnores();
    ASSERT_EQ(ignores.size(), 3);
    EXPECT_EQ(ignores[0].codes, "A001");
    EXPECT_EQ(xml.positionOf(ignores[0]), (TextPosition{1, 1, 28}));
    EXPECT_EQ(ignores[0].element, 0);
    EXPECT_EQ(ignores[1].codes, "B001, B002");
    EXPECT_EQ(ignores[1].element, 1);
    EXPECT_EQ(ignores[2].codes, "");
    EXPECT_EQ(ignores[2].element, NoXmlElement);
}

TEST(XmlPositionsTest, KeepsWhatWasReadOfATextThatIsNoXml) {
    const XmlPositions xml("<a>\n<b/>\n  <c></d></a>");
    ASSERT_NE(xml.pError(), nullptr);
    // Nothing closes them.
    EXPECT_EQ(xml.endOf(*xml.pRoot()), TextPosition());
    EXPECT_EQ(xml.bytesOf(*xml.pRoot()).length, 3);
    EXPECT_FALSE(xml.endNameBytesOf(*xml.pRoot()).isKnown());
    EXPECT_EQ(xml.pError()->position.line, 3);
    EXPECT_EQ(xml.pError()->message, "mismatched tag");
    EXPECT_EQ(xml.getElements().size(), 3);
}

TEST(XmlPositionsTest, HasNoElementsOfATextWithoutXml) {
    for (const std::string text : {"", "x", "\xFF", "\xFE\xFF", "<"}) {
        const XmlPositions xml(text);
        EXPECT_NE(xml.pError(), nullptr) << text;
        EXPECT_EQ(xml.pRoot(), nullptr) << text;
    }
}

TEST(XmlPositionsTest, RefusesElementsThatAreNestedTooDeep) {
    std::string text;
    for (int i = 0; i != 257; ++i)
        text += "<a>";
    const XmlPositions xml(text);
    ASSERT_NE(xml.pError(), nullptr);
    EXPECT_EQ(xml.pError()->message, "elements are nested deeper than 256 levels");
    EXPECT_EQ(xml.getElements().size(), 256);
}

TEST(XmlPositionsTest, ADefaultAttributeIsWhereItsElementIs) {
    const XmlPositions xml("<!DOCTYPE a [<!ATTLIST b c CDATA \"d\">]>\n<a><b/></a>");
    ASSERT_EQ(xml.pError(), nullptr);
    const auto* const attribute = xml.pAttribute(xml.getElements()[1], "c");
    ASSERT_NE(attribute, nullptr);
    EXPECT_EQ(attribute->value, "d");
    EXPECT_EQ(xml.positionOf(*attribute), (TextPosition{2, 5, 1}));
    EXPECT_EQ(xml.valuePositionOf(*attribute), (TextPosition{2, 5, 1}));
}

TEST(XmlPositionsTest, RefusesDefaultAttributesThatAddUp) {
    std::string text = "<!DOCTYPE a [<!ATTLIST b c CDATA \"" + std::string(100'000, 'x') + "\">]><a>";
    for (int i = 0; i != 200; ++i)
        text += "<b/>";
    const XmlPositions xml(text + "</a>");
    ASSERT_NE(xml.pError(), nullptr);
    EXPECT_EQ(xml.pError()->message, "default attribute values add more than 16 MiB");
}

TEST(XmlPositionsTest, StaysTheSameWhenItIsMoved) {
    XmlPositions xml("<a x='&lt;'>t&amp;</a>");
    const auto& root = *xml.pRoot();
    const XmlPositions moved(std::move(xml));
    EXPECT_EQ(moved.pRoot(), &root);
    EXPECT_EQ(root.name, "a");
    EXPECT_EQ(root.text, "t&");
    EXPECT_EQ(moved.getText(), "<a x='&lt;'>t&amp;</a>");
}

TEST(XmlPositionsTest, GivesLinesWithoutTheirEnds) {
    const XmlPositions xml("<a>\r\n b\rc\n</a>");
    EXPECT_EQ(xml.getLine(0), "");
    EXPECT_EQ(xml.getLine(1), "<a>");
    EXPECT_EQ(xml.getLine(2), " b");
    EXPECT_EQ(xml.getLine(3), "c");
    EXPECT_EQ(xml.getLine(4), "</a>");
    EXPECT_EQ(xml.getLine(5), "");
}

} // namespace

} // namespace kiv::kit
