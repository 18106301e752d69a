/// @file
/// The element that encloses a unit of serialisation, "cnf:uosElement".
///
///     config.getUosElement().getName(); // "ifcXML"
///
/// Ownership: a value.
/// Threads:   a value; read-only once the configuration is read.
/// Errors:    what is unknown in an element is an assertion report, and reading goes on.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Base/WorkMeter.h"
#include "kiv/Host/Xml/KivXml.h"

#include <string>

namespace kiv::ifc::def::xmlschema {

class KIV_EXPORT UosElement {
public:
    /// Reads the element; what is unknown in it is reported. What it does not give keeps the value of an
    /// earlier one.
    void vInit(const kiv::xml::const_Element& element, WorkMeter* meter = nullptr);

    /// Empty when not given.
    const std::string& getName() const { return name_; }

private:
    std::string name_;
};

} // namespace kiv::ifc::def::xmlschema
