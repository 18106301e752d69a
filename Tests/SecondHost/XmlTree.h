/// What nodes of the second document model are stored as: plain structs that own their children. libxml2
/// reads them; it has no part in what becomes of them.
///
///     kiv::xml::TreeFailure failure;
///     if (auto document = kiv::xml::pTreeRead(stream, failure))
///         use(document->root.children);
///
/// Ownership: a node owns its children and attributes, a document its nodes.
/// Threads:   a document is used by one thread at a time while it is changed.
/// Errors:    a text that is not read is null and a reason; `std::bad_alloc`.
#pragma once

#include "kiv/Host/Xml/KivXml.h"

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::xml {

enum class NodeKind { Document, Element, Attribute, Text, Comment, ProcessingInstruction };

struct NodeRecord {
    NodeKind kind = NodeKind::Document;
    /// Of elements, attributes and processing instructions.
    std::string name;
    /// Of all others.
    std::string value;
    std::size_t line = 0;
    /// The root element has 1.
    std::size_t level = 0;
    NodeRecord* next = nullptr;
    DocumentRecords* document = nullptr;
    std::vector<std::unique_ptr<NodeRecord>> attributes;
    std::vector<std::unique_ptr<NodeRecord>> children;
};

/// Nothing but another name for it: an element.
struct ElementRecord : NodeRecord {};

struct DocumentRecords {
    DocumentRecords() { root.document = this; }

    NodeRecord root;
    /// Elements that could not be appended and that somebody may still refer to.
    std::vector<std::unique_ptr<NodeRecord>> refused;
};

/// The deepest level of an element.
inline constexpr std::size_t TreeDepthMax = 256;

struct TreeFailure {
    std::string reason;
    std::size_t line = 0;
};

/// The name of an element or attribute, and what the document model calls the others.
std::string_view nodeName(const NodeRecord& node);

/// Appends a node below `parent`; an element that has no place there is kept aside.
NodeRecord& append(NodeRecord& parent, NodeKind kind, std::string_view name, std::string_view value,
                   std::size_t line);

/// Appends a text, to the last child if that is one.
void vTextAppend(NodeRecord& parent, std::string_view text, std::size_t line);

/// Sets an attribute, replacing the value that is there.
void vAttributePut(NodeRecord& element, std::string_view name, std::string_view value);

/// What XML can carry of a text or of a name: replacements for the rest.
std::string sCarriableText(std::string_view text);
std::string sCarriableName(std::string_view name);

std::unique_ptr<DocumentRecords> pTreeRead(std::istream& stream, TreeFailure& failure);

} // namespace kiv::xml
