/// @file
/// The options of a configuration that hold for all entities, "cnf:option".
///
///     if (option.getConcreteAttribute() == ExpAttribute::DoubleTag) ...
///
/// Ownership: a value.
/// Threads:   a value; read-only once the configuration is read.
/// Errors:    what is unknown in an element is an assertion report, and reading goes on.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Base/WorkMeter.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlCommon.h"
#include "kiv/Host/Xml/KivXml.h"

namespace kiv::ifc::def::xmlschema {

class KIV_EXPORT Option {
public:
    /// Reads the element; what is unknown in it is reported. What it does not give keeps the value of an
    /// earlier one.
    void vInit(const kiv::xml::const_Element& element, WorkMeter* meter = nullptr);

    /// How attributes of concrete types are written.
    ExpAttribute getConcreteAttribute() const { return concreteAttribute_; }
    /// How attributes that refer to entities are written.
    ExpAttribute getEntityAttribute() const { return entityAttribute_; }

private:
    ExpAttribute concreteAttribute_ = ExpAttribute::NotGiven;
    ExpAttribute entityAttribute_ = ExpAttribute::NotGiven;
};

} // namespace kiv::ifc::def::xmlschema
