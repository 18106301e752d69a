#include "Kit/Findings/XmlMistake.h"

#include "Kit/Findings/RuleRun.h"
#include "Kit/Positions/WellFormedXml.h"
#include "Kit/Text/AsciiText.h"
#include "Kit/Text/FileKind.h"
#include "Kit/Text/Utf8.h"
#include "kiv/Kit/Names/NearestName.h"
#include "kiv/Kit/Positions/XmlDecoding.h"
#include "kiv/Kit/Text/TextLines.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

constexpr std::string_view NameEnds = " \t\r\n<>/=&;\"'";

std::string_view nameAt(std::string_view text) {
    return text.substr(0, text.find_first_of(NameEnds));
}

/// The name that a text ends with.
std::string_view nameBefore(std::string_view text) {
    text = text.substr(0, text.find_last_not_of(WhiteSpace) + 1);
    const auto before = text.find_last_of(NameEnds);
    return before == std::string_view::npos ? text : text.substr(before + 1);
}

/// How many bytes a code point takes that begins with this one; 0 when none does.
std::size_t sizeOf(unsigned char first) {
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first <= 0xDF)
        return 2;
    if (first >= 0xE0 && first <= 0xEF)
        return 3;
    return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

/// The code point that a text begins with; empty when its bytes are none.
std::string_view codePointAt(std::string_view text) {
    const auto size = sizeOf(static_cast<unsigned char>(text.front()));
    const auto bytes = text.substr(0, size);
    return bytes.size() == size && size != 0 && std::ranges::all_of(bytes.substr(1), isContinuation)
               ? bytes
               : std::string_view();
}

std::string sHexadecimal(unsigned char byte) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    return {Digits[byte >> 4U], Digits[byte & 0xFU]};
}

/// The bytes of a text from a place on.
std::size_t offsetOf(const XmlPositions& xml, const TextPosition& position) {
    const auto text = xml.getText();
    const auto line = xml.getLine(position.line);
    if (line.data() == nullptr || position.column == 0)
        return text.size();
    auto offset = static_cast<std::size_t>(line.data() - text.data());
    for (std::size_t column = 1; column < position.column && offset < text.size(); ++column) {
        ++offset;
        while (offset < text.size() && isContinuation(text[offset]))
            ++offset;
    }
    return offset;
}

/// Where a value begins that is not closed within a tag, with its quote; npos when all values are closed.
std::size_t openQuoteIn(std::string_view tag) {
    auto begin = std::string_view::npos;
    for (std::size_t at = 0; at != tag.size(); ++at) {
        const bool isOpen = begin != std::string_view::npos;
        if (isOpen && tag[at] == tag[begin])
            begin = std::string_view::npos;
        else if (!isOpen && (tag[at] == '"' || tag[at] == '\''))
            begin = at;
    }
    return begin;
}

/// The last comment, tag, section or text; `text` is well-formed but for its end.
XmlPiece lastPieceOf(std::string_view text) {
    WellFormedXml pieces(text);
    XmlPiece last;
    for (auto piece = pieces.next(); piece.kind != XmlPieceKind::End; piece = pieces.next())
        last = piece;
    return last;
}

bool isTag(XmlPieceKind kind) {
    return kind == XmlPieceKind::StartTag || kind == XmlPieceKind::EmptyTag || kind == XmlPieceKind::EndTag;
}

/// The quotation mark of texts that it begins with, those of U+2018 to U+201F; empty for others.
std::string_view typographicQuote(std::string_view text) {
    constexpr std::string_view Beginning = "\xE2\x80";
    constexpr std::string_view Ends = "\x98\x99\x9A\x9B\x9C\x9D\x9E\x9F";
    const bool isQuote =
        text.size() > 2 && text.starts_with(Beginning) && Ends.find(text[2]) != std::string_view::npos;
    return isQuote ? text.substr(0, 3) : std::string_view();
}

/// One mistake, looked at from its place.
class Mistake {
public:
    Mistake(Finding& explained, const XmlPositions& positions) :
        finding_(explained),
        xml_(positions),
        before_(positions.getText().substr(0, offsetOf(positions, explained.place.position))),
        after_(positions.getText().substr(before_.size())) {}

    void vMismatchedTag();
    void vInvalidToken();
    void vNoElement();
    void vUnclosedToken();
    void vUndefinedEntity();
    void vDuplicateAttribute();
    void vJunk();
    void vDeclaration();
    void vDeclarationWrong();
    void vEncodingWrong();
    void vEncodingUnknown();

