#include "Kit/Positions/WellFormedXml.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace kiv::kit {

namespace {

constexpr std::string_view CommentBegin = "<!--";
constexpr std::string_view CommentEnd = "-->";
constexpr std::string_view CdataBegin = "<![CDATA[";
constexpr std::string_view CdataEnd = "]]>";
constexpr std::string_view InstructionBegin = "<?";
constexpr std::string_view InstructionEnd = "?>";

constexpr std::pair<std::string_view, char> Entities[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

void vUtf8Append(std::string& text, std::uint32_t character) {
    const auto vAdd = [&text](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (character < 0x80U) {
        vAdd(character);
        return;
    }
    if (character < 0x800U) {
        vAdd(0xC0U | character >> 6U);
    } else {
        if (character < 0x10000U) {
            vAdd(0xE0U | character >> 12U);
        } else {
            vAdd(0xF0U | character >> 18U);
            vAdd(0x80U | (character >> 12U & 0x3FU));
        }
        vAdd(0x80U | (character >> 6U & 0x3FU));
    }
    vAdd(0x80U | (character & 0x3FU));
}

using ByteSet = std::array<bool, 256>;

constexpr ByteSet byteSetOf(std::string_view bytes) {
    ByteSet these{};
    for (const char byte : bytes)
        these[static_cast<unsigned char>(byte)] = true;
    return these;
}

/// Looked up, as most bytes of a document are asked for one of these.
constexpr ByteSet NameEnds = byteSetOf(" \t\r\n/>");
constexpr ByteSet TagMarks = byteSetOf("\"'>");
constexpr ByteSet ValueChanges = byteSetOf("&\t\n\r");

/// From `at` on, the place of the first of these bytes, or the end of the text.
std::size_t firstOf(const ByteSet& bytes, std::string_view text, std::size_t at) {
    while (at < text.size() && !bytes[static_cast<unsigned char>(text[at])])
        ++at;
    return at;
}

} // namespace

XmlPiece WellFormedXml::take(XmlPieceKind kind, std::size_t end) {
    const XmlPiece piece{kind, offset_, std::min(end, text_.size()) - offset_};
    offset_ += piece.size;
    return piece;
}

XmlPiece WellFormedXml::pieceUpTo(XmlPieceKind kind, std::string_view end, std::size_t from) {
    const auto found = text_.find(end, offset_ + from);
    return take(kind, found == std::string_view::npos ? text_.size() : found + end.size());
}

XmlPiece WellFormedXml::pieceUpTo(XmlPieceKind kind, char end) {
    const auto found = text_.find(end, offset_);
    return take(kind, found == std::string_view::npos ? text_.size() : found + 1);
}

XmlPiece WellFormedXml::next() {
    if (offset_ == text_.size())
        return {XmlPieceKind::End, offset_, 0};
    if (text_[offset_] == '<')
        return markup();
    if (text_[offset_] == '&')
        return pieceUpTo(XmlPieceKind::Reference, ';');
    // Hardly any text has references, so they are not looked for each time.
    if (nextReference_ <= offset_)
        nextReference_ = std::min(text_.find('&', offset_), text_.size());
    return take(XmlPieceKind::Text, std::min(text_.find('<', offset_), nextReference_));
}

XmlPiece WellFormedXml::markup() {
    const auto rest = text_.substr(offset_);
    const char mark = rest.size() > 1 ? rest[1] : '\0';
    if (mark == '/')
        return pieceUpTo(XmlPieceKind::EndTag, '>');
    if (mark == '!' && rest.starts_with(CommentBegin))
        return pieceUpTo(XmlPieceKind::Comment, CommentEnd, CommentBegin.size());
    if (mark == '!' && rest.starts_with(CdataBegin))
        return pieceUpTo(XmlPieceKind::Cdata, CdataEnd, CdataBegin.size());
    if (mark == '?')
        return pieceUpTo(XmlPieceKind::Instruction, InstructionEnd, InstructionBegin.size());
    return tag();
}

/// A ">" may be in the value of an attribute.
XmlPiece WellFormedXml::tag() {
    const auto nameBegin = offset_ + 1;
    const auto nameEnd = firstOf(NameEnds, text_, nameBegin);
    auto end = nameEnd;
    while (end < text_.size() && text_[end] != '>') {
        end = firstOf(TagMarks, text_, end);
        if (end < text_.size() && text_[end] != '>')
            end = std::min(text_.find(text_[end], end + 1), text_.size() - 1) + 1;
    }
    const bool isEmpty = end < text_.size() && text_[end - 1] == '/';
    auto piece = take(isEmpty ? XmlPieceKind::EmptyTag : XmlPieceKind::StartTag, end + 1);
    piece.nameSize = nameEnd - nameBegin;
    return piece;
}

/// Only comments, instructions and white space may come before a document type, and it before the root.
bool isWithoutDocumentType(std::string_view text) {
    WellFormedXml xml(text);
    auto piece = xml.next();
    while (piece.kind != XmlPieceKind::StartTag && piece.kind != XmlPieceKind::EmptyTag &&
           piece.kind != XmlPieceKind::End)
        piece = xml.next();
    return !text.substr(piece.offset).starts_with("<!DOCTYPE");
}

std::string sReferred(std::string_view reference) {
    for (const auto& [entity, letter] : Entities) {
        if (reference == entity)
            return {letter};
    }
    constexpr std::string_view Decimal = "&#";
    constexpr std::string_view Hexadecimal = "&#x";
    const bool isHexadecimal = reference.starts_with(Hexadecimal);
    const auto digits = reference.substr(isHexadecimal ? Hexadecimal.size() : Decimal.size());
    std::uint32_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number, isHexadecimal ? 16 : 10);
    std::string text;
    vUtf8Append(text, number);
    return text;
}

bool isValueAsWritten(std::string_view written) {
    return firstOf(ValueChanges, written, 0) == written.size();
}

std::string sAttributeValue(std::string_view written) {
    std::string value;
    value.reserve(written.size());
    for (std::size_t at = 0; at != written.size();) {
        const char byte = written[at];
        if (byte == '&') {
            const auto end = std::min(written.find(';', at), written.size() - 1) + 1;
            value += sReferred(written.substr(at, end - at));
            at = end;
            continue;
        }
        const bool isBlank = byte == '\t' || byte == '\n' || byte == '\r';
        value += isBlank ? ' ' : byte;
        at += byte == '\r' && written.substr(at + 1, 1) == "\n" ? 2 : 1;
    }
    return value;
}

std::string sLineEndsNormalized(std::string_view text) {
    std::string normalized;
    normalized.reserve(text.size());
    for (std::size_t at = 0; at != text.size(); ++at) {
        if (text[at] != '\r')
            normalized += text[at];
        else if (text.substr(at + 1, 1) != "\n")
            normalized += '\n';
    }
    return normalized;
}

} // namespace kiv::kit
