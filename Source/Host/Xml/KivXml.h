/// @file
/// The XML document model: documents read from streams, and documents built and written by a host.
///
///     kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
///     if (const auto root = file.parse(stream, "walls.xml", nullptr))
///         for (auto child = kiv::xml::const_Element(*root).FirstElementChildGet(); child;
///              child = child->NextElementSiblingGet())
///             vUse(child->tagNameView());
///
/// Every text handed out is UTF-8, whatever the encoding that was read.
///
/// A host may build the library with a document model of its own in place of this one. What the library needs
/// is in Tests/SecondHost/Least; views and lines are used where a model has them: `getNodeNameView`,
/// `getNodeValueView`, `tagNameView`, `getValueView` and `getLine`.
///
/// Ownership: a `File` or a `Document` owns its nodes; handles only refer to them and are one pointer wide.
/// Threads:   a document that nobody changes may be read from any number of threads.
/// Errors:    what is missing is an absent optional; a text that cannot be read is explained by
///            `File::pError`.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Base/WorkMeter.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::xml {

class const_Attr;
class const_Element;
class const_NamedNodeMap;
class const_NodeList;
class Element;

/// What a node is stored as; nothing that a host can look into.
struct NodeRecord;
struct ElementRecord;
struct DocumentRecords;

/// The deepest level of an element; the root element is on level 1.
inline constexpr std::size_t maxElementDepth = 256;

/// The most attributes that a document type can declare, counted over all element types and repetitions. The
/// parser compares each declaration with those before it and looks at all of its element type for each
/// element, so that without a limit a short text could keep it busy for hours.
inline constexpr std::size_t maxDeclaredAttributes = 1000;

/// The most bytes that attributes with a default value can add to elements that do not write them: their
/// names, their values and what it takes to keep them. A document type can declare one in a few bytes that
/// become many.
inline constexpr std::size_t maxDefaultAttributeSize = std::size_t{16} << 20;

/// The bytes that a tag, a comment or another single piece of markup can have; some more may pass, because it
/// is only looked at between two blocks of a stream. The parser keeps such a piece whole, and its buffer
/// cannot grow much beyond this. Text between tags has no limit.
inline constexpr std::size_t maxTokenSize = std::size_t{256} << 20;

/// How a document is laid out when it is written.
enum class WriteStyle {
    /// Nothing is added: what is written reads back to exactly the same tree.
    Compact,
    /// Each child is on a line of its own, four spaces deeper than its parent, except below an element
    /// that has text of its own, which is written as in `Compact`. What is written reads back to the same
    /// tree but for text of white space alone between elements. White space that was read is text, so a
    /// document that was read with its line breaks is written with those.
    Indented
};

/// A read-only handle to one node: element, attribute, text, comment or processing instruction.
///
/// A handle stays valid as long as the document lives. Character data and CDATA sections that touch make one
/// text; white space is kept. Comments and processing instructions are nodes without a value.
class KIV_EXPORT const_Node {
public:
    /// The tag of an element and the name of an attribute, as written, prefix included. The other nodes have
    /// names that no XML name can equal: "#text", "#comment", "#processing-instruction", "#document".
    std::string getNodeName() const;
    /// The same without a copy; lives as long as the document.
    std::string_view getNodeNameView() const;
    /// Whether the name equals `name`, case and all.
    bool boNodeNameIs(std::string_view name) const;

    /// The characters of a text and the value of an attribute; empty for every other node.
    std::string getNodeValue() const;
    /// The same without a copy; lives as long as the document and no text is appended to this node.
    std::string_view getNodeValueView() const;

    /// The first child of any kind; absent for an element without content and for a node without children.
    std::optional<const_Node> FirstChildGet() const;
    /// The next sibling of any kind; absent after the last one, for a root element and for an attribute.
    std::optional<const_Node> NextSiblingGet() const;
    /// The children in document order.
    const_NodeList ChildNodesGet() const;
    /// The attributes of an element, perhaps none; absent for every other node.
    std::optional<const_NamedNodeMap> AttributesGet() const;

    /// The line, counted from 1, on which the node began in the text that was read; an attribute has the line
    /// on which the tag of its element began. 0 for a node that a program made.
    std::size_t getLine() const;

