#include "Kit/Positions/WellFormedXml.h"

#include "Kit/Text/AsciiText.h"

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

/// Looked up, as most bytes of a document are asked for this.
constexpr std::array<bool, 256> TextEnds = [] {
    std::array<bool, 256> ends{};
    for (const char byte : {'<', '&', '\r', '\n'})
        ends[static_cast<unsigned char>(byte)] = true;
    return ends;
}();

bool isTextEnd(char byte) {
    return TextEnds[static_cast<unsigned char>(byte)];
}

/// Whether a name can begin with the byte, as it does after the "<" of a start tag.
bool isNameBegin(char byte) {
    return byte != '/' && byte != '!' && byte != '?' && !isWhiteSpace(byte);
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

XmlPiece WellFormedXml::next() {
    if (offset_ == text_.size())
        return {XmlPieceKind::End, offset_, 0};
    switch (text_[offset_]) {
    case '<':
        return markup();
    case '&':
        return pieceUpTo(XmlPieceKind::Reference, ";", 1);
    case '\n':
        return take(XmlPieceKind::LineEnd, offset_ + 1);
    case '\r':
        return take(XmlPieceKind::LineEnd, offset_ + (text_.substr(offset_ + 1, 1) == "\n" ? 2 : 1));
    default:
        break;
    }
    auto end = offset_;
    while (end != text_.size() && !isTextEnd(text_[end]))
        ++end;
    return take(XmlPieceKind::Text, end);
}

XmlPiece WellFormedXml::markup() {
    const auto rest = text_.substr(offset_);
    if (rest.starts_with("</"))
        return pieceUpTo(XmlPieceKind::EndTag, ">", 2);
    if (rest.starts_with(CommentBegin))
        return pieceUpTo(XmlPieceKind::Comment, CommentEnd, CommentBegin.size());
    if (rest.starts_with(CdataBegin))
        return pieceUpTo(XmlPieceKind::Cdata, CdataEnd, CdataBegin.size());
    if (rest.starts_with(InstructionBegin))
        return pieceUpTo(XmlPieceKind::Instruction, InstructionEnd, InstructionBegin.size());
    return tag();
}

/// A ">" may be in the value of an attribute.
XmlPiece WellFormedXml::tag() {
    auto end = offset_;
    while (end != text_.size() && text_[end] != '>') {
        if (text_[end] == '"' || text_[end] == '\'')
            end = std::min(text_.find(text_[end], end + 1), text_.size() - 1);
        ++end;
    }
    const bool isEmpty = end != text_.size() && text_[end - 1] == '/';
    return take(isEmpty ? XmlPieceKind::EmptyTag : XmlPieceKind::StartTag, end + 1);
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

std::size_t startTags(std::string_view text) {
    std::size_t tags = 0;
    for (auto at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        const auto rest = text.substr(at);
        if (rest.starts_with(CommentBegin))
            at = text.find(CommentEnd, at + CommentBegin.size());
        else if (rest.starts_with(CdataBegin))
            at = text.find(CdataEnd, at + CdataBegin.size());
        else if (rest.starts_with(InstructionBegin))
            at = text.find(InstructionEnd, at + InstructionBegin.size());
        else if (rest.size() > 1 && isNameBegin(rest[1]))
            ++tags;
        if (at == std::string_view::npos)
            break;
    }
    return tags;
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
    // Not by a search for any of them: that asks a function about each byte.
    return std::ranges::none_of(
        written, [](char byte) { return byte == '&' || byte == '\t' || byte == '\n' || byte == '\r'; });
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
