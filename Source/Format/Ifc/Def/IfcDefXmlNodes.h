/// @file
/// What reading and writing definitions ask of XML nodes, each once: walking the element children, taking
/// texts and attributes, recording a child that nobody understood, appending a text element, and the tags
/// that several kinds of definitions have. This is also the one place that asks for more than every document
/// model has: views of names and values, which save copies, and lines. A host's model that has none of these
/// gives copies, and no lines.
///
///     for (const auto& child : ElementChildren(element)) {
///         if (child.boNodeNameIs(NameTag))
///             vTextTake(child, name);
///     }
///
/// Ownership: keeps nothing; nodes and texts belong to their document.
/// Threads:   free functions without state; a document is used by one thread at a time.
/// Errors:    none of its own; an unknown child becomes a record.
#pragma once

#include "Base/Metered.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "kiv/Format/Ifc/Def/IfcDefErrors.h"
#include "kiv/Host/Xml/KivXml.h"

#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::ifc::def::xml {

inline constexpr std::string_view NameTag = "Name";
inline constexpr std::string_view DefinitionTag = "Definition";
inline constexpr std::string_view NameAliasesTag = "NameAliases";
inline constexpr std::string_view NameAliasTag = "NameAlias";
inline constexpr std::string_view DefinitionAliasesTag = "DefinitionAliases";
inline constexpr std::string_view DefinitionAliasTag = "DefinitionAlias";

/// The name of a node: a view that lives as long as the document, or a copy where the document model has no
/// views. So are the next three.
template <class Node>
auto nameOf(const Node& node) {
    if constexpr (requires { node.getNodeNameView(); })
        return node.getNodeNameView();
    else
        return node.getNodeName();
}

/// The value of a text node.
template <class Node>
auto textOf(const Node& node) {
    if constexpr (requires { node.getNodeValueView(); })
        return node.getNodeValueView();
    else
        return node.getNodeValue();
}

/// The tag of an element.
template <class Element>
auto tagOf(const Element& element) {
    if constexpr (requires { element.tagNameView(); })
        return element.tagNameView();
    else
        return element.tagName();
}

/// The value of an attribute.
template <class Attr>
auto valueOf(const Attr& attribute) {
    if constexpr (requires { attribute.getValueView(); })
        return attribute.getValueView();
    else
        return attribute.getValue();
}

/// The line on which a node began, counted from 1; 0 where the document model knows no lines.
template <class Node>
std::size_t lineOf(const Node& node) {
    if constexpr (requires { node.getLine(); })
        return node.getLine();
    else
        return 0;
}

/// A text of a document, as `textOf` gives it.
using NodeText = decltype(textOf(std::declval<const kiv::xml::const_Node&>()));

/// The element children of an element, in document order, for a range-based for.
class ElementChildren {
public:
    class Iterator {
    public:
        explicit Iterator(std::optional<kiv::xml::const_Element> child) : child_(child) {}

        const kiv::xml::const_Element& operator*() const { return *child_; }
        Iterator& operator++() {
            child_ = child_->NextElementSiblingGet();
            return *this;
        }
        friend bool operator==(const Iterator& position, std::default_sentinel_t) { return !position.child_; }

    private:
        std::optional<kiv::xml::const_Element> child_;
    };

    explicit ElementChildren(const kiv::xml::const_Element& parent) : parent_(parent) {}

    Iterator begin() const { return Iterator(parent_.FirstElementChildGet()); }
    std::default_sentinel_t end() const { return {}; }

private:
    kiv::xml::const_Element parent_;
};

/// The value of the first child node, whatever its kind; absent for an element without content. Text after a
/// comment or an element is not seen.
std::optional<NodeText> firstChildText(const kiv::xml::const_Element& element);

/// Puts that text into `target`; without one `target` stays as it is.
/// A meter hears of the memory, here and below; null for none.
void vTextTake(const kiv::xml::const_Element& element, std::string& target, WorkMeter* meter = nullptr);

/// Puts the attribute's value into `target`; false, and `target` stays as it is, when the attribute is
/// absent.
bool boAttributeTake(const kiv::xml::const_Element& element, std::string_view name, std::string& target,
                     WorkMeter* meter = nullptr);

/// Makes a report within a budget; without a meter as always.
void vReportTake(WorkMeter* meter, Report report);

/// Appends an error record; `item` is what it concerns and `line` where that is in the document.
void vRecordAdd(XmlSetErrors& errors, RecordMessage message, std::string item, std::size_t line);

/// Records a child that nobody understood, with its tag as the item.
void vUnknownNodeAdd(const kiv::xml::const_Element& child, XmlSetErrors& errors);

/// Offers each element child of `element`, in document order, to `boTake`, and hands those that it refuses to
/// `vRefuse`.
template <class Take, class Refuse>
void vChildrenOffer(const kiv::xml::const_Element& element, const Take& boTake, const Refuse& vRefuse,
                    WorkMeter* meter = nullptr) {
    for (const auto& child : ElementChildren(element)) {
        vLook(meter);
        if (!boTake(child))
            vRefuse(child);
    }
}

/// The same for the children of a definition: `boTake` gets the tag and the child, and what it refuses is
/// recorded as unknown.
template <class Take>
void vChildrenRead(const kiv::xml::const_Element& element, XmlSetErrors& errors, const Take& boTake) {
    vChildrenOffer(
        element, [&](const kiv::xml::const_Element& child) { return boTake(tagOf(child), child); },
        [&](const kiv::xml::const_Element& child) { vUnknownNodeAdd(child, errors); }, errors.pMeter());
}

/// Appends an element with that text to `parent`.
void vTextElementAppend(kiv::xml::Element& parent, std::string_view tag, std::string_view text);

} // namespace kiv::ifc::def::xml
