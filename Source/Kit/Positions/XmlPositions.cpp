#include "kiv/Kit/Positions/XmlPositions.h"

#include "Kit/Positions/XmlPositionsData.h"
#include "Kit/Positions/XmlPositionsReader.h"

#include <algorithm>
#include <utility>

namespace kiv::kit {

XmlPositions::XmlPositions(std::string bytes, WellFormed wellFormed, WorkMeter* meter) :
    data_(std::make_unique<Data>(std::move(bytes), meter)) {
    XmlPositionsReader reader(*data_, meter);
    if (wellFormed == WellFormed::Yes && isWithoutDocumentType(data_->text))
        reader.vWellFormedRead();
    else
        reader.vRead();
    elements_ = data_->elements;
    attributes_ = data_->attributes;
}

XmlPositions::~XmlPositions() = default;
XmlPositions::XmlPositions(XmlPositions&&) noexcept = default;
XmlPositions& XmlPositions::operator=(XmlPositions&&) noexcept = default;

const XmlElement* XmlPositions::pRoot() const {
    return data_->elements.empty() ? nullptr : data_->elements.data();
}

const XmlAttribute* XmlPositions::pAttribute(const XmlElement& element, std::string_view name) const {
    const auto attributes = getAttributes(element);
    const auto found = std::ranges::find(attributes, name, &XmlAttribute::name);
    return found == attributes.end() ? nullptr : &*found;
}

std::span<const XmlIgnore> XmlPositions::getIgnores() const {
    return data_->ignores;
}

std::string_view XmlPositions::getText() const {
    return data_->text;
}

XmlEncoding XmlPositions::getEncoding() const {
    return data_->encoding;
}

std::string_view XmlPositions::getLine(std::size_t line) const {
    // Few are asked for, so they are not kept.
    auto rest = data_->text;
    for (std::size_t number = 1;; ++number) {
        const auto end = rest.find_first_of("\r\n");
        if (number == line)
            return rest.substr(0, end);
        if (end == std::string_view::npos || line == 0)
            return {};
        rest.remove_prefix(end + (rest.substr(end, 2) == "\r\n" ? 2 : 1));
    }
}

const XmlPositionError* XmlPositions::pError() const {
    return data_->error ? &*data_->error : nullptr;
}

} // namespace kiv::kit
