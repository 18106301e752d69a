/// @file
/// The element children of an element, in document order, for a range-based for.
///
///     for (const XmlIndex child : XmlChildren(xml, element))
///         ...
///
/// Private to the kit.
///
/// Ownership: refers to the positions.
/// Threads:   any number of threads may walk the same document.
/// Errors:    std::bad_alloc where a list is made.
#pragma once

#include "kiv/Kit/Positions/XmlPositions.h"

#include <iterator>
#include <string_view>
#include <vector>

namespace kiv::kit {

class XmlChildren {
public:
    class Iterator {
    public:
        Iterator(const XmlPositions& xml, XmlIndex child) : xml_(&xml), child_(child) {}

        XmlIndex operator*() const { return child_; }
        Iterator& operator++() {
            child_ = xml_->getElement(child_).nextSibling;
            return *this;
        }
        friend bool operator==(const Iterator& position, std::default_sentinel_t) {
            return position.child_ == NoXmlElement;
        }

    private:
        const XmlPositions* xml_;
        XmlIndex child_;
    };

    /// `NoXmlElement` has no children.
    XmlChildren(const XmlPositions& xml, XmlIndex parent) :
        xml_(&xml), first_(parent == NoXmlElement ? NoXmlElement : xml.getElement(parent).firstChild) {}

    Iterator begin() const { return {*xml_, first_}; }
    std::default_sentinel_t end() const { return {}; }

private:
    const XmlPositions* xml_;
    XmlIndex first_;
};

/// The first child of that name; `NoXmlElement` when there is none.
inline XmlIndex childOf(const XmlPositions& xml, XmlIndex parent, std::string_view name) {
    for (const auto child : XmlChildren(xml, parent)) {
        if (xml.getElement(child).name == name)
            return child;
    }
    return NoXmlElement;
}

/// All children of that name, in document order.
inline std::vector<XmlIndex> childrenOf(const XmlPositions& xml, XmlIndex parent, std::string_view name) {
    std::vector<XmlIndex> children;
    for (const auto child : XmlChildren(xml, parent)) {
        if (xml.getElement(child).name == name)
            children.push_back(child);
    }
    return children;
}

} // namespace kiv::kit
