/// The target schema of a configuration, "cnf:schema", with its namespace.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlNamespace.h"
#include "kiv/Host/Xml/KivXml.h"

#include <string>

namespace kiv::ifc::def::xmlschema {

class KIV_EXPORT Schema {
public:
    /// Reads the element; what is unknown in it is reported. What it does not give keeps the value of an earlier one; but
    /// a namespace takes the place of an earlier one as a whole.
    void vInit(const kiv::xml::const_Element& element);

    /// Empty when not given.
    const std::string& getTargetNamespace() const { return targetNamespace_; }
    /// The last one given, alone.
    const Namespace& getNamespace() const { return namespace_; }

private:
    std::string targetNamespace_;
    Namespace namespace_;
};

} // namespace kiv::ifc::def::xmlschema
