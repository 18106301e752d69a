/// @file
/// The one way in which an element of an IFC-XML configuration (ISO 10303-28) is read, and what is unknown in
/// it reported.
///
/// Ownership: none.
/// Threads:   free functions without state; safe from any number of threads.
/// Errors:    what is wrong with an element is an assertion report, and reading goes on.
#pragma once

#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "kiv/Base/WorkMeter.h"
#include "kiv/Host/Xml/KivXml.h"

#include <functional>
#include <initializer_list>
#include <string_view>

namespace kiv::ifc::def::xmlschema {

/// The truth value of an attribute's text (xs:boolean); false when it is none.
bool boFromText(std::string_view text);

/// How the reader of one element reports what it does not know.
struct ElementReports {
    Report unknownAttribute;
    Report unknownChild;
    // Null when no budget is set.
    WorkMeter* meter = nullptr;
};

/// Offers each attribute of the element, by name and value, and then each element child; what `boAttribute`
/// or `boChild` refuses is reported.
void vElementRead(const kiv::xml::const_Element& element, const ElementReports& reports,
                  const std::function<bool(std::string_view name, std::string_view value)>& boAttribute,
                  const std::function<bool(const kiv::xml::const_Element&)>& boChild);

/// The same for an element that has no child elements.
void vElementRead(const kiv::xml::const_Element& element, const ElementReports& reports,
                  const std::function<bool(std::string_view name, std::string_view value)>& boAttribute);

/// True when the name is among those that are known and not kept.
bool boIsOneOf(std::string_view name, std::initializer_list<std::string_view> known);

} // namespace kiv::ifc::def::xmlschema
