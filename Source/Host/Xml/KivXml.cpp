#include "kiv/Host/Xml/KivXml.h"

#include "Base/Ascii.h"
#include "Host/Xml/KivXmlParser.h"
#include "Host/Xml/KivXmlRecords.h"
#include "Host/Xml/KivXmlSerializer.h"
#include "Host/Xml/KivXmlText.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace kiv::xml {

namespace {

template <typename Handle>
constexpr bool isCheapHandle = sizeof(Handle) == sizeof(void*) && std::is_trivially_copyable_v<Handle>;

static_assert(isCheapHandle<const_Node> && isCheapHandle<const_Element> && isCheapHandle<const_Attr> &&
              isCheapHandle<const_NodeList> && isCheapHandle<const_NamedNodeMap> && isCheapHandle<Node> &&
              isCheapHandle<Element>);

/// What XML takes for white space.
constexpr std::string_view whiteSpace = " \t\r\n";

ElementRecord* pElement(NodeRecord* node) {
    return node->kind == NodeKind::Element ? static_cast<ElementRecord*>(node) : nullptr;
}

NodeRecord* pFirstChild(NodeRecord* node) {
    const bool isParent = node->kind == NodeKind::Element || node->kind == NodeKind::Document;
    return isParent ? static_cast<ElementRecord*>(node)->firstChild : nullptr;
}

/// The first element from `node` on; null when there is none.
NodeRecord* pNextElement(NodeRecord* node) {
    while (node != nullptr && node->kind != NodeKind::Element)
        node = node->next;
    return node;
}

} // namespace

std::string const_Node::getNodeName() const {
    return std::string(getNodeNameView());
}

std::string_view const_Node::getNodeNameView() const {
    switch (node_->kind) {
    case NodeKind::Document:
        return "#document";
    case NodeKind::Text:
        return "#text";
    case NodeKind::Comment:
        return "#comment";
    case NodeKind::ProcessingInstruction:
        return "#processing-instruction";
    case NodeKind::Element:
    case NodeKind::Attribute:
        break;
    }
    return node_->text;
}

bool const_Node::boNodeNameIs(std::string_view name) const {
    return getNodeNameView() == name;
}

std::string const_Node::getNodeValue() const {
    return std::string(getNodeValueView());
}

std::string_view const_Node::getNodeValueView() const {
    if (node_->kind == NodeKind::Text)
        return node_->text;
    if (node_->kind == NodeKind::Attribute)
        return static_cast<const AttributeRecord*>(node_)->value;
    return {};
}

std::optional<const_Node> const_Node::FirstChildGet() const {
    return ChildNodesGet().FirstItemGet();
}

std::optional<const_Node> const_Node::NextSiblingGet() const {
    if (node_->next == nullptr)
        return std::nullopt;
    return const_Node(node_->next);
}

const_NodeList const_Node::ChildNodesGet() const {
    return const_NodeList(pFirstChild(node_));
}

std::optional<const_NamedNodeMap> const_Node::AttributesGet() const {
    const ElementRecord* const element = pElement(node_);
    if (element == nullptr)
        return std::nullopt;
    return const_NamedNodeMap(element);
}

std::size_t const_Node::getLine() const {
    return node_->line;
}

void const_Node::vWrite(std::ostream& stream, WriteStyle style) const {
    vNodeWrite(stream, *node_, style);
}

template <>
std::optional<bool> const_Node::from_string<bool>(std::string_view text) {
    const std::string_view value = ascii::trimmed(text, whiteSpace);
    if (value == "true" || value == "1")
        return true;
    if (value == "false" || value == "0")
        return false;
    return std::nullopt;
}

std::optional<const_Element> const_Element::toWrapper(const const_Node& node) {
    if (pElement(node.node_) == nullptr)
        return std::nullopt;
    return const_Element(node.node_);
}

std::string const_Element::tagName() const {
    return std::string(tagNameView());
}

std::string_view const_Element::tagNameView() const {
    return node_->text;
}

std::optional<const_Element> const_Element::FirstElementChildGet() const {
    NodeRecord* const element = pNextElement(pFirstChild(node_));
    if (element == nullptr)
        return std::nullopt;
    return const_Element(element);
}

std::optional<const_Element> const_Element::NextElementSiblingGet() const {
    NodeRecord* const element = pNextElement(node_->next);
    if (element == nullptr)
        return std::nullopt;
    return const_Element(element);
}

