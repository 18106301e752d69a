/// @file
/// How one attribute of an entity is written in IFC-XML: the records of "cnf:attribute" and "cnf:inverse".
///
///     if (const Attribute* record = attribute.pXmlAttribute(); record && !record->isKeep()) ...
///
/// Ownership: records are values; those that schema attributes are linked to belong to their `Config`.
/// Threads:   read-only once the configuration is read.
/// Errors:    what is wrong with an element is an assertion report, and the element is skipped.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Base/WorkMeter.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlCommon.h"
#include "kiv/Host/Xml/KivXml.h"

namespace kiv::ifc::def {
class SchemaPset;
}

namespace kiv::ifc::def::schema {
class Entity;
}

namespace kiv::ifc::def::xmlschema {

class Config;

class KIV_EXPORT Attribute {
public:
    explicit Attribute(const kiv::xml::const_Element& element, WorkMeter* meter = nullptr);

    /// Reads the element into a record of the configuration and links it to the attribute that "select"
    /// names, letter case included, of the entity or one of its supertypes.
    static void vRead(Config& config, SchemaPset& schema, const schema::Entity& entity,
                      const kiv::xml::const_Element& element);

    ExpAttribute getRepresentation() const { return representation_; }
    bool isTagless() const { return tagless_; }
    bool isKeep() const { return keep_; }

private:
    ExpAttribute representation_ = ExpAttribute::NotGiven;
    bool tagless_ = false;
    bool keep_ = false;
};

class KIV_EXPORT AttributeInverse {
public:
    explicit AttributeInverse(const kiv::xml::const_Element& element, WorkMeter* meter = nullptr);

    /// Reads the element into a record of the configuration and links it to the inverse attribute that
    /// "select" names, in any letter case, of the entity or one of its supertypes.
    static void vRead(Config& config, SchemaPset& schema, const schema::Entity& entity,
                      const kiv::xml::const_Element& element);

    ExpAttribute getRepresentation() const { return representation_; }

private:
    ExpAttribute representation_ = ExpAttribute::NotGiven;
};

} // namespace kiv::ifc::def::xmlschema