    /// Whether the file is something else altogether.
    bool boOtherKind();

private:
    void vMessage(std::string message) { finding_.message = std::move(message); }
    void vNote(std::string message) { finding_.notes.push_back({std::move(message), std::nullopt}); }
    void vOpenNote(const XmlElement& open);
    /// The innermost element that is not closed; null when there is none.
    const XmlElement* pOpen() const;
    /// The place is that many bytes, on the same line, before the one of the parser.
    void vBack(std::size_t bytes, std::size_t length);
    /// The place is that of a byte before the one of the parser.
    void vPlace(std::size_t offset, std::size_t length);
    /// The tag that the parser is in; empty when it is in none.
    std::string_view openTag() const;

    bool boEncoding();
    bool boComment();
    bool boAmpersand();
    bool boTagBegin();
    bool boTag();
    bool boValueSign(std::string_view tag);
    bool boUnclosedValue(std::string_view tag);
    bool boTagInside(std::string_view tag);
    bool boCharacter();

    Finding& finding_;
    const XmlPositions& xml_;
    std::string_view before_;
    std::string_view after_;
};

const XmlElement* Mistake::pOpen() const {
    const auto elements = xml_.getElements();
    for (auto index = elements.size(); index-- > 0;) {
        if (elements[index].end == XmlElement::NoPlace)
            return &elements[index];
    }
    return nullptr;
}

void Mistake::vOpenNote(const XmlElement& open) {
    finding_.notes.push_back(
        {sQuoted(open.name) + " begins here", Place{finding_.place.path, xml_.positionOf(open)}});
}

void Mistake::vBack(std::size_t bytes, std::size_t length) {
    auto& position = finding_.place.position;
    position.column -= codePointsOfLine(before_.substr(before_.size() - bytes));
    position.length = length;
}

void Mistake::vPlace(std::size_t offset, std::size_t length) {
    auto& position = finding_.place.position;
    position = {1, 1, length};
    for (std::size_t at = 0; at != offset; ++at) {
        const bool isLineEnd =
            before_[at] == '\n' || (before_[at] == '\r' && before_.substr(at + 1, 1) != "\n");
        position.line += isLineEnd ? 1 : 0;
        if (isLineEnd)
            position.column = 1;
        else if (!isContinuation(before_[at]))
            ++position.column;
    }
}

std::string_view Mistake::openTag() const {
    if (!isWithoutDocumentType(before_)) {
        const auto begin = before_.rfind('<');
        const auto end = before_.rfind('>');
        const bool isOpen = begin != std::string_view::npos && (end == std::string_view::npos || end < begin);
        return isOpen ? before_.substr(begin) : std::string_view();
    }
    const auto piece = lastPieceOf(before_);
    const auto tag = before_.substr(piece.offset);
    const bool isClosed = tag.ends_with('>') && openQuoteIn(tag) == std::string_view::npos;
    return isTag(piece.kind) && !isClosed ? tag : std::string_view();
}

bool Mistake::boOtherKind() {
    // Read as UTF-16, UTF-32 has a character that is no text beside each that is.
    constexpr std::size_t beginning = 8;
    if (xml_.getEncoding() == XmlEncoding::Utf16 &&
        xml_.getText().substr(0, beginning).find('\0') != std::string_view::npos) {
        finding_.place.position = {1, 1, 0};
        vMessage("the file is UTF-32, which is not read");
        vNote("save it as UTF-8");
        return true;
    }
    const auto kind = fileKindOf(xml_.getText());
    if (kind.empty() || kind == XmlKind)
        return false;
    // Where the parser gave up says nothing then.
    finding_.place.position = {1, 1, 0};
    vMessage("the file is " + std::string(kind) + ", no set document");
    return true;
}

void Mistake::vMismatchedTag() {
    const auto* const open = pOpen();
    const auto name = nameAt(after_);
    if (!open || name.empty())
        return vMessage("an end tag does not fit the element that is open");
    finding_.place.position.length = codePointsOfLine(name);
    vMessage("the end tag is that of " + sQuoted(name) + ", where " + sQuoted(open->name) + " is open");
    vOpenNote(*open);
}

void Mistake::vNoElement() {
    const auto* const open = pOpen();
    if (!open)
        return vMessage(trimmed(xml_.getText()).empty() ? "the file has nothing but blanks"
                                                        : "there is no element in the document");
    vMessage("the document ends, and " + sQuoted(open->name) + " is not closed");
    vOpenNote(*open);
}

void Mistake::vUnclosedToken() {
    constexpr std::string_view Cdata = "<![CDATA[";
    constexpr std::string_view Instruction = "<?";
    if (after_.starts_with("<!--"))
        return vMessage("nothing closes this comment");
    if (after_.starts_with(Instruction)) {
        const auto name = nameAt(after_.substr(Instruction.size()));
        finding_.place.position.length = Instruction.size() + codePointsOfLine(name);
        return vMessage("\"?>\" is missing: nothing closes " +
                        sQuoted(after_.substr(0, Instruction.size() + name.size())));
    }
    // Of a section, the parser gives the end of the document.
    const auto section = isWithoutDocumentType(before_) ? lastPieceOf(before_).offset : before_.rfind(Cdata);
    if (section < before_.size() && before_.substr(section).starts_with(Cdata)) {
        vPlace(section, Cdata.size());
        return vMessage("nothing closes this CDATA section");
    }
    vMessage("the document ends in the middle of a tag");
}

