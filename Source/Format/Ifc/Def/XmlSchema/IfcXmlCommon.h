/// @file
/// What the readers of an IFC-XML configuration (ISO 10303-28) share: representations, and the one way in
/// which an element is read and what is unknown in it reported.
///
/// Ownership: none.
/// Threads:   free functions without state; safe from any number of threads.
/// Errors:    what is wrong with an element is an assertion report, and reading goes on.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Host/Xml/KivXml.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string_view>

namespace kiv::ifc::def::xmlschema {

/// How an attribute is written in IFC-XML. The numbers are part of the interface.
enum class ExpAttribute : std::uint32_t {
    NotGiven = 0,
    AttributeTag = 1,
    AttributeContent = 2,
    DoubleTag = 3
};

/// "attribute-tag", "attribute-content" or "double-tag"; any other text is an assertion report and
/// `AttributeContent`.
KIV_EXPORT ExpAttribute expAttributeFromString(std::string_view text);

/// The truth value of an attribute's text (xs:boolean); false when it is none.
bool boFromText(std::string_view text);

/// Reports a problem of a configuration, when anybody listens. `function` is named without its namespace,
/// `module` is the class's name as it ends the module's path; `callable` is what the function's name ends in
/// when it is one inside it.
void vConfigReport(std::string_view message, std::string_view function, std::string_view module,
                   std::string_view callable = {});

/// The reader of one element, as its reports name it.
struct ElementReader {
    /// Without the namespace: "Option::vInit".
    std::string_view function;
    /// "Option".
    std::string_view module;
};

/// Offers each attribute of the element, by name and value, and then each element child; what `boAttribute`
/// or `boChild` refuses is reported as "Unknown attribute" or "Unknown element".
void vElementRead(const kiv::xml::const_Element& element, const ElementReader& reader,
                  const std::function<bool(std::string_view name, std::string_view value)>& boAttribute,
                  const std::function<bool(const kiv::xml::const_Element&)>& boChild);

/// The same for an element that has no child elements.
void vElementRead(const kiv::xml::const_Element& element, const ElementReader& reader,
                  const std::function<bool(std::string_view name, std::string_view value)>& boAttribute);

/// True when the name is among those that are known and not kept.
bool boIsOneOf(std::string_view name, std::initializer_list<std::string_view> known);

} // namespace kiv::ifc::def::xmlschema
