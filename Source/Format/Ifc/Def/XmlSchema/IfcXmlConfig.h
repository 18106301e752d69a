/// @file
/// The IFC-XML configuration of a schema (ISO 10303-28): how its entities and attributes are written in
/// IFC-XML.
///
///     schema.vXmlSchemaConfigInit(stream);
///     const auto* attribute = wall->pAttributeFromName(schema::AttributeName("Name"), true);
///     if (const auto* record = attribute->pXmlAttribute())
///         use(record->getRepresentation());
///
/// Ownership: owns its records, to which attributes of the schema are linked. At its end it unlinks those
///            that still refer to its records, so it must not outlive its schema. One that
///            `SchemaPset::vXmlSchemaConfigInit` made lives as long as the schema, replaced or not.
/// Threads:   nobody else may use the schema while it is read; then read-only.
/// Errors:    whatever is wrong with the document is an assertion report, and what is wrong is skipped. A
///            stream that is no well-formed XML gives the report "Illegal xml document" and an empty
///            configuration.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/IfcBudget.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlAttribute.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlNamespace.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlOption.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlSchema.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlUosElement.h"
#include "kiv/Host/Xml/KivXml.h"

#include <cstddef>
#include <deque>
#include <iosfwd>
#include <memory>
#include <string>

namespace kiv::ifc::def {
class SchemaPset;
} // namespace kiv::ifc::def

namespace kiv::ifc::def::schema {
class Attribute;
class AttributeInverse;
class Entity;
} // namespace kiv::ifc::def::schema

namespace kiv::ifc::def::xmlschema {

class KIV_EXPORT Config {
public:
    /// Reads the stream and links the attributes of the schema to what it says of them.
    Config(SchemaPset& schema, std::istream& stream);
    /// The same within a budget; what goes beyond it throws `BudgetExceeded`, and the schema is as it was.
    Config(SchemaPset& schema, std::istream& stream, BudgetMeter& meter);
    ~Config();
    Config(const Config&) = delete;
    Config& operator=(const Config&) = delete;

    /// Stores a copy of the record and returns it; it stays where it is.
    const Attribute* pAttribute(const Attribute& record);
    const AttributeInverse* pAttributeInverse(const AttributeInverse& record);

    /// The explicit attribute of this name as written, of the entity or above; null when there is none.
    const schema::Attribute* pAttributeFind(const schema::Entity& entity, const std::string& name);
    /// The inverse attribute of this name, in any letter case, of the entity or above; null when there is
    /// none.
    const schema::AttributeInverse* pAttributeInverseFind(const schema::Entity& entity,
                                                          const std::string& name);

    /// Links an attribute of the schema to a record of this configuration; the last record linked stays.
    /// Right after the record was stored this cannot fail; later, a lack of memory leaves the attribute as it
    /// was. While the configuration is still being read, nothing of it stays when that breaks off.
    void vLink(const schema::Attribute& attribute, const Attribute& record);
    void vLink(const schema::AttributeInverse& attribute, const AttributeInverse& record);

    /// The records, in document order.
    const std::deque<Attribute>& getAttributes() const { return attributes_; }
    const std::deque<AttributeInverse>& getAttributesInverse() const { return attributesInverse_; }
    const Namespace& getNamespace() const { return schema_.getNamespace(); }
    const Option& getOption() const { return option_; }
    const Schema& getSchema() const { return schema_; }
    const UosElement& getUosElement() const { return uosElement_; }

    /// The meter of the reading within a budget that goes on; null for none.
    WorkMeter* pMeter() const;

private:
    struct Links;
    struct Reading;

    /// The memory is accounted for as long as the last argument lives, which is longer than the members do.
    Config(SchemaPset& schema, std::istream& stream, BudgetMeter& meter, const BudgetMeter::Reading&);
    Config(SchemaPset& schema, std::istream& stream, BudgetMeter* meter);

    void vDocumentRead(SchemaPset& schema, const kiv::xml::const_Element& root);
    bool boChildRead(SchemaPset& schema, const kiv::xml::const_Element& child);
    void vRecordTake(std::size_t size);
    void vLinksApply() noexcept;

    Option option_;
    Schema schema_;
    UosElement uosElement_;
    std::deque<Attribute> attributes_;
    std::deque<AttributeInverse> attributesInverse_;
    std::unique_ptr<Links> links_;
    // Null once all is read.
    std::unique_ptr<Reading> reading_;
};

} // namespace kiv::ifc::def::xmlschema