std::optional<const_Attr> const_Element::AttributeNodeGet(std::string_view name) const {
    AttributeRecord* const attribute = pAttribute(*pElement(node_), name);
    if (attribute == nullptr)
        return std::nullopt;
    return const_Attr(attribute);
}

std::optional<const_Attr> const_Attr::toWrapper(const const_Node& node) {
    if (node.node_->kind != NodeKind::Attribute)
        return std::nullopt;
    return const_Attr(node.node_);
}

std::string const_Attr::getValue() const {
    return std::string(getValueView());
}

std::string_view const_Attr::getValueView() const {
    return static_cast<const AttributeRecord*>(node_)->value;
}

std::optional<const_Node> const_NodeList::FirstItemGet() const {
    if (first_ == nullptr)
        return std::nullopt;
    return const_Node(first_);
}

std::uint64_t const_NamedNodeMap::LengthGet() const {
    return element_->attributeCount;
}

const_Node const_NamedNodeMap::ItemGet(std::uint64_t index) const {
    return const_Node(element_->attributes[index]);
}

Element Node::ElementNodeAppend(std::string_view tagName) {
    auto& parent = *static_cast<ElementRecord*>(node_);
    DocumentRecords& records = *parent.document;
    ElementRecord& element = records.elementMake(parent, sCarriableName(tagName), 0);
    const bool isSecondRoot = parent.kind == NodeKind::Document && parent.firstChild != nullptr;
    if (!isSecondRoot && element.depth <= maxElementDepth)
        records.vElementAppend(parent, element);
    return Element(&element);
}

bool Node::boTextNodeAppend(std::string_view text) {
    auto& parent = *static_cast<ElementRecord*>(node_);
    if (parent.kind == NodeKind::Document)
        return false;
    if (!text.empty())
        parent.document->vTextAppend(parent, sCarriableText(text), [] { return 0U; });
    return true;
}

Element::operator const_Element() const {
    return const_Element(node_);
}

void Element::vAttributeSet(std::string_view name, std::string_view value) {
    auto& element = *static_cast<ElementRecord*>(node_);
    DocumentRecords& records = *element.document;
    const std::string carriableName = sCarriableName(name);
    const std::string carriableValue = sCarriableText(value);
    if (AttributeRecord* const attribute = pAttribute(element, carriableName))
        attribute->value = records.arena.getCopy(carriableValue);
    else
        records.attributeAppend(element, carriableName, carriableValue);
}

Document::Document() : records_(std::make_unique<DocumentRecords>()) {}
Document::Document(Document&& other) noexcept = default;
Document& Document::operator=(Document&& other) noexcept = default;
Document::~Document() = default;

Node Document::getNode() {
    return Node(&records_->node);
}

std::optional<const_Element> Document::DocumentElementGet() const {
    if (records_->node.firstChild == nullptr)
        return std::nullopt;
    return Element(records_->node.firstChild);
}

void Document::vWrite(std::ostream& stream, WriteStyle style) const {
    vNodeWrite(stream, records_->node, style);
}

File::File(errorhandler::ExceptionInterface*, VerboseLevel, ValidateLevel) {}
File::File(File&& other) noexcept :
    documents_(std::move(other.documents_)), error_(std::exchange(other.error_, std::nullopt)) {}

File& File::operator=(File&& other) noexcept {
    // In two steps, so that one that is assigned to itself keeps its documents.
    documents_ = std::exchange(other.documents_, {});
    error_ = std::exchange(other.error_, std::nullopt);
    return *this;
}

File::~File() = default;

std::optional<Element> File::parse(std::istream& stream, const std::string& name,
                                   errorhandler::ParseInterface* progress) {
    error_.reset();
    ParseError error;
    // Room in the list is made first, so that nothing can fail once the document has been read.
    if (documents_.size() == documents_.capacity())
        documents_.reserve(std::max<std::size_t>(1, 2 * documents_.size()));
    auto document = pDocumentRead(stream, error, maxTokenSize, progress);
    if (document == nullptr) {
        error.document = name;
        error_ = std::move(error);
        return std::nullopt;
    }
    documents_.push_back(std::move(document));
    return Element(documents_.back()->node.firstChild);
}

const ParseError* File::pError() const {
    return error_ ? &*error_ : nullptr;
}

} // namespace kiv::xml
