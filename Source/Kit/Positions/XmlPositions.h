/// @file
/// Where everything is in an XML document: a pass of its own over the bytes of the file, which keeps the
/// place of every element, attribute and text.
///
///     const XmlPositions xml(std::move(bytes));
///     for (const auto& element : xml.getElements())
///         std::cout << element.name << " on line " << xml.positionOf(element).line << '\n';
///
/// Elements and attributes have offsets in the text. Lines and columns are found when they are asked for, as
/// most never are.
///
/// Positions count code points of the text, whatever the encoding of the file; a byte range is known only
/// where the file is UTF-8 and the text is written as it reads, so that an edit can replace just these bytes.
///
/// Ownership: owns the text; the views and spans it hands out live as long as it does, also after it is
///            moved.
/// Threads:   any number of threads may read it.
/// Errors:    a text that is no XML has what was read up to there, and `pError`. What the meter throws;
///            std::bad_alloc, from the first question about a line too.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Kit/Text/TextPosition.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {
class WorkMeter;
}

namespace kiv::kit {

/// Bytes of the file.
struct ByteRange {
    static constexpr std::size_t Unknown = static_cast<std::size_t>(-1);

    std::size_t offset = Unknown;
    std::size_t length = 0;

    bool isKnown() const { return offset != Unknown; }
};

/// A value or text, and where it is written.
struct XmlText {
    /// With references replaced and line ends as XML has them.
    std::string_view value;
    /// Of the value without its quotes; of its first line when it has several.
    TextPosition position;
    /// Whether it is written as it reads: without references, CDATA sections and line ends of two characters.
    /// So many characters into the value are as many into its place.
    bool isAsWritten = false;
    /// Unknown when it is not written as it reads, and in a file that is not UTF-8.
    ByteRange bytes;
};

/// Places are offsets in `XmlPositions::getText`; `XmlPositions` turns them into lines, columns and byte
/// ranges of the file.
struct XmlAttribute {
    /// As written, with its prefix.
    std::string_view name;
    /// With references replaced and line ends as XML has them.
    std::string_view value;
    /// Of the end of what precedes the attribute.
    std::size_t begin = 0;
    /// Of the value as it is written, without its quotes. Where the attribute is not written, and has a
    /// default value: of the name of its element.
    std::size_t valueBegin = 0;
    std::size_t valueEnd = 0;
    bool isWritten = false;
};

/// Elements refer to each other by their index in `XmlPositions::getElements`.
using XmlIndex = std::uint32_t;
inline constexpr XmlIndex NoXmlElement = static_cast<XmlIndex>(-1);

/// Places are offsets in `XmlPositions::getText`; `XmlPositions` turns them into lines, columns and byte
/// ranges of the file.
struct XmlElement {
    static constexpr std::size_t NoPlace = static_cast<std::size_t>(-1);

    /// As written, with its prefix.
    std::string_view name;
    XmlIndex parent = NoXmlElement;
    XmlIndex firstChild = NoXmlElement;
    XmlIndex nextSibling = NoXmlElement;
    /// One past the last element inside it.
    XmlIndex descendantsEnd = 0;
    std::uint32_t firstAttribute = 0;
    std::uint32_t attributeCount = 0;

    /// What comes before the first comment, processing instruction or element inside it, which is all that
    /// the readers of set documents see; as it is, with the blanks around it. When a comment or processing
    /// instruction comes first, they read that in place of the text, and so it is here.
    std::string_view text;
    /// The same without the white space around it.
    std::string_view trimmedText;

    /// Of "<" of the start tag, or of the reference to an entity that has the element.
    std::size_t begin = 0;
    /// Just after the start tag or the reference.
    std::size_t tagEnd = 0;
    /// Of `text` as it is written.
    std::size_t textBegin = 0;
    std::size_t textEnd = 0;
    /// Just after the element; `NoPlace` when it is not closed.
    std::size_t end = NoPlace;
    /// Of text other than white space that comes after `text`, and how many code points of it are on one
    /// line.
    std::size_t laterText = NoPlace;
    std::uint32_t laterTextLength = 0;

    /// Whether its tags are in the text, and not in an entity.
    bool isWritten = false;
    /// Whether a comment or processing instruction comes before any text, and is read in its place.
    bool isTextHidden = false;

    /// The part of the name after the prefix.
    std::string_view localName() const { return name.substr(name.find(':') + 1); }
    bool isPrefixed() const { return name.find(':') != std::string_view::npos; }
    bool hasLaterText() const { return laterText != NoPlace; }
};

/// A comment `<!-- kivifc: ignore CODE, CODE -->`, or one that was probably meant to be one.
struct XmlIgnore {
    /// What follows "ignore", without the white space around it.
    std::string_view codes;
    /// What stands in the place of "kivifc: ignore" and is taken for it: such a comment hides nothing. Empty
    /// where it is right.
    std::string_view misspelt;
    /// Offsets in `XmlPositions::getText`, of the whole comment.
    std::size_t begin = 0;
    std::size_t end = 0;
    /// The element that follows in the same parent; `NoXmlElement` when there is none.
    XmlIndex element = NoXmlElement;
};

/// How the bytes of the file become characters.
enum class XmlEncoding : std::uint8_t { Utf8, Utf16, Latin1 };

/// Why the text is no XML.
struct XmlPositionError {
    std::string message;
    TextPosition position;
};

class KIV_EXPORT XmlPositions {
public:
    /// Says of a text that a parser has accepted it.
    enum class WellFormed : std::uint8_t { Unknown, Yes };

