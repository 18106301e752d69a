#include "Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include "Format/Ifc/Def/Schema/IfcSchemaAttribute.h"
#include "Format/Ifc/Def/Schema/IfcSchemaAttributeInverse.h"
#include "Format/Ifc/Def/SchemaPset.h"
#include "Format/Ifc/Def/XmlSchema/IfcXmlCommon.h"
#include "Format/Ifc/Def/XmlSchema/IfcXmlEntity.h"
#include "Format/Ifc/Def/XmlSchema/IfcXmlType.h"
#include "Host/Xml/KivXml.h"

#include <string>
#include <string_view>

namespace kiv::ifc::def::xmlschema {

namespace {

constexpr std::string_view Module = "Config";

} // namespace

Config::Config(SchemaPset& schema, std::istream& stream) {
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
    if (const auto root = file.parse(stream, std::string(), nullptr))
        vDocumentRead(schema, *root);
    else
        vConfigReport("Illegal xml document", "Config::Config", Module);
    vLinksApply();
}

Config::~Config() = default;

void Config::vDocumentRead(SchemaPset& schema, const kiv::xml::const_Element& root) {
    const auto id = root.AttributeNodeGet("id");
    if ((id ? id->getValueView() : std::string_view()) != schema.getName())
        vConfigReport("Illegal ifc version", "Config::Config", Module);
    for (auto child = root.FirstElementChildGet(); child; child = child->NextElementSiblingGet()) {
        if (!boChildRead(schema, *child))
            vConfigReport("Unknown nodename", "Config::{ctor}::<lambda_1>::operator ()", Module);
    }
}

bool Config::boChildRead(SchemaPset& schema, const kiv::xml::const_Element& child) {
    const auto tag = child.tagNameView();
    if (tag == "cnf:entity")
        Entity::vRead(*this, schema, child);
    else if (tag == "cnf:type")
        Type::vRead(*this, schema, child);
    else if (tag == "cnf:uosElement")
        uosElement_.vInit(child);
    else if (tag == "cnf:schema")
        schema_.vInit(child);
    else if (tag == "cnf:option")
        option_.vInit(child);
    else
        return false;
    return true;
}

const Attribute* Config::pAttribute(const Attribute& record) {
    return &attributes_.emplace_back(record);
}

const AttributeInverse* Config::pAttributeInverse(const AttributeInverse& record) {
    return &attributesInverse_.emplace_back(record);
}

void Config::vLink(const schema::Attribute& attribute, const Attribute& record) {
    if (read_)
        attribute.vXmlAttributeSet(&record);
    else
        links_.emplace_back(&attribute, &record);
}

void Config::vLink(const schema::AttributeInverse& attribute, const AttributeInverse& record) {
    if (read_)
        attribute.vXmlAttributeSet(&record);
    else
        linksInverse_.emplace_back(&attribute, &record);
}

void Config::vLinksApply() noexcept {
    for (const auto& [attribute, record] : links_)
        attribute->vXmlAttributeSet(record);
    for (const auto& [attribute, record] : linksInverse_)
        attribute->vXmlAttributeSet(record);
    links_.clear();
    linksInverse_.clear();
    read_ = true;
}

} // namespace kiv::ifc::def::xmlschema
