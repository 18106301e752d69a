/// @file
/// The pieces of a document that a parser has accepted already, found without checking them again.
///
///     WellFormedXml xml(text);
///     for (auto piece = xml.next(); piece.kind != XmlPieceKind::End; piece = xml.next())
///         vUse(text.substr(piece.offset, piece.size));
///
/// Private to the kit. Only for documents without a document type, which may declare entities and defaults.
///
/// Ownership: refers to the text, which must outlive it.
/// Threads:   one thread at a time.
/// Errors:    none; of a text that is not well-formed the pieces mean nothing, and end with the text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kiv::kit {

enum class XmlPieceKind : std::uint8_t {
    StartTag,
    /// `<Name/>`
    EmptyTag,
    EndTag,
    /// Line ends included.
    Text,
    /// `&amp;`
    Reference,
    /// With its marks.
    Cdata,
    Comment,
    Instruction,
    End,
};

struct XmlPiece {
    XmlPieceKind kind = XmlPieceKind::End;
    /// In bytes.
    std::size_t offset = 0;
    std::size_t size = 0;
    /// Of the name in a start or empty tag, with its prefix.
    std::size_t nameSize = 0;
};

class WellFormedXml {
public:
    explicit WellFormedXml(std::string_view text) : text_(text) {}

    XmlPiece next();

private:
    XmlPiece markup();
    XmlPiece tag();
    XmlPiece pieceUpTo(XmlPieceKind kind, std::string_view end, std::size_t from);
    XmlPiece pieceUpTo(XmlPieceKind kind, char end);
    XmlPiece take(XmlPieceKind kind, std::size_t end);

    std::string_view text_;
    std::size_t offset_ = 0;
    /// Where the next "&" is, be it in markup; the text is searched again after it.
    std::size_t nextReference_ = 0;
};

/// Whether a document that a parser has accepted can be read so.
bool isWithoutDocumentType(std::string_view text);

/// What a reference, with its "&" and ";", means: one of the five entities of XML, or a number.
std::string sReferred(std::string_view reference);

/// The value of an attribute as it is written between its quotes, as parsers give it.
std::string sAttributeValue(std::string_view written);

/// Whether the value reads as it is written: `sAttributeValue` would give the same.
bool isValueAsWritten(std::string_view written);

/// The text with line feeds as line ends.
std::string sLineEndsNormalized(std::string_view text);

} // namespace kiv::kit