void Mistake::vUndefinedEntity() {
    if (!after_.starts_with('&'))
        return vMessage("an entity is used that is not declared");
    const auto name = nameAt(after_.substr(1));
    finding_.place.position.length = codePointsOfLine(name) + 2;
    vMessage("the entity " + sQuoted(name) + " is not declared");
    vNote("XML has amp, lt, gt, quot and apos; write any other character itself");
}

void Mistake::vDuplicateAttribute() {
    const auto name = nameAt(after_);
    finding_.place.position.length = codePointsOfLine(name);
    vMessage("the attribute " + sQuoted(name) + " is there twice");
}

void Mistake::vJunk() {
    const auto* const root = xml_.pRoot();
    if (!root)
        return vMessage("something comes after the root element");
    vMessage("something comes after the root element " + sQuoted(root->name));
    finding_.notes.push_back(
        {sQuoted(root->name) + " ends here", Place{finding_.place.path, xml_.endOf(*root)}});
}

void Mistake::vDeclaration() {
    vMessage("\"<?xml\" is not at the very beginning of the file");
    vNote("remove what comes before it, blanks and empty lines too");
}

void Mistake::vDeclarationWrong() {
    vMessage("the XML declaration is not written as it must be");
    vNote("write <?xml version=\"1.0\" encoding=\"UTF-8\"?>");
}

void Mistake::vEncodingUnknown() {
    constexpr std::array<std::string_view, 4> Known{"UTF-8", "UTF-16", "ISO-8859-1", "US-ASCII"};
    const auto written = declaredEncoding(xml_.getText());
    if (!written.empty()) {
        before_ = xml_.getText();
        vPlace(static_cast<std::size_t>(written.data() - before_.data()), codePointsOfLine(written));
        if (const auto nearest = nearestName(written, Known))
            vNote("did you mean " + sQuoted(nearest->name) + "?");
    }
    vNote("these are read: " + sQuotedList({Known.begin(), Known.end()}));
}

void Mistake::vEncodingWrong() {
    vMessage("the document is not in the encoding that it declares");
    vNote(
        "declare the encoding that the file has, such as encoding=\"UTF-8\", or save it in the declared one");
}

bool Mistake::boEncoding() {
    if (after_.empty() || !codePointAt(after_).empty())
        return false;
    vMessage("the byte " + sHexadecimal(static_cast<unsigned char>(after_.front())) + " is not UTF-8");
    vNote("save the file as UTF-8, or declare what it is, as in <?xml version=\"1.0\" "
          "encoding=\"ISO-8859-1\"?>");
    return true;
}

bool Mistake::boComment() {
    constexpr std::string_view Begin = "<!--";
    const auto begin = before_.rfind(Begin);
    if (begin == std::string_view::npos ||
        before_.find("-->", begin + Begin.size()) != std::string_view::npos)
        return false;
    constexpr std::size_t MarkSize = 2;
    if (before_.ends_with("--"))
        vBack(MarkSize, MarkSize);
    vMessage("\"--\" is not allowed inside a comment");
    return true;
}

bool Mistake::boAmpersand() {
    const auto sign = before_.rfind('&');
    if (sign == std::string_view::npos ||
        before_.find_first_of("; \t\r\n<>\"'", sign) != std::string_view::npos)
        return false;
    vBack(before_.size() - sign, 1);
    vMessage("\"&\" does not begin an entity here");
    vNote("write \"&amp;\" for the character itself");
    return true;
}

bool Mistake::boTagBegin() {
    if (!before_.ends_with('<') && !before_.ends_with("</"))
        return false;
    const auto sign = before_.rfind('<');
    vBack(before_.size() - sign, 1);
    vMessage("\"<\" does not begin a tag here");
    vNote("write \"&lt;\" for the character itself");
    return true;
}

bool Mistake::boTag() {
    const auto tag = openTag();
    return !tag.empty() && boTagInside(tag);
}

/// A value that has a whole tag, or a line, in it was to end before.
bool Mistake::boUnclosedValue(std::string_view tag) {
    const auto quote = openQuoteIn(tag);
    if (quote == std::string_view::npos || tag.find_first_of(">\r\n", quote) == std::string_view::npos)
        return false;
    const auto attribute = tag.substr(0, quote);
    vPlace(before_.size() - tag.size() + quote, 1);
    vMessage("nothing closes the value of " + sQuoted(nameBefore(attribute.substr(0, attribute.rfind('=')))));
    return true;
}