    /// Writes the node with all below it as UTF-8, without an XML declaration unless it is a document; an
    /// attribute writes nothing. Comments and processing instructions that were read are written as they
    /// were. How that went is the stream's to say.
    void vWrite(std::ostream& stream, WriteStyle style) const;

    /// Converts a text to a value; absent when it is none. Made for `bool`: "true", "false", "1" and "0",
    /// white space around them allowed, as in xs:boolean of XML Schema.
    template <typename Value>
    static std::optional<Value> from_string(std::string_view text);

    /// Whether both refer to the same node.
    friend bool operator==(const const_Node&, const const_Node&) = default;

protected:
    friend class const_Attr;
    friend class const_Element;
    friend class const_NamedNodeMap;
    friend class const_NodeList;
    explicit const_Node(NodeRecord* node) : node_(node) {}

    NodeRecord* node_;
};

template <>
KIV_EXPORT std::optional<bool> const_Node::from_string<bool>(std::string_view text);

/// A read-only handle to an element.
class KIV_EXPORT const_Element : public const_Node {
public:
    /// The node seen as an element; absent when it is none.
    static std::optional<const_Element> toWrapper(const const_Node& node);

    /// The tag as written, prefix included.
    std::string tagName() const;
    /// The same without a copy; lives as long as the document.
    std::string_view tagNameView() const;

    /// The first child that is an element; absent when there is none.
    std::optional<const_Element> FirstElementChildGet() const;
    /// The next sibling that is an element; absent after the last one.
    std::optional<const_Element> NextElementSiblingGet() const;
    /// The attribute of exactly that name; absent when there is none.
    std::optional<const_Attr> AttributeNodeGet(std::string_view name) const;

private:
    friend class Element;
    explicit const_Element(NodeRecord* node) : const_Node(node) {}
};

/// A read-only handle to an attribute.
class KIV_EXPORT const_Attr : public const_Node {
public:
    /// The node seen as an attribute; absent when it is none.
    static std::optional<const_Attr> toWrapper(const const_Node& node);

    /// The value, references replaced.
    std::string getValue() const;
    /// The same without a copy; lives as long as the document and the attribute is not set anew.
    std::string_view getValueView() const;

private:
    friend class const_Element;
    explicit const_Attr(NodeRecord* node) : const_Node(node) {}
};

/// The children of a node, in document order.
class KIV_EXPORT const_NodeList {
public:
    /// The first child, from which `NextSiblingGet` leads on; absent when there is none.
    std::optional<const_Node> FirstItemGet() const;

private:
    friend class const_Node;
    explicit const_NodeList(NodeRecord* first) : first_(first) {}

    NodeRecord* first_;
};

/// The attributes of an element, in the order in which they were written.
class KIV_EXPORT const_NamedNodeMap {
public:
    std::uint64_t LengthGet() const;
    /// The attribute at `index`, which is below `LengthGet`.
    const_Node ItemGet(std::uint64_t index) const;

private:
    friend class const_Node;
    explicit const_NamedNodeMap(const ElementRecord* element) : element_(element) {}

    const ElementRecord* element_;
};

/// A handle through which children are appended: an element, or a document on its way to its root element.
///
/// The tree never holds what XML cannot carry, so that what is written always reads back: in texts and values
/// each character outside the range of XML 1.0 and each byte that is not UTF-8 becomes U+FFFD; in names each
/// character that is not allowed in its place becomes "_", and an empty name becomes "_". A name outside
/// ASCII costs a run of the parser for each of its other characters.
class KIV_EXPORT Node : public const_Node {
public:
    /// Appends an element after the children there are. A second root element, and an element below level
    /// `maxElementDepth`, is refused: the element returned then hangs nowhere and is never written with the
    /// document.
    Element ElementNodeAppend(std::string_view tagName);

    /// Appends a text after the children there are; a text that is already last grows instead, because two
    /// texts that touch would read back as one. An empty text appends nothing, and that is done too.
    /// False for a document, which carries no text outside its root element.
    bool boTextNodeAppend(std::string_view text);

protected:
    friend class Document;
    explicit Node(NodeRecord* node) : const_Node(node) {}
};

/// A handle to an element that can be changed.
class KIV_EXPORT Element : public Node {
public:
    /// The same element, to be read.
    operator const_Element() const; // NOLINT(google-explicit-constructor): an element can be read anywhere

