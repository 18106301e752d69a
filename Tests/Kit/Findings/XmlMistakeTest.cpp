#include "Kit/Findings/XmlMistake.h"

#include "Kit/Findings/FindingLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using testing::ElementsAre;

struct Row {
    std::string text;
    /// What comes after "error R044".
    std::string place;
    std::string message;
};

std::string sShown(const Row& row) {
    return row.place + " error R044 " + row.message;
}

class XmlMistake : public testing::TestWithParam<Row> {};

TEST_P(XmlMistake, IsOneFindingInPlainWords) {
    EXPECT_THAT(test::findingLines(GetParam().text), ElementsAre(sShown(GetParam()))) << GetParam().text;
}

const std::string Invalid = " | the XML parser says: not well-formed (invalid token)";
const std::string Amp = " | write \"&amp;\" for the character itself" + Invalid;
const std::string Encodings = " | these are read: \"UTF-8\", \"UTF-16\", \"ISO-8859-1\" and \"US-ASCII\"";
const std::string Less = " | write \"&lt;\" for the character itself" + Invalid;

INSTANTIATE_TEST_SUITE_P(
    All, XmlMistake,
    testing::Values(
        Row{"<A>\n<Name></A>", "2:9+1",
            "the end tag is that of \"A\", where \"Name\" is open | \"Name\" begins here @2:2 | the XML "
            "parser "
            "says: mismatched tag"},
        Row{"<A>\n <B/><C>\n", "3:1+0",
            "the document ends, and \"C\" is not closed | \"C\" begins here @2:7 | the XML parser says: no "
            "element found"},
        Row{" \n", "2:1+0", "the file has nothing but blanks | the XML parser says: no element found"},
        Row{"<!-- a -->", "1:11+0",
            "there is no element in the document | the XML parser says: no element found"},
        Row{"<A>R & D</A>", "1:6+1", "\"&\" does not begin an entity here" + Amp},
        Row{"<A>R&D x</A>", "1:5+1", "\"&\" does not begin an entity here" + Amp},
        Row{"<A b=\"R&D\"/>", "1:8+1", "\"&\" does not begin an entity here" + Amp},
        Row{"<A>\u00E4&nbsp;b</A>", "1:5+6",
            "the entity \"nbsp\" is not declared | XML has amp, lt, gt, quot and apos; write any other "
            "character itself | the XML parser says: undefined entity"},
        Row{"<A>a < b</A>", "1:6+1", "\"<\" does not begin a tag here" + Less},
        Row{"<A>a <1</A>", "1:6+1", "\"<\" does not begin a tag here" + Less},
        Row{"<A b=\"<\"/>", "1:7+0",
            "\"<\" is not allowed in the value of an attribute | write \"&lt;\" for the character itself, or "
            "close the value before it" +
                Invalid},
        Row{"<A><Name<B/></A>", "1:9+0",
            "\">\" is missing: the tag of \"Name\" is not closed before this \"<\"" + Invalid},
        Row{"<A b=1/>", "1:6+0", "the value of the attribute \"b\" is not in quotes" + Invalid},
        Row{"<A b=\u201Cc\u201D/>", "1:6+0",
            "the value of the attribute \"b\" is not in quotes | XML has the quotes \" and ', and not "
            "\u201C" +
                Invalid},
        Row{"<A b='1'c='2'/>", "1:9+0", "a blank is missing before the attribute \"c\"" + Invalid},
        Row{"<A b/>", "1:5+0", "the attribute \"b\" has no value" + Invalid},
        Row{"<A b='1' b='2'/>", "1:10+1",
            "the attribute \"b\" is there twice | the XML parser says: duplicate attribute"},
        Row{"<A><!-- a -- b --></A>", "1:11+2", "\"--\" is not allowed inside a comment" + Invalid},
        Row{"<A>\x01</A>", "1:4+0", "the control character U+0001 is not allowed in XML" + Invalid},
        Row{"<A>a\xE4z</A>", "1:5+0",
            "the byte E4 is not UTF-8 | save the file as UTF-8, or declare what it is, as in <?xml "
            "version=\"1.0\" encoding=\"ISO-8859-1\"?>" +
                Invalid},
        Row{"<A>]]></A>", "1:6+0", "\"]]>\" is not allowed in a text | write \"]]&gt;\"" + Invalid},
        Row{"<A/>\n<B/>", "2:1+0",
            "something comes after the root element \"A\" | \"A\" ends here @1:5 | the XML parser says: junk "
            "after document element"},
        Row{"\n<?xml version=\"1.0\"?><A/>", "2:1+0",
            "\"<?xml\" is not at the very beginning of the file | remove what comes before it, blanks and "
            "empty "
            "lines too | the XML parser says: XML or text declaration not at start of entity"},
        Row{"<?xml version=\"1.0\" encoding=\"EBCDIC\"?><A/>", "1:31+6",
            "the encoding \"EBCDIC\" is not supported" + Encodings},
        Row{"<?xml version=\"1.0\"\n encoding='utf8'?><A/>", "2:12+4",
            "the encoding \"utf8\" is not supported | did you mean \"UTF-8\"?" + Encodings},
        Row{"<?xml version=\"1.0\" encoding=\"UFT-8\"?><A/>", "1:31+5",
            "the encoding \"UFT-8\" is not supported | did you mean \"UTF-8\"?" + Encodings},
        Row{std::string("<\0\0\0A\0\0\0/\0\0\0>\0\0\0", 16), "1:1+0",
            "the file is UTF-32, which is not read | save it as UTF-8" + Invalid},
        Row{std::string("\xFF\xFE\0\0<\0\0\0A\0\0\0/\0\0\0>\0\0\0", 20), "1:1+0",
            "the file is UTF-32, which is not read | save it as UTF-8" + Invalid},
        Row{"<?xml version=\"1.0\">\n<A/>", "1:1+5",
            "\"?>\" is missing: nothing closes \"<?xml\" | the XML parser says: unclosed token"},
        Row{"\uFEFF<A b=c/>", "1:6+0", "the value of the attribute \"b\" is not in quotes" + Invalid},
        Row{"\uFEFF<A>\n<B c=d/></A>", "2:6+0",
            "the value of the attribute \"c\" is not in quotes" + Invalid},
        Row{"\uFEFF", "1:1+0", "the file has nothing but blanks | the XML parser says: no element found"},
        Row{"<A>\n <B c=\"x/>\n <D e=\"y\"/></A>", "2:7+1", "nothing closes the value of \"c\"" + Invalid},
        Row{"<A>\r\n\u00E4<B c = 'x\"/>\r\n <D e='y'/></A>", "2:9+1",
            "nothing closes the value of \"c\"" + Invalid},
        Row{"<A b='>'><C d='>' <E/></A>", "1:19+0",
            "\">\" is missing: the tag of \"C\" is not closed before this \"<\"" + Invalid},
        Row{"<A><Name>x</Name\n<B/></A>", "2:1+0",
            "\">\" is missing: the end tag of \"Name\" is not closed before this \"<\"" + Invalid},
        Row{"<A></A b>", "1:8+0", "nothing but \">\" can come after the name of an end tag" + Invalid},
        Row{std::string("\xFF\xFE<\0A\0 \0b\0=\0c\0/\0>\0", 18), "1:6+0",
            "the value of the attribute \"b\" is not in quotes" + Invalid},
        Row{"<A><B c='1'/\n</A>", "1:13+0",
            "\">\" is missing after \"/\": the tag of \"B\" is not closed" + Invalid},
        Row{"<A>\n<![CDATA[<![CDATA[x ]> </A>\n", "2:1+9",
            "nothing closes this CDATA section | the XML parser says: unclosed CDATA section"},
        Row{"<A><!-- a", "1:4+0", "nothing closes this comment | the XML parser says: unclosed token"},
        Row{"<A><B c=\"", "1:4+0",
            "the document ends in the middle of a tag | the XML parser says: unclosed token"},
        Row{"plain text", "1:1+0", "\"p\" is not allowed here | the XML parser says: syntax error"},
        Row{"%PDF-1.7\n", "1:1+0", "the file is a PDF document, no set document" + Invalid},
        Row{"{\"a\": 1}", "1:1+0", "the file is a JSON document, no set document" + Invalid},
        Row{"<!DOCTYPE HTML>\n<html><br></html>", "1:1+0",
            "the file is an HTML page, no set document | the XML parser says: mismatched tag"},
        Row{"ISO-10303-21;\n", "1:1+0", "the file is an IFC model, no set document" + Invalid}));

/// The same when the places of the document were not kept.
TEST(XmlMistakeTest, PositionsAreFoundAgainWhereTheyWereNotKept) {
    ReadOptions options;
    options.withPositions = false;
    const auto document = setTextCheck("<A><B></A>", "a.xml", test::exampleSchema(), options);
    const auto findings = findingsOf(document, {test::exampleSchema()});
    ASSERT_EQ(findings.size(), 1);
    EXPECT_EQ(findings[0].message, "the end tag is that of \"A\", where \"B\" is open");
}

/// Messages are cut where the document is hostile.
TEST(XmlMistakeTest, LongNamesAreCut) {
    const auto findings = test::exampleFindings("<A></" + std::string(5000, 'B') + ">");
    ASSERT_EQ(findings.size(), 1);
    EXPECT_LT(findings[0].message.size(), 300);
}

} // namespace

} // namespace kiv::kit
