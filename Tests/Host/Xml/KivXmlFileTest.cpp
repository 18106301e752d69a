#include "Host/Xml/XmlDump.h"
#include "Support/FailingStream.h"
#include "Support/SmallStack.h"
#include "kiv/Host/Xml/KivXml.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <new>
#include <sstream>

namespace kiv::xml {
namespace {

using test::sDumpRead;
using namespace std::string_literals;

File getFile() {
    return {nullptr, VerboseLevel::Quiet, ValidateLevel::None};
}

std::string sRepeated(std::size_t count, std::string_view text) {
    std::string repeated;
    for (std::size_t i = 0; i != count; ++i)
        repeated.append(text);
    return repeated;
}

std::string sNested(std::size_t depth) {
    return sRepeated(depth, "<e>") + sRepeated(depth, "</e>");
}

/// ASCII as UTF-16, two bytes a character.
std::string sUtf16(std::string_view ascii, bool isBigEndian) {
    std::string text;
    for (const char c : ascii)
        text.append(isBigEndian ? std::string{'\0', c} : std::string{c, '\0'});
    return text;
}

struct ReadRow {
    std::string text;
    std::string dump;
};

void vExpectRead(const std::vector<ReadRow>& rows) {
    for (const ReadRow& row : rows)
        EXPECT_EQ(sDumpRead(row.text), row.dump) << row.text;
}

TEST(KivXmlFileTest, ReadsElementsAttributesAndTexts) {
    vExpectRead({
        {"<a/>", "a"},
        {"<a></a>", "a"},
        {"<a>x</a>", "a('x')"},
        {"<a><b/><c>1</c></a>", "a(b c('1'))"},
        {"<a b='1' c=\"2\"/>", "a[b='1' c='2']"},
        {"<p:a p:b='1' xmlns:p='u'/>", "p:a[p:b='1' xmlns:p='u']"},
        {"<a b='x\ty\nz'/>", "a[b='x y z']"}, // attribute values are normalised
        {"<a b='&#9;&#10;&#13;'/>", "a[b='\\t\\n\\r']"},
        {"<a b='&lt;&amp;&gt;&quot;&apos;'/>", "a[b='<&>\"'']"},
        {"<a>&lt;&amp;&gt;&quot;&apos;</a>", "a('<&>\"'')"},
        {"<a>&#65;&#x42;&#x20AC;&#x1F600;</a>", "a('AB\xE2\x82\xAC\xF0\x9F\x98\x80')"},
    });
}

TEST(KivXmlFileTest, KeepsWhiteSpaceAndMakesLineFeedsOfLineEnds) {
    vExpectRead({
        {"<a> </a>", "a(' ')"},
        {"<a>\n\t<b/>\n</a>\n", "a('\\n\\t' b '\\n')"},
        {"<a>1\r\n2\r3\n4</a>", "a('1\\n2\\n3\\n4')"},
        {"<a>1&#13;2</a>", "a('1\\r2')"},
    });
}

TEST(KivXmlFileTest, JoinsTextsAndCharacterDataThatTouch) {
    vExpectRead({
        {"<a>1<![CDATA[2]]>3</a>", "a('123')"},
        {"<a><![CDATA[<b>&amp;]]></a>", "a('<b>&amp;')"},
        {"<a><![CDATA[1]]><![CDATA[2]]></a>", "a('12')"},
        {"<a>1&amp;2\n3&#52;</a>", "a('1&2\\n34')"},
        {"<a><![CDATA[]]></a>", "a"},
        {"<a>1<b/>2</a>", "a('1' b '2')"},
    });
}

TEST(KivXmlFileTest, CommentsAndProcessingInstructionsSplitTexts) {
    vExpectRead({
        {"<a>1<!--c-->2</a>", "a('1' #comment '2')"},
        {"<a>1<?p d?>2</a>", "a('1' #processing-instruction '2')"},
        {"<a><!--c--><!--d--></a>", "a(#comment #comment)"},
    });
}

TEST(KivXmlFileTest, DropsWhatIsOutsideTheRootElement) {
    vExpectRead({
        {"<?xml version='1.0'?><!--c--><?p?>\n<a/>\n<!--c--><?p?>\n", "a"},
        {"<?xml version='1.0' standalone='yes'?><a/>", "a"},
    });
}

TEST(KivXmlFileTest, AcceptsPlainDocumentTypes) {
    vExpectRead({
        {"<!DOCTYPE a><a/>", "a"},
        {"<!DOCTYPE a []><a/>", "a"},
        {"<!DOCTYPE a [ <!-- 100% <!ENTITY --> <?p %x; ?> <!ELEMENT a ANY> ]><a>&lt;</a>", "a('<')"},
        {"<!DOCTYPE a [<!NOTATION n SYSTEM 'x'>]><a/>", "a"},
        {"<!DOCTYPE a [<!ATTLIST a b CDATA 'c' d NMTOKENS #IMPLIED>]><a d=' 1  2 '/>", "a[d='1 2' b='c']"},
        {"<!DOCTYPE a [<!ATTLIST a b CDATA 'c'>]><a b='d'/>", "a[b='d']"},
        {"<!DOCTYPE a [<!ATTLIST a b CDATA '%c;'>]><a/>", "a[b='%c;']"},
    });
}

TEST(KivXmlFileTest, ReadsUtf8) {
    vExpectRead({
        {"<a>\xC3\xA4</a>", "a('\xC3\xA4')"},
        {"\xEF\xBB\xBF<a>\xC3\xA4</a>", "a('\xC3\xA4')"},
        {"<?xml version='1.0' encoding='utf-8'?><a>\xC3\xA4</a>", "a('\xC3\xA4')"},
        {"\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><a/>", "a"},
        {"<gr\xC3\xB6\xC3\x9F"
         "e/>",
         "gr\xC3\xB6\xC3\x9F"
         "e"},
    });
}

TEST(KivXmlFileTest, ReadsUtf16) {
    const std::string text = "<a b='1'>x</a>";
    const std::string declared = "<?xml version='1.0' encoding='UTF-16'?>" + text;
    const std::string dump = "a[b='1']('x')";
    vExpectRead({
        {"\xFF\xFE" + sUtf16(text, false), dump},
        {"\xFE\xFF" + sUtf16(text, true), dump},
        {"\xFF\xFE" + sUtf16(declared, false), dump},
        {"\xFE\xFF" + sUtf16(declared, true), dump},
        {sUtf16(text, false), dump},
        {sUtf16(text, true), dump},
        {"\xFF\xFE" + sUtf16("<a>", false) + "\xAC\x20" + "\x3D\xD8\x00\xDE"s + sUtf16("</a>", false),
         "a('\xE2\x82\xAC\xF0\x9F\x98\x80')"},
    });
}

TEST(KivXmlFileTest, ReadsLatin1AndAscii) {
    vExpectRead({
        {"<?xml version='1.0' encoding='ISO-8859-1'?><a b='\xE4'>\xFF</a>", "a[b='\xC3\xA4']('\xC3\xBF')"},
        {"<?xml version='1.0' encoding='iso-8859-1'?><\xE4/>", "\xC3\xA4"},
        {"<?xml version='1.0' encoding='US-ASCII'?><a>x</a>", "a('x')"},
    });
}

TEST(KivXmlFileTest, RefusesWhatIsNotWellFormed) {
    vExpectRead({
        {"", "! no element found"},
        {" \n", "! no element found"},
        {"<a>", "! no element found"},
        {"<a", "! unclosed token"},
        {"<a></b>", "! mismatched tag"},
        {"<a></a>x", "! junk after document element"},
        {"<a/><b/>", "! junk after document element"},
        {"x<a/>", "! not well-formed (invalid token)"},
        {"<a b='1' b='2'/>", "! duplicate attribute"},
        {"<a b=1/>", "! not well-formed (invalid token)"},
        {"<1/>", "! not well-formed (invalid token)"},
        {"<a>&</a>", "! not well-formed (invalid token)"},
        {"<a>]]></a>", "! not well-formed (invalid token)"},
        {"<a>\x01</a>", "! not well-formed (invalid token)"},
        {"<a>&#1;</a>", "! reference to invalid character number"},
        {"<a>&#xFFFE;</a>", "! reference to invalid character number"},
        {"<a>&e;</a>", "! undefined entity"},
        {"<!DOCTYPE a><a>&nbsp;</a>", "! undefined entity"},
        {"<!DOCTYPE a><a b='&nbsp;'/>", "! undefined entity"},
        {"<a><!-- -- --></a>", "! not well-formed (invalid token)"},
        {" <?xml version='1.0'?><a/>", "! XML or text declaration not at start of entity"},
        {"<a>x\0y</a>"s, "! not well-formed (invalid token)"},
    });
}

TEST(KivXmlFileTest, RefusesBytesThatAreNotOfTheEncoding) {
    vExpectRead({
        {"<a>\xE4</a>", "! not well-formed (invalid token)"},
        {"<a>\xC0\x80</a>", "! not well-formed (invalid token)"},
        {"<a>\xED\xA0\x80</a>", "! not well-formed (invalid token)"},
        {"<a>\xEF\xBF\xBF</a>", "! not well-formed (invalid token)"},
        {"<?xml version='1.0' encoding='US-ASCII'?><a>\xE4</a>", "! not well-formed (invalid token)"},
        {"<?xml version='1.0' encoding='UTF-16'?><a/>",
         "! encoding specified in XML declaration is incorrect"},
    });
}

TEST(KivXmlFileTest, NamesTheEncodingThatItDoesNotRead) {
    for (const std::string encoding : {"windows-1252", "ISO-8859-15", "Shift_JIS", "UTF-7", "x"})
        EXPECT_EQ(sDumpRead("<?xml version='1.0' encoding='" + encoding + "'?><a/>"),
                  "! the encoding \"" + encoding + "\" is not supported");
}

TEST(KivXmlFileTest, RefusesDocumentTypesThatDeclareEntities) {
    const std::string declares = "! the document type declares an entity";
    const std::string refers = "! the document type refers to a parameter entity";
    vExpectRead({
        {"<!DOCTYPE a [<!ENTITY e 'v'>]><a>&e;</a>", declares},
        {"<!DOCTYPE a [<!ENTITY e 'v'>]><a/>", declares},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM '/etc/passwd'>]><a>&e;</a>", declares},
        {"<!DOCTYPE a [<!ENTITY e PUBLIC 'p' 'x'>]><a/>", declares},
        {"<!DOCTYPE a [<!NOTATION n SYSTEM 'x'><!ENTITY e SYSTEM 'x' NDATA n>]><a/>", declares},
        {"<!DOCTYPE a [<!ENTITY % p 'v'>]><a/>", declares},
        {"<!DOCTYPE a [<!ENTITY % p SYSTEM 'x'> %p;]><a/>", declares},
        {"<!DOCTYPE a [<!ENTITY lt '&#38;#60;'>]><a>&lt;</a>", declares},
        {"<!DOCTYPE a [<!ELEMENT a ANY>\n<!ENTITY e 'v'>]><a>&e;</a>", declares},
        {"<!DOCTYPE a [%p;]><a/>", refers},
        {"<!DOCTYPE a [%p; <!ENTITY e 'v'>]><a>1&e;2</a>", refers},
        {"<!DOCTYPE a [%p;]><a b='1&e;2'/>", refers},
        {"<?xml version='1.0' standalone='yes'?><!DOCTYPE a [%p;]><a/>", refers},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><!DOCTYPE a [<!ENTITY e 'v'>]><a/>", declares},
        {"\xFF\xFE" + sUtf16("<!DOCTYPE a [<!ENTITY e 'v'>]><a/>", false), declares},
        {"\xFE\xFF" + sUtf16("<!DOCTYPE a [%p;]><a/>", true), refers},
    });
}

/// What is quoted comes from the parser in pieces there, each of which may begin with any character.
TEST(KivXmlFileTest, QuotedTextsOfDocumentTypesAreNotTakenForReferencesWhenTheEncodingIsConverted) {
    const std::string latin1 = "<?xml version='1.0' encoding='ISO-8859-1'?>";
    for (std::size_t size = 1000; size != 1050; ++size) {
        const std::string quoted = "'" + std::string(size, 'x') + "%p;\"" + std::string(size, 'x') + "%p;'";
        const std::string notation = "<!DOCTYPE a [<!NOTATION n SYSTEM " + quoted + ">";
        const std::string attribute = "<!DOCTYPE a [<!ATTLIST b c CDATA " + quoted + ">";
        for (const std::string& type : {notation, attribute}) {
            EXPECT_EQ(sDumpRead(latin1 + type + "]><a/>"), "a") << size;
            EXPECT_EQ(sDumpRead("\xFF\xFE" + sUtf16(type + "]><a/>", false)), "a") << size;
            EXPECT_EQ(sDumpRead(latin1 + type + "%p;]><a/>"),
                      "! the document type refers to a parameter entity");
            EXPECT_EQ(sDumpRead(latin1 + type + "<!ENTITY e 'v'>]><a/>"),
                      "! the document type declares an entity");
        }
    }
}

TEST(KivXmlFileTest, EndOfAQuotedTextIsNotTakenForADeclaration) {
    const std::string latin1 = "<?xml version='1.0' encoding='ISO-8859-1'?>";
    for (std::size_t size = 1000; size != 1050; ++size)
        EXPECT_EQ(sDumpRead(latin1 + "<!DOCTYPE a [<!NOTATION n SYSTEM '" + std::string(size, 'x') +
                            "<!ENTITY" + std::string(1016, ' ') + "%p;'>]><a/>"),
                  "a")
            << size;
}

TEST(KivXmlFileTest, RefusesDocumentTypesThatNameAnExternalSubset) {
    const std::string reason = "! the document type names an external subset";
    vExpectRead({
        {"<!DOCTYPE a SYSTEM 'a.dtd'><a/>", reason},
        {"<!DOCTYPE a SYSTEM ''><a/>", reason},
        {"<!DOCTYPE a PUBLIC '-//x' 'a.dtd'><a/>", reason},
        {"<!DOCTYPE a SYSTEM 'a.dtd' [<!ELEMENT a ANY>]><a/>", reason},
        {"<?xml version='1.0' standalone='yes'?><!DOCTYPE a SYSTEM 'a.dtd'><a/>", reason},
    });
}

TEST(KivXmlFileTest, DefaultAttributesCannotMultiplyWithoutEnd) {
    const std::string type =
        "<!DOCTYPE r [<!ATTLIST e b CDATA '" + std::string(std::size_t{1} << 20, 'x') + "'>]>";
    std::istringstream few(type + "<r>" + sRepeated(15, "<e/>") + "</r>");
    EXPECT_TRUE(getFile().parse(few, "", nullptr));
    EXPECT_EQ(sDumpRead(type + "<r>" + sRepeated(16, "<e/>") + "</r>"),
              "! default attribute values add more than 16 MiB");
}

std::string sAttributeDeclarations(std::size_t count, std::string_view element) {
    std::string declarations;
    for (std::size_t i = 0; i != count; ++i)
        declarations.append("<!ATTLIST ")
            .append(element)
            .append(" b" + std::to_string(i) + " CDATA #IMPLIED>");
    return declarations;
}

TEST(KivXmlFileTest, DocumentTypeDeclaresALimitedNumberOfAttributes) {
    const std::string reason = "! the document type declares more than 1000 attributes";
    const std::string twice = sRepeated(500, "<!ATTLIST a b CDATA 'c' b CDATA #REQUIRED>");
    vExpectRead({
        {"<!DOCTYPE a [" + sAttributeDeclarations(1000, "a") + "]><a/>", "a"},
        {"<!DOCTYPE a [" + sAttributeDeclarations(1001, "a") + "]><a/>", reason},
        {"<!DOCTYPE a [" + sAttributeDeclarations(500, "a") + sAttributeDeclarations(501, "b") + "]><a/>",
         reason},
        {"<!DOCTYPE a [" + twice + "]><a/>", "a[b='c']"},
        {"<!DOCTYPE a [" + twice + "<!ATTLIST a b ID #IMPLIED>]><a/>", reason},
    });
}

TEST(KivXmlFileTest, ReadsElementsDownToTheDeepestLevelOnly) {
    std::istringstream deepest(sNested(256));
    EXPECT_TRUE(getFile().parse(deepest, "", nullptr));
    EXPECT_EQ(sDumpRead(sNested(257)), "! elements are nested deeper than 256 levels");
    EXPECT_EQ(sDumpRead(sNested(100000)), "! elements are nested deeper than 256 levels");
    EXPECT_EQ(sDumpRead("<r>" + sNested(255) + sNested(255) + "</r>").substr(0, 1), "r");
    EXPECT_EQ(sDumpRead("<r>" + sNested(255) + sNested(256) + "</r>").substr(0, 1), "!");
}

struct PlaceRow {
    std::string text;
    std::size_t line;
    std::size_t column;
};

TEST(KivXmlFileTest, SaysWhereReadingFailed) {
    const PlaceRow rows[] = {
        {"", 1, 1},
        {"<a>", 1, 4},
        {"x", 1, 1},
        {"<a>\n  &e;</a>", 2, 3},
        {"<a>\r\n  &e;</a>", 2, 3},
        {"<a>\xC3\xA4\xC3\xB6&e;</a>", 1, 6}, // characters are counted, not bytes
        {"<a>\n\n</a>\n<b/>", 4, 1},
        {"\xFF\xFE" + sUtf16("<a>\n&e;</a>", false), 2, 1},
        {"<!DOCTYPE a [\n <!ENTITY e 'v'>]><a/>", 2, 2},
        {"<!DOCTYPE a [\n\n%p;]><a/>", 3, 1},
        {sRepeated(256, "<e>\n") + "  <e/>", 257, 3},
        {"<a>" + sRepeated(50000, "\n") + "&e;</a>", 50001, 1},
        {"<?xml version='1.0' encoding='x'?><a/>", 1, 1},
    };
    for (const PlaceRow& row : rows) {
        std::istringstream stream(row.text);
        File file = getFile();
        EXPECT_FALSE(file.parse(stream, "", nullptr));
        EXPECT_EQ(file.pError()->line, row.line) << row.text.substr(0, 60);
        EXPECT_EQ(file.pError()->column, row.column) << row.text.substr(0, 60);
    }
}

TEST(KivXmlFileTest, TheErrorNamesTheDocument) {
    std::istringstream stream("<a>");
    File file = getFile();
    EXPECT_FALSE(file.parse(stream, "sets/walls.xml", nullptr));
    EXPECT_EQ(file.pError()->document, "sets/walls.xml");
}

TEST(KivXmlFileTest, HasNoErrorBeforeReadingAndAfterSuccess) {
    File file = getFile();
    EXPECT_EQ(file.pError(), nullptr);
    std::istringstream bad("<a>");
    EXPECT_FALSE(file.parse(bad, "", nullptr));
    EXPECT_NE(file.pError(), nullptr);
    std::istringstream good("<a/>");
    EXPECT_TRUE(file.parse(good, "", nullptr));
    EXPECT_EQ(file.pError(), nullptr);
}

TEST(KivXmlFileTest, ErrorMovesWithTheFile) {
    std::istringstream stream("<a>");
    File file = getFile();
    EXPECT_FALSE(file.parse(stream, "walls.xml", nullptr));
    File moved = std::move(file);
    EXPECT_EQ(file.pError(), nullptr); // NOLINT(bugprone-use-after-move): what is left is the test
    ASSERT_NE(moved.pError(), nullptr);
    EXPECT_EQ(moved.pError()->document, "walls.xml");
    file = std::move(moved);
    EXPECT_EQ(moved.pError(), nullptr); // NOLINT(bugprone-use-after-move): what is left is the test
    ASSERT_NE(file.pError(), nullptr);
    EXPECT_EQ(file.pError()->document, "walls.xml");
}

TEST(KivXmlFileTest, TextsDoNotDependOnHowTheInputIsCut) {
    const std::string piece = "\xE2\x82\xAC\r\n&amp;";
    const std::string expected = "\xE2\x82\xAC\n&";
    for (std::size_t shift = 0; shift != piece.size(); ++shift) {
        std::istringstream stream("<a>" + std::string(shift, 'x') + sRepeated(20000, piece) + "</a>");
        File file = getFile();
        const auto root = file.parse(stream, "", nullptr);
        ASSERT_TRUE(root);
        EXPECT_EQ(root->FirstChildGet()->getNodeValueView(),
                  std::string(shift, 'x') + sRepeated(20000, expected));
        EXPECT_FALSE(root->FirstChildGet()->NextSiblingGet()) << "one text";
    }
}

TEST(KivXmlFileTest, ReadsDocumentsWhoseLengthIsAWholeNumberOfBlocks) {
    for (std::size_t size = 1024; size <= 64 * 1024; size += 1024) {
        std::istringstream stream("<a>" + std::string(size - 7, 'x') + "</a>");
        File file = getFile();
        const auto root = file.parse(stream, "", nullptr);
        ASSERT_TRUE(root) << size;
        EXPECT_EQ(root->FirstChildGet()->getNodeValueView().size(), size - 7);
    }
}

TEST(KivXmlFileTest, ReadsVeryLongTokens) {
    const std::string value(std::size_t{8} << 20, 'v');
    std::istringstream stream("<a b='" + value + "'><!--" + value + "-->\n<c/></a>");
    File file = getFile();
    const auto root = file.parse(stream, "", nullptr);
    ASSERT_TRUE(root);
    EXPECT_EQ(const_Element(*root).AttributeNodeGet("b")->getValueView(), value);
    EXPECT_EQ(const_Element(*root).FirstElementChildGet()->getLine(), 2U);
}

void vExpectStreamFailure(std::istream& stream) {
    File file = getFile();
    EXPECT_FALSE(file.parse(stream, "gone.xml", nullptr));
    ASSERT_NE(file.pError(), nullptr);
    EXPECT_EQ(file.pError()->reason, "the stream failed while it was read");
    EXPECT_EQ(file.pError()->document, "gone.xml");
    EXPECT_EQ(file.pError()->line, 0U);
    EXPECT_EQ(file.pError()->column, 0U);
}

TEST(KivXmlFileTest, StreamThatFailsGivesNoDocument) {
    for (const std::string& text : {""s, "<a>"s, "<a/>"s, "<a>" + std::string(100000, 'x')}) {
        kiv::test::FailingStream stream(text, text.size());
        vExpectStreamFailure(stream);
    }
}

TEST(KivXmlFileTest, StreamThatThrowsGivesNoDocumentAndNoException) {
    kiv::test::FailingStream stream("<a>", 3);
    stream.exceptions(std::ios::badbit | std::ios::failbit);
    vExpectStreamFailure(stream);
}

TEST(KivXmlFileTest, LackOfMemoryInAStreamIsPassedOnByStreamsThatDoSo) {
    kiv::test::NoMemoryStream stream;
    vExpectStreamFailure(stream);
    stream.clear();
    stream.exceptions(std::ios::badbit);
    EXPECT_THROW(getFile().parse(stream, "", nullptr), std::bad_alloc);
}

TEST(KivXmlFileTest, StreamThatWasNeverOpenedGivesNoDocument) {
    std::ifstream stream("there/is/no/such/file.xml");
    vExpectStreamFailure(stream);
}

TEST(KivXmlFileTest, StreamThatThrowsAtItsEndIsRead) {
    std::istringstream stream("<a>x</a>");
    stream.exceptions(std::ios::badbit | std::ios::failbit | std::ios::eofbit);
    File file = getFile();
    const auto root = file.parse(stream, "", nullptr);
    ASSERT_TRUE(root);
    EXPECT_EQ(test::sDump(*root), "a('x')");
}

TEST(KivXmlFileTest, HandlesStayValidWhenTheFileIsMoved) {
    std::istringstream stream("<a>x</a>");
    File file = getFile();
    const auto root = file.parse(stream, "", nullptr);
    const File moved = std::move(file);
    EXPECT_EQ(test::sDump(*root), "a('x')");
}

TEST(KivXmlFileTest, ASecondReadingKeepsWhatTheFirstReturned) {
    File file = getFile();
    std::istringstream first("<a b='1'>x</a>");
    const auto root = file.parse(first, "", nullptr);
    std::istringstream second("<c/>");
    const auto other = file.parse(second, "", nullptr);
    std::istringstream broken("<d>");
    EXPECT_FALSE(file.parse(broken, "", nullptr));
    ASSERT_TRUE(root && other);
    EXPECT_EQ(test::sDump(*root), "a[b='1']('x')");
    EXPECT_EQ(test::sDump(*other), "c");
    const File moved = std::move(file);
    EXPECT_EQ(test::sDump(*root), "a[b='1']('x')");
}

TEST(KivXmlFileTest, OneThatIsAssignedToItselfKeepsWhatItRead) {
    File file = getFile();
    std::istringstream text("<a>x</a>");
    const auto root = file.parse(text, "", nullptr);
    std::istringstream broken("<b>");
    EXPECT_FALSE(file.parse(broken, "walls.xml", nullptr));
    File& itself = file;
    file = std::move(itself);
    EXPECT_EQ(test::sDump(*root), "a('x')");
    ASSERT_NE(file.pError(), nullptr);
    EXPECT_EQ(file.pError()->document, "walls.xml");
}

/// The levels are those that the library passes, and zero; there is no interface and no name.
TEST(KivXmlFileTest, NullAndZeroAreTakenForEveryArgument) {
    for (const int verbose : {4, 0}) {
        for (const char* const text : {"<a>x</a>", "", "<a>"}) {
            SCOPED_TRACE(text);
            File file(nullptr, static_cast<VerboseLevel>(verbose), static_cast<ValidateLevel>(0));
            std::istringstream stream(text);
            const auto root = file.parse(stream, std::string(), nullptr);
            EXPECT_EQ(root ? test::sDump(*root) : "none",
                      std::string_view(text).size() > 3 ? "a('x')" : "none");
            EXPECT_EQ(file.pError() == nullptr, root.has_value());
        }
    }
}

TEST(KivXmlFileTest, WhatWasReadCanBeChanged) {
    std::istringstream stream("<a b='1'>x</a>");
    File file = getFile();
    auto root = *file.parse(stream, "", nullptr);
    root.vAttributeSet("b", "2");
    root.vAttributeSet("c", "3");
    root.boTextNodeAppend("y");
    root.ElementNodeAppend("d");
    EXPECT_EQ(test::sDump(root), "a[b='2' c='3']('xy' d)");
}

TEST(KivXmlFileTest, WideAndDeepDocumentsNeedLittleStack) {
    const std::string text = "<r>" + sNested(255) + sRepeated(300000, "<e a='1'>x</e>") + "</r>";
    bool isSame = false;
    kiv::test::onSmallStack([&] {
        std::istringstream stream(text);
        File file = getFile();
        const auto root = file.parse(stream, "", nullptr);
        isSame = root && test::sWritten(*root).size() > text.size() / 2;
    });
    EXPECT_TRUE(isSame);
}

} // namespace
} // namespace kiv::xml
