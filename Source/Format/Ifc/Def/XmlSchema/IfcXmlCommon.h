/// What the readers of an IFC-XML configuration (ISO 10303-28) share: representations, and the one way in which an element
/// is read and what is unknown in it reported.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Host/Xml/KivXml.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string_view>

namespace kiv::ifc::def {
enum class Report : std::uint8_t;
}

namespace kiv::ifc::def::xmlschema {

/// How an attribute is written in IFC-XML. The numbers are part of the interface.
enum class ExpAttribute : std::uint32_t {
    NotGiven = 0,
    AttributeTag = 1,
    AttributeContent = 2,
    DoubleTag = 3
};

/// "attribute-tag", "attribute-content" or "double-tag"; any other text is an assertion report and `AttributeContent`.
KIV_EXPORT ExpAttribute expAttributeFromString(std::string_view text);

/// The truth value of an attribute's text (xs:boolean); false when it is none.
bool boFromText(std::string_view text);

/// How the reader of one element reports what it does not know.
struct ElementReports {
    Report unknownAttribute;
    Report unknownChild;
};

/// Offers each attribute of the element, by name and value, and then each element child; what `boAttribute` or `boChild`
/// refuses is reported.
void vElementRead(const kiv::xml::const_Element& element, const ElementReports& reports,
                  const std::function<bool(std::string_view name, std::string_view value)>& boAttribute,
                  const std::function<bool(const kiv::xml::const_Element&)>& boChild);

/// The same for an element that has no child elements.
void vElementRead(const kiv::xml::const_Element& element, const ElementReports& reports,
                  const std::function<bool(std::string_view name, std::string_view value)>& boAttribute);

/// True when the name is among those that are known and not kept.
bool boIsOneOf(std::string_view name, std::initializer_list<std::string_view> known);

} // namespace kiv::ifc::def::xmlschema