/// "<" in a tag: in a value, or because the tag is not closed.
bool Mistake::boValueSign(std::string_view tag) {
    if (boUnclosedValue(tag))
        return true;
    if (openQuoteIn(tag) != std::string_view::npos) {
        vMessage("\"<\" is not allowed in the value of an attribute");
        vNote("write \"&lt;\" for the character itself, or close the value before it");
        return true;
    }
    const bool isEnd = tag.starts_with("</");
    vMessage("\">\" is missing: the " + std::string(isEnd ? "end tag" : "tag") + " of " +
             sQuoted(nameAt(tag.substr(isEnd ? 2 : 1))) + " is not closed before this \"<\"");
    return true;
}

bool Mistake::boTagInside(std::string_view tag) {
    if (after_.starts_with('<'))
        return boValueSign(tag);
    if (tag.size() > 2 && tag.ends_with('/')) {
        vMessage("\">\" is missing after \"/\": the tag of " + sQuoted(nameAt(tag.substr(1))) +
                 " is not closed");
        return true;
    }
    if (tag.starts_with("</")) {
        vMessage("nothing but \">\" can come after the name of an end tag");
        return true;
    }
    const auto last = tag.find_last_not_of(WhiteSpace);
    if (tag[last] == '=') {
        vMessage("the value of the attribute " + sQuoted(nameBefore(tag.substr(0, last))) +
                 " is not in quotes");
        if (const auto mark = typographicQuote(after_); !mark.empty())
            vNote("XML has the quotes \" and ', and not " + std::string(mark));
        return true;
    }
    if (tag.ends_with('"') || tag.ends_with('\'')) {
        vMessage("a blank is missing before the attribute " + sQuoted(nameAt(after_)));
        return true;
    }
    const auto name = nameBefore(tag);
    // A name that the tag begins with is its own.
    if (name.empty() || tag.substr(1).starts_with(name))
        return false;
    vMessage("the attribute " + sQuoted(name) + " has no value");
    return true;
}

bool Mistake::boCharacter() {
    if (after_.empty())
        return false;
    const auto first = static_cast<unsigned char>(after_.front());
    if (first < 0x20 && !isWhiteSpace(after_.front())) {
        vMessage("the control character U+00" + sHexadecimal(first) + " is not allowed in XML");
        return true;
    }
    if (after_.starts_with("]]>") || before_.ends_with("]]")) {
        vMessage("\"]]>\" is not allowed in a text");
        vNote("write \"]]&gt;\"");
        return true;
    }
    vMessage(sQuoted(codePointAt(after_)) + " is not allowed here");
    return true;
}

void Mistake::vInvalidToken() {
    const bool isExplained =
        boEncoding() || boComment() || boAmpersand() || boTagBegin() || boTag() || boCharacter();
    if (!isExplained)
        vMessage("the document breaks the rules of XML here");
}

/// The words of the parser, and what explains them.
struct Explanation {
    std::string_view reason;
    void (Mistake::*vExplain)();
};

constexpr std::array Explanations{
    Explanation{"mismatched tag", &Mistake::vMismatchedTag},
    Explanation{"not well-formed (invalid token)", &Mistake::vInvalidToken},
    Explanation{"syntax error", &Mistake::vInvalidToken},
    Explanation{"no element found", &Mistake::vNoElement},
    Explanation{"unclosed token", &Mistake::vUnclosedToken},
    Explanation{"unclosed CDATA section", &Mistake::vUnclosedToken},
    Explanation{"undefined entity", &Mistake::vUndefinedEntity},
    Explanation{"duplicate attribute", &Mistake::vDuplicateAttribute},
    Explanation{"junk after document element", &Mistake::vJunk},
    Explanation{"XML or text declaration not at start of entity", &Mistake::vDeclaration},
    Explanation{"XML declaration not well-formed", &Mistake::vDeclarationWrong},
    Explanation{"encoding specified in XML declaration is incorrect", &Mistake::vEncodingWrong},
};

} // namespace

void vXmlMistakeExplain(Finding& finding, const XmlPositions& xml) {
    if (finding.message.starts_with("the encoding \"") && finding.message.ends_with("\" is not supported"))
        return Mistake(finding, xml).vEncodingUnknown();
    const auto* const found = std::ranges::find(Explanations, finding.message, &Explanation::reason);
    if (found == Explanations.end())
        return;
    Mistake mistake(finding, xml);
    if (!mistake.boOtherKind())
        (mistake.*found->vExplain)();
    finding.notes.push_back({"the XML parser says: " + std::string(found->reason), std::nullopt});
}

} // namespace kiv::kit
