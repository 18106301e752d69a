#include "Kit/Positions/WellFormedXml.h"

#include "kiv/Kit/Documents/SetPaths.h"
#include "kiv/Kit/Documents/TextFile.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::kit {

namespace {

/// All that is known of a document, in lines.
class Dump {
public:
    explicit Dump(const XmlPositions& xml) {
        for (const auto& element : xml.getElements())
            vElementAdd(xml, element);
        for (const auto& ignore : xml.getIgnores()) {
            vAdd("ignore", ignore.codes);
            vAdd(xml.positionOf(ignore));
            text_ += std::to_string(ignore.element) + '\n';
        }
        text_ += xml.pError() ? xml.pError()->message : "no error";
    }

    const std::string& get() const { return text_; }

private:
    void vElementAdd(const XmlPositions& xml, const XmlElement& element) {
        vAdd("element", element.name);
        for (const auto& position : {xml.positionOf(element), xml.tagPositionOf(element), xml.endOf(element),
                                     xml.laterTextPositionOf(element)})
            vAdd(position);
        for (const auto& bytes : {xml.nameBytesOf(element), xml.endNameBytesOf(element), xml.bytesOf(element),
                                  xml.textBytesOf(element)})
            vAdd(bytes);
        for (const auto number : {element.parent, element.firstChild, element.nextSibling,
                                  element.descendantsEnd, element.firstAttribute, element.attributeCount})
            text_ += std::to_string(number) + ' ';
        vAdd("text", element.text);
        vAdd(xml.textOf(element));
        text_ += element.isTextHidden ? "hidden\n" : "\n";
        for (const auto& attribute : xml.getAttributes(element)) {
            vAdd("attribute", attribute.name);
            vAdd(xml.positionOf(attribute));
            vAdd(xml.nameBytesOf(attribute));
            vAdd(xml.valueOf(attribute));
            vAdd(xml.bytesOf(attribute));
        }
    }

    void vAdd(std::string_view what, std::string_view value) {
        text_.append(what).append(" '").append(value).append("'\n");
    }
    void vAdd(const TextPosition& position) {
        text_ += std::to_string(position.line) + ':' + std::to_string(position.column) + '+' +
                 std::to_string(position.length) + ' ';
    }
    void vAdd(const ByteRange& bytes) {
        text_ +=
            bytes.isKnown() ? std::to_string(bytes.offset) + '/' + std::to_string(bytes.length) + ' ' : "- ";
    }
    void vAdd(const XmlText& text) {
        vAdd("value", text.value);
        vAdd(text.position);
        vAdd(text.bytes);
    }

