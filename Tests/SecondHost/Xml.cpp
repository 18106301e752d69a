// The operations that the library needs of every document model; those beyond are in XmlBeyond.cpp.

#include "SecondHost/XmlTree.h"

#include <algorithm>
#include <string>

namespace kiv::xml {

namespace {

/// The first element from `node` on; null when there is none.
NodeRecord* pElementFrom(NodeRecord* node) {
    while (node && node->kind != NodeKind::Element)
        node = node->next;
    return node;
}

NodeRecord* pFirstChild(const NodeRecord& node) {
    return node.children.empty() ? nullptr : node.children.front().get();
}

} // namespace

std::string const_Node::getNodeName() const {
    return std::string(nodeName(*node_));
}

bool const_Node::boNodeNameIs(std::string_view name) const {
    return getNodeName() == name;
}

std::string const_Node::getNodeValue() const {
    return node_->kind == NodeKind::Text || node_->kind == NodeKind::Attribute ? node_->value : std::string();
}

std::optional<const_Node> const_Node::FirstChildGet() const {
    return ChildNodesGet().FirstItemGet();
}

std::optional<const_Node> const_Node::NextSiblingGet() const {
    return node_->next ? std::optional(const_Node(node_->next)) : std::nullopt;
}

const_NodeList const_Node::ChildNodesGet() const {
    return const_NodeList(pFirstChild(*node_));
}

std::optional<const_NamedNodeMap> const_Node::AttributesGet() const {
    if (node_->kind != NodeKind::Element)
        return std::nullopt;
    return const_NamedNodeMap(static_cast<const ElementRecord*>(node_));
}

template <>
std::optional<bool> const_Node::from_string<bool>(std::string_view text) {
    constexpr std::string_view whiteSpace = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
    text = text.substr(0, text.find_last_not_of(whiteSpace) + 1);
    if (text == "true" || text == "1")
        return true;
    if (text == "false" || text == "0")
        return false;
    return std::nullopt;
}

std::optional<const_Element> const_Element::toWrapper(const const_Node& node) {
    if (node.node_->kind != NodeKind::Element)
        return std::nullopt;
    return const_Element(node.node_);
}

std::string const_Element::tagName() const {
    return node_->name;
}

std::optional<const_Element> const_Element::FirstElementChildGet() const {
    auto* const element = pElementFrom(pFirstChild(*node_));
    return element ? std::optional(const_Element(element)) : std::nullopt;
}

std::optional<const_Element> const_Element::NextElementSiblingGet() const {
    auto* const element = pElementFrom(node_->next);
    return element ? std::optional(const_Element(element)) : std::nullopt;
}

std::optional<const_Attr> const_Element::AttributeNodeGet(std::string_view name) const {
    for (const auto& attribute : node_->attributes) {
        if (attribute->name == name)
            return const_Attr(attribute.get());
    }
    return std::nullopt;
}

std::optional<const_Attr> const_Attr::toWrapper(const const_Node& node) {
    if (node.node_->kind != NodeKind::Attribute)
        return std::nullopt;
    return const_Attr(node.node_);
}

std::string const_Attr::getValue() const {
    return node_->value;
}

std::optional<const_Node> const_NodeList::FirstItemGet() const {
    return first_ ? std::optional(const_Node(first_)) : std::nullopt;
}

std::uint64_t const_NamedNodeMap::LengthGet() const {
    return element_->attributes.size();
}

const_Node const_NamedNodeMap::ItemGet(std::uint64_t index) const {
    return const_Node(element_->attributes[index].get());
}

Element Node::ElementNodeAppend(std::string_view tagName) {
    return Element(&append(*node_, NodeKind::Element, sCarriableName(tagName), {}, 0));
}

bool Node::boTextNodeAppend(std::string_view text) {
    if (node_->kind == NodeKind::Document)
        return false;
    vTextAppend(*node_, sCarriableText(text), 0);
    return true;
}

Element::operator const_Element() const {
    return const_Element(node_);
}

void Element::vAttributeSet(std::string_view name, std::string_view value) {
    vAttributePut(*node_, sCarriableName(name), sCarriableText(value));
}

} // namespace kiv::xml
