/// @file
/// The target schema of a configuration, "cnf:schema", with its namespace.
///
///     config.getSchema().getTargetNamespace();
///
/// Ownership: a value.
/// Threads:   a value; read-only once the configuration is read.
/// Errors:    what is unknown in an element is an assertion report, and reading goes on.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Base/WorkMeter.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlNamespace.h"
#include "kiv/Host/Xml/KivXml.h"

#include <string>

namespace kiv::ifc::def::xmlschema {

class KIV_EXPORT Schema {
public:
    /// Reads the element; what is unknown in it is reported. What it does not give keeps the value of an
    /// earlier one; but a namespace takes the place of an earlier one as a whole.
    void vInit(const kiv::xml::const_Element& element, WorkMeter* meter = nullptr);

    /// Empty when not given.
    const std::string& getTargetNamespace() const { return targetNamespace_; }
    /// The last one given, alone.
    const Namespace& getNamespace() const { return namespace_; }

private:
    std::string targetNamespace_;
    Namespace namespace_;
};

} // namespace kiv::ifc::def::xmlschema
