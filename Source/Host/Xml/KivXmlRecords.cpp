#include "Host/Xml/KivXmlRecords.h"

#include <algorithm>
#include <bit>

namespace kiv::xml {

std::string_view DocumentArena::getJoined(std::string_view kept, std::string_view more, bool& isRoomy) {
    const std::size_t size = kept.size() + more.size();
    if (isRoomy && size <= std::bit_ceil(kept.size())) {
        more.copy(const_cast<char*>(kept.data()) + kept.size(), more.size()); // the arena's own memory
        return {kept.data(), size};
    }
    const bool isLast = !isRoomy && kept.data() + kept.size() == at_;
    if (isLast && more.size() <= getRoom()) {
        at_ += more.copy(at_, more.size());
        return {kept.data(), size};
    }
    char* const joined = pAllocate(std::bit_ceil(size), 1);
    kept.copy(joined, kept.size());
    more.copy(joined + kept.size(), more.size());
    isRoomy = true;
    return {joined, size};
}

DocumentRecords::DocumentRecords() {
    node.document = this;
}

ElementRecord& DocumentRecords::elementMake(const ElementRecord& parent, std::string_view name,
                                            std::uint32_t line) {
    auto& element = *arena.pMake<ElementRecord>();
    element.kind = NodeKind::Element;
    element.line = line;
    element.text = arena.getCopy(name);
    element.document = this;
    element.depth = parent.depth + 1;
    return element;
}

void DocumentRecords::vNodeAppend(ElementRecord& parent, NodeKind kind, std::string_view text,
                                  std::uint32_t line) {
    auto& child = *arena.pMake<NodeRecord>();
    child.kind = kind;
    child.line = line;
    child.text = arena.getCopy(text);
    vLink(parent, child);
}

void DocumentRecords::vAttributesReserve(ElementRecord& element, std::size_t count) {
    auto** const attributes = arena.pMakeArray<AttributeRecord*>(count);
    std::copy_n(element.attributes, element.attributeCount, attributes);
    element.attributes = attributes;
    element.attributeCapacity = static_cast<std::uint32_t>(count);
}

AttributeRecord& DocumentRecords::attributeAppend(ElementRecord& element, std::string_view name,
                                                  std::string_view value) {
    if (element.attributeCount == element.attributeCapacity)
        vAttributesReserve(element, std::max(std::size_t{4}, 2 * std::size_t{element.attributeCount}));
    auto& attribute = *arena.pMake<AttributeRecord>();
    attribute.kind = NodeKind::Attribute;
    attribute.line = element.line;
    attribute.text = arena.getCopy(name);
    attribute.value = arena.getCopy(value);
    element.attributes[element.attributeCount++] = &attribute;
    return attribute;
}

void DocumentRecords::vLink(ElementRecord& parent, NodeRecord& child) {
    (parent.lastChild == nullptr ? parent.firstChild : parent.lastChild->next) = &child;
    parent.lastChild = &child;
}

AttributeRecord* pAttribute(const ElementRecord& element, std::string_view name) {
    for (std::uint32_t i = 0; i != element.attributeCount; ++i)
        if (element.attributes[i]->text == name)
            return element.attributes[i];
    return nullptr;
}

} // namespace kiv::xml
