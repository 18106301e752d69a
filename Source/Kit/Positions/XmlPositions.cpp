#include "kiv/Kit/Positions/XmlPositions.h"

#include "Kit/Positions/XmlPositionsData.h"
#include "Kit/Positions/XmlPositionsReader.h"
#include "Kit/Text/AsciiText.h"

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

/// The text of an element as it is written, without the white space around it.
std::string_view XmlPositions::writtenTextOf(const XmlElement& element) const {
    return trimmed(data_->text.substr(element.textBegin, element.textEnd - element.textBegin));
}

/// Whether there is a place between two tags for a text, and it is written as it reads.
bool XmlPositions::isTextAsWritten(const XmlElement& element) const {
    return element.isWritten && !element.isTextHidden && !isEmptyTag(element) &&
           element.trimmedText == writtenTextOf(element);
}

bool XmlPositions::isEmptyTag(const XmlElement& element) const {
    return element.text.empty() && data_->text.substr(0, element.tagEnd).ends_with("/>");
}

TextPosition XmlPositions::positionOf(const XmlElement& element) const {
    return element.isWritten ? data_->at(element.begin + 1, element.name.size()) : tagPositionOf(element);
}

TextPosition XmlPositions::tagPositionOf(const XmlElement& element) const {
    return data_->at(element.begin, element.tagEnd - element.begin);
}

TextPosition XmlPositions::beginOf(const XmlElement& element) const {
    return data_->at(element.begin);
}

TextPosition XmlPositions::endOf(const XmlElement& element) const {
    return element.end == XmlElement::NoPlace ? TextPosition() : data_->at(element.end);
}

TextPosition XmlPositions::textPositionOf(const XmlElement& element) const {
    if (element.isTextHidden)
        return data_->at(element.textBegin, element.textEnd - element.textBegin);
    if (!element.isWritten || isEmptyTag(element))
        return positionOf(element);
    const auto written = writtenTextOf(element);
    return data_->at(data_->offsetOf(written), written.size());
}

XmlText XmlPositions::textOf(const XmlElement& element) const {
    XmlText text{element.trimmedText, textPositionOf(element), isTextAsWritten(element), {}};
    if (text.isAsWritten) {
        const auto written = writtenTextOf(element);
        text.bytes = data_->range(data_->offsetOf(written), written.size());
    }
    return text;
}

TextPosition XmlPositions::laterTextPositionOf(const XmlElement& element) const {
    if (!element.hasLaterText())
        return {};
    auto position = data_->at(element.laterText);
    position.length = element.laterTextLength;
    return position;
}

ByteRange XmlPositions::nameBytesOf(const XmlElement& element) const {
    return element.isWritten ? data_->range(element.begin + 1, element.name.size()) : ByteRange();
}

ByteRange XmlPositions::endNameBytesOf(const XmlElement& element) const {
    if (!element.isWritten || element.end == XmlElement::NoPlace || element.end == element.tagEnd)
        return {};
    // No end tag has another "<".
    return data_->range(data_->text.rfind('<', element.end - 1) + 2, element.name.size());
}

ByteRange XmlPositions::bytesOf(const XmlElement& element) const {
    if (!element.isWritten)
        return {};
    const auto end = element.end == XmlElement::NoPlace ? element.tagEnd : element.end;
    return data_->range(element.begin, end - element.begin);
}

ByteRange XmlPositions::textBytesOf(const XmlElement& element) const {
    if (writtenTextOf(element).empty() || !isTextAsWritten(element))
        return {};
    return data_->range(element.textBegin, element.textEnd - element.textBegin);
}

TextPosition XmlPositions::positionOf(const XmlIgnore& ignore) const {
    return data_->at(ignore.begin, ignore.end - ignore.begin);
}

TextPosition XmlPositions::positionOf(const XmlAttribute& attribute) const {
    return attribute.isWritten ? data_->at(data_->offsetOf(attribute.name), attribute.name.size())
                               : valuePositionOf(attribute);
}

TextPosition XmlPositions::valuePositionOf(const XmlAttribute& attribute) const {
    return data_->at(attribute.valueBegin, attribute.valueEnd - attribute.valueBegin);
}

XmlText XmlPositions::valueOf(const XmlAttribute& attribute) const {
    const auto size = attribute.valueEnd - attribute.valueBegin;
    const bool isAsWritten =
        attribute.isWritten && attribute.value == data_->text.substr(attribute.valueBegin, size);
    return {attribute.value, valuePositionOf(attribute), isAsWritten,
            isAsWritten ? data_->range(attribute.valueBegin, size) : ByteRange()};
}

ByteRange XmlPositions::nameBytesOf(const XmlAttribute& attribute) const {
    return attribute.isWritten ? data_->range(data_->offsetOf(attribute.name), attribute.name.size())
                               : ByteRange();
}

ByteRange XmlPositions::bytesOf(const XmlAttribute& attribute) const {
    // Its closing quote is a part of it.
    return attribute.isWritten ? data_->range(attribute.begin, attribute.valueEnd + 1 - attribute.begin)
                               : ByteRange();
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