    /// Sets the attribute, replacing a value already there. Two names that differ only in characters that XML
    /// does not allow are the same name.
    void vAttributeSet(std::string_view name, std::string_view value);

private:
    friend class Document;
    friend class File;
    friend class Node;
    explicit Element(NodeRecord* node) : Node(node) {}
};

/// A document that a program builds.
///
///     kiv::xml::Document document;
///     auto set = document.getNode().ElementNodeAppend("PropertySetDef");
///     set.ElementNodeAppend("Name").boTextNodeAppend("Pset_WallCommon");
///     document.vWrite(stream, kiv::xml::WriteStyle::Indented);
///
/// Ownership: owns its nodes; moving it keeps all handles valid. One that was moved from can only be assigned
///            to.
/// Threads:   one thread at a time while it is being built.
class KIV_EXPORT Document {
public:
    Document();
    Document(Document&& other) noexcept;
    Document& operator=(Document&& other) noexcept;
    ~Document();

    /// The document itself, under which the root element is appended.
    Node getNode();
    /// The root element; absent as long as none was appended.
    std::optional<const_Element> DocumentElementGet() const;

    /// Writes the XML declaration and the root element with all below it, as UTF-8; nothing at all as long as
    /// there is no root element. How that went is the stream's to say.
    void vWrite(std::ostream& stream, WriteStyle style) const;

private:
    std::unique_ptr<DocumentRecords> records_;
};

namespace errorhandler {
/// A name for what a host might one day pass to hear of errors; nothing is ever called.
class ExceptionInterface;

/// Hears of the work of `File::parse`: of the bytes that it takes from the stream, of nodes and attributes,
/// of the memory of the document and of the parser. A document model that knows nothing of it need
/// not call it.
class ParseInterface : public WorkMeter {
protected:
    ~ParseInterface() = default;
};
} // namespace errorhandler

/// How much the error interface receives: nothing, whatever the level.
enum class VerboseLevel : std::int32_t { Quiet = 4 };

/// How far a document is checked against a grammar. It is not, whatever the level.
enum class ValidateLevel : std::int32_t { None = 0 };

/// Why a text could not be read.
struct ParseError {
    /// The name that was given to `File::parse`.
    std::string document;
    /// What is wrong, in words, without the place.
    std::string reason;
    /// The line of the failure, counted from 1; 0 when it has no place in the text, as when a stream fails.
    std::size_t line = 0;
    /// The character of that line, counted from 1; 0 where `line` is.
    std::size_t column = 0;
};

/// Reads one document from a stream and owns it.
///
/// Read are UTF-8 with or without byte order mark, UTF-16, ISO-8859-1 and US-ASCII. Refused, besides what is
/// not well-formed: other encodings; a document type declaration that names an external subset, declares an
/// entity or refers to a parameter entity, because references could then vanish or multiply without a word;
/// more than `maxDeclaredAttributes` declared attributes; default attribute values that add more than
/// `maxDefaultAttributeSize` bytes; a piece of markup of more than `maxTokenSize` bytes; elements below level
/// `maxElementDepth`. What is outside the root element is checked and not kept.
///
/// Ownership: the nodes of every document that it read live until the `File` is destroyed or assigned to.
/// Threads:   one thread at a time; different objects share nothing.
/// Errors:    a text that cannot be read is an absent result and `pError`; `std::bad_alloc` is passed on.
class KIV_EXPORT File {
public:
    /// Takes null, or an interface that is never called, and any levels.
    File(errorhandler::ExceptionInterface* errors, VerboseLevel verbose, ValidateLevel validate);
    File(File&& other) noexcept;
    File& operator=(File&& other) noexcept;
    ~File();

    /// Reads the stream to its end and gives the root element; absent when any of it cannot be read, and then
    /// nothing of the document is kept. Documents read before stay. `name` is only kept for the error.
    /// `progress`, which may be null, hears of the work; what it throws is passed on, and then nothing of the
    /// document is kept either.
    std::optional<Element> parse(std::istream& stream, const std::string& name,
                                 errorhandler::ParseInterface* progress);

    /// Why the last `parse` gave nothing; null when it gave a document and when none was tried.
    const ParseError* pError() const;

private:
    std::vector<std::unique_ptr<DocumentRecords>> documents_;
    std::optional<ParseError> error_;
};

} // namespace kiv::xml
