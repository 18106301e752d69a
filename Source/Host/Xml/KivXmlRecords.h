/// @file
/// How a document is kept: plain records in an arena, linked by pointers.
///
/// Private to the XML library.
///
/// Ownership: the arena owns records and characters alike; they are freed together, without a walk.
/// Threads:   one thread while it is built; then readable from any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include "Base/Arena.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kiv::xml {

struct DocumentRecords;

/// The memory of one document.
class DocumentArena : public Arena {
public:
    /// `kept`, which lies in this arena, and `more` in one piece. Where `kept` was the last thing handed out
    /// it grows in place. Otherwise it moves to a place as large as the next power of two, and `isRoomy` is
    /// set; handed in with `kept` the next time, it lets the text grow there. So a text that comes in many
    /// pieces is copied a few times at most, whatever is made in between.
    std::string_view getJoined(std::string_view kept, std::string_view more, bool& isRoomy);
};

enum class NodeKind : std::uint8_t { Document, Element, Attribute, Text, Comment, ProcessingInstruction };

struct NodeRecord {
    NodeKind kind = NodeKind::Document;
    /// Whether the text has grown into a place as large as the next power of two; see
    /// `DocumentArena::getJoined`.
    bool isTextRoomy = false;
    std::uint32_t line = 0;
    /// The next sibling; null for an attribute.
    NodeRecord* next = nullptr;
    /// The name of an element or attribute, the characters of a text or comment, and target and data of a
    /// processing instruction.
    std::string_view text;
};

struct AttributeRecord : NodeRecord {
    std::string_view value;
};

/// An element, or the document itself above its root element.
struct ElementRecord : NodeRecord {
    DocumentRecords* document = nullptr;
    NodeRecord* firstChild = nullptr;
    NodeRecord* lastChild = nullptr;
    /// Pointers, so that an attribute stays where it is when others are added.
    AttributeRecord** attributes = nullptr;
    std::uint32_t attributeCount = 0;
    std::uint32_t attributeCapacity = 0;
    /// 0 for the document, 1 for the root element.
    std::uint32_t depth = 0;
};

/// All that a document owns. What is appended here is taken as it is; the callers see to it that it is XML.
struct DocumentRecords {
    DocumentRecords();
    DocumentRecords(const DocumentRecords&) = delete;
    DocumentRecords& operator=(const DocumentRecords&) = delete;

    /// An element one level below `parent` that hangs nowhere yet.
    ElementRecord& elementMake(const ElementRecord& parent, std::string_view name, std::uint32_t line);
    void vElementAppend(ElementRecord& parent, ElementRecord& element) { vLink(parent, element); }
    /// Appends a comment or processing instruction.
    void vNodeAppend(ElementRecord& parent, NodeKind kind, std::string_view text, std::uint32_t line);
    /// Appends a text, or lets the text grow that is the last child; `getLine` is only asked for a new one.
    template <std::invocable GetLine>
    void vTextAppend(ElementRecord& parent, std::string_view text, GetLine getLine);

    /// Makes room for `count` attributes in all, more than there is room for.
    void vAttributesReserve(ElementRecord& element, std::size_t count);
    AttributeRecord& attributeAppend(ElementRecord& element, std::string_view name, std::string_view value);

    DocumentArena arena;
    ElementRecord node;

private:
    static void vLink(ElementRecord& parent, NodeRecord& child);
};

/// The attribute of that name; null when there is none.
AttributeRecord* pAttribute(const ElementRecord& element, std::string_view name);

template <std::invocable GetLine>
void DocumentRecords::vTextAppend(ElementRecord& parent, std::string_view text, GetLine getLine) {
    NodeRecord* const last = parent.lastChild;
    if (last != nullptr && last->kind == NodeKind::Text) {
        last->text = arena.getJoined(last->text, text, last->isTextRoomy);
        return;
    }
    vNodeAppend(parent, NodeKind::Text, text, getLine());
}

} // namespace kiv::xml