    /// Takes the bytes of the file. A text that is known to be well-formed takes less time.
    ///
    /// A meter, which may be null, hears of the memory besides these bytes before it is taken, but for that
    /// of the parser, and is asked whether to go on at each tag, text and attribute.
    explicit XmlPositions(std::string bytes, WellFormed wellFormed = WellFormed::Unknown,
                          WorkMeter* meter = nullptr);
    ~XmlPositions();
    XmlPositions(XmlPositions&&) noexcept;
    XmlPositions& operator=(XmlPositions&&) noexcept;

    /// In the order of their start tags, the root element first; empty for a text without one.
    std::span<const XmlElement> getElements() const { return elements_; }
    /// Null when the text has no element.
    const XmlElement* pRoot() const;
    const XmlElement& getElement(XmlIndex index) const { return elements_[index]; }
    std::span<const XmlAttribute> getAttributes(const XmlElement& element) const {
        return attributes_.subspan(element.firstAttribute, element.attributeCount);
    }
    /// Null when the element has none of that name.
    const XmlAttribute* pAttribute(const XmlElement& element, std::string_view name) const;
    /// In the order of the document.
    std::span<const XmlIgnore> getIgnores() const;

    // Where something is. The first question about a line takes a look at the whole text.

    /// Of the name in the start tag.
    TextPosition positionOf(const XmlElement& element) const;
    /// The first line of the start tag, "<" included.
    TextPosition tagPositionOf(const XmlElement& element) const;
    /// Of "<" of the start tag, without a length: the rest of a line may be long.
    TextPosition beginOf(const XmlElement& element) const;
    /// Just after the element; without a line when it is not closed.
    TextPosition endOf(const XmlElement& element) const;
    /// Of `trimmedText`; where a text of blanks only, or none, would be when it is empty. Where there is no
    /// place between two tags, as in `<A/>` and in the text of an entity: that of the name. Of the whole
    /// comment or processing instruction that is read in place of the text.
    TextPosition textPositionOf(const XmlElement& element) const;
    /// `trimmedText`, with its place.
    XmlText textOf(const XmlElement& element) const;
    /// Of text other than white space that comes later; without a line when there is none.
    TextPosition laterTextPositionOf(const XmlElement& element) const;
    /// Of the name in the start tag.
    ByteRange nameBytesOf(const XmlElement& element) const;
    /// The name in the end tag; unknown for an empty tag.
    ByteRange endNameBytesOf(const XmlElement& element) const;
    /// From "<" of the start tag to ">" of the end tag; the start tag alone of an element that is not closed.
    ByteRange bytesOf(const XmlElement& element) const;
    /// Of `text` with the blanks around it as they are written, in which a line end may take two bytes;
    /// unknown like the bytes of `textOf`, and for a text of blanks only.
    ByteRange textBytesOf(const XmlElement& element) const;

    /// Of the first line of the comment.
    TextPosition positionOf(const XmlIgnore& ignore) const;

    /// Of the name.
    TextPosition positionOf(const XmlAttribute& attribute) const;
    /// Of the value, without its quotes.
    TextPosition valuePositionOf(const XmlAttribute& attribute) const;
    XmlText valueOf(const XmlAttribute& attribute) const;
    ByteRange nameBytesOf(const XmlAttribute& attribute) const;
    /// From the end of what precedes the attribute to its closing quote, for removing it.
    ByteRange bytesOf(const XmlAttribute& attribute) const;

    /// The text of the file in UTF-8, without its byte order mark.
    std::string_view getText() const;
    XmlEncoding getEncoding() const;
    /// The line of that number, from 1, without its end; empty when there is none.
    std::string_view getLine(std::size_t line) const;
    /// Null when the text is XML.
    const XmlPositionError* pError() const;

private:
    friend class XmlPositionsReader;

    struct Data;

    KIV_NO_EXPORT std::string_view writtenTextOf(const XmlElement& element) const;
    KIV_NO_EXPORT bool isTextAsWritten(const XmlElement& element) const;
    KIV_NO_EXPORT bool isEmptyTag(const XmlElement& element) const;

    std::unique_ptr<Data> data_;
    // What is in the data: rules ask for it more often than for anything else.
    std::span<const XmlElement> elements_;
    std::span<const XmlAttribute> attributes_;
};

} // namespace kiv::kit