    std::string text_;
};

void vExpectSame(const std::string& text, const std::string& shown) {
    const XmlPositions parsed(text);
    ASSERT_EQ(parsed.pError(), nullptr) << shown;
    const XmlPositions scanned(text, XmlPositions::WellFormed::Yes);
    EXPECT_EQ(Dump(scanned).get(), Dump(parsed).get()) << shown;
}

TEST(WellFormedXml, GivesWhatAParserGives) {
    const std::string rows[] = {
        "<A/>",
        "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<A b='1'\r\n  c = \"x&amp;y\t\r\nz\" "
        ">\r\n</A>\r\n",
        "<!-- a > b --><?pi x > y?><A><!-- c\r\nd --><B>t</B></A><!-- e -->",
        "<A>  t &lt;&gt;&quot;&apos;&amp;&#65;&#x42;&#xe4;&#x20AC;&#x1F600;&#13; u </A>",
        "<A a='&#10;&#x9;' b=\"'>'\"><B x='a>b'/>later &amp; text<B/>\n  more\r\n and more</A>",
        "<A><![CDATA[ <x> \r\n y & z ]]></A>",
        "<A><B/><![CDATA[\n\r\n  later]]>  <C/></A>",
        "<A>a<![CDATA[]]>b<B>]] ></B>&amp;late</A>",
        "<A><?pi?><B><?pi  data\r\nmore ?>text</B><C> <?xml-x a?></C></A>",
        "<A><!-- kivifc: ignore T001 --><B/><!-- kivifc: ignore S --></A>",
        "<a:b xmlns:a='u'\n><a:c\t/></a:b >",
        "<A>\r\r\n\n\r <B>x\ry\r\n</B>\r</A>",
        "<A><B/> \n\t late \t\n later</A>",
        "<A><B/> late &lt;\n\u00E4</A>",
        "<A>\u00E4 <B c='\u20AC' d='e'\n f='g'/>\u00E4<C/> \u00E4\n</A>",
        "<\u00E4\u00F6 \u00FC='\u20AC'>\U0001F600 \u00E4</\u00E4\u00F6>",
        "<A b=''></A>",
        "<A><B>  </B><C></C><D> x </D></A>",
        "<!DOCTYPE A [<!ENTITY e '<B/>t'><!ATTLIST A d CDATA 'v'>]><A>&e;</A>",
        "<?xml version='1.0' encoding='ISO-8859-1'?><A b='\xE4'>\xE4\xF6<B/>\xFC</A>",
        std::string("\xFF\xFE<\0A\0>\0\xE4\0<\0/\0A\0>\0", 18),
    };
    for (const auto& text : rows)
        vExpectSame(text, text);
}

/// All documents that there are: those of the samples, and the real ones where they are at hand.
TEST(WellFormedXml, GivesWhatAParserGivesOfWholeDocuments) {
    std::vector<std::string> folders{KIV_SAMPLES "/Sets"};
    if (const auto* const data = std::getenv("KIV_TEST_DATA"))
        folders.push_back(std::string(data) + "/sets");
    const auto documents = setPathsCollect(folders).documents;
    ASSERT_FALSE(documents.empty());
    for (const auto& path : documents) {
        vExpectSame(textFileRead(path, std::numeric_limits<std::uint32_t>::max()).text, path);
        if (HasFailure())
            return;
    }
}

/// What is promised and not so is looked at all the same: to the end of the text, and no further.
TEST(WellFormedXml, EndsWithTheTextWhateverItIs) {
    const std::string whole = "<A b='c&amp;'><!-- d --><![CDATA[e]]><?f?>&#65;</A>";
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const auto text = std::string_view(whole).substr(0, size);
        WellFormedXml xml(text);
        std::size_t end = 0;
        for (auto piece = xml.next(); piece.kind != XmlPieceKind::End; piece = xml.next()) {
            EXPECT_EQ(piece.offset, end) << text;
            EXPECT_GT(piece.size, 0U) << text;
            end = piece.offset + piece.size;
        }
        EXPECT_EQ(end, size) << text;
    }
}

TEST(WellFormedXml, ADocumentTypeIsBeforeTheRoot) {
    EXPECT_FALSE(isWithoutDocumentType("<!DOCTYPE A><A/>"));
    EXPECT_FALSE(
        isWithoutDocumentType("<?xml version='1.0'?>\n<!-- <A> --><?pi <B>?>\r\n<!DOCTYPE A [ ]><A/>"));
    EXPECT_TRUE(isWithoutDocumentType("<A/>"));
    EXPECT_TRUE(isWithoutDocumentType("<!-- <!DOCTYPE A> --><A><![CDATA[<!DOCTYPE A>]]></A>"));
    EXPECT_TRUE(isWithoutDocumentType(""));
}

TEST(WellFormedXml, AValueIsAsWrittenWhenItReadsSo) {
    for (const std::string value : {"", "a", "a 'b' > c", "\u00E4"}) {
        EXPECT_TRUE(isValueAsWritten(value)) << value;
        EXPECT_EQ(sAttributeValue(value), value);
    }
    for (const std::string value : {"&amp;", "a\tb", "a\nb", "a\rb"}) {
        EXPECT_FALSE(isValueAsWritten(value)) << value;
        EXPECT_NE(sAttributeValue(value), value);
    }
}

} // namespace

} // namespace kiv::kit
