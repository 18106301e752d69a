#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include "Base/Metered.h"
#include "Base/UpperCase.h"
#include "Format/Ifc/Def/IfcDefXmlNodes.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/Schema/IfcSchemaAttributeSearch.h"
#include "kiv/Format/Ifc/Def/IfcBudget.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttribute.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttributeInverse.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlCommon.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlEntity.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlType.h"
#include "kiv/Host/Xml/KivXml.h"

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace kiv::ifc::def::xmlschema {

namespace {

/// Attributes of the schema and the records that they were linked to, some of them several times.
template <class SchemaAttribute, class Record>
using LinkList = std::vector<std::pair<const SchemaAttribute*, const Record*>>;

/// Makes place for a link more, so that a record which is there can be linked.
template <class SchemaAttribute, class Record>
void vPlaceMake(LinkList<SchemaAttribute, Record>& links, WorkMeter* meter) {
    vRoomForOne(links, meter);
    if (links.size() == links.capacity())
        links.reserve(2 * links.size() + 1);
}

template <class SchemaAttribute, class Record>
void vApply(const LinkList<SchemaAttribute, Record>& links) noexcept {
    for (const auto& [attribute, record] : links)
        attribute->vXmlAttributeSet(record);
}

/// Those that have been linked to a record of another configuration since stay as they are.
template <class SchemaAttribute, class Record>
void vUndo(const LinkList<SchemaAttribute, Record>& links) noexcept {
    for (const auto& [attribute, record] : links) {
        if (attribute->pXmlAttribute() == record)
            attribute->vXmlAttributeSet(nullptr);
    }
}

/// The meter as what `File::parse` takes; null where a document model takes something else.
template <class Meter>
kiv::xml::errorhandler::ParseInterface* pProgress(Meter* meter) {
    if constexpr (std::is_convertible_v<Meter*, kiv::xml::errorhandler::ParseInterface*>)
        return meter;
    else
        return nullptr;
}

} // namespace

/// Every link of an attribute to a record.
struct Config::Links {
    LinkList<schema::Attribute, Attribute> explicits;
    LinkList<schema::AttributeInverse, AttributeInverse> inverses;
};

/// What is there while the document is read only.
struct Config::Reading {
    explicit Reading(WorkMeter* meterOrNull) :
        meter(meterOrNull),
        search(schema::AttributeStepsMax, meter),
        searchInverse(schema::AttributeStepsMax, meter) {}

    WorkMeter* meter;
    schema::AttributeSearch<schema::Attribute> search;
    schema::AttributeSearch<schema::AttributeInverse> searchInverse;
};

Config::Config(SchemaPset& schema, std::istream& stream) : Config(schema, stream, nullptr) {}

Config::Config(SchemaPset& schema, std::istream& stream, BudgetMeter& meter) :
    Config(schema, stream, meter, BudgetMeter::Reading(meter)) {}

Config::Config(SchemaPset& schema, std::istream& stream, BudgetMeter& meter, const BudgetMeter::Reading&) :
    Config(schema, stream, &meter) {}

Config::Config(SchemaPset& schema, std::istream& stream, BudgetMeter* meter) :
    links_(std::make_unique<Links>()), reading_(std::make_unique<Reading>(meter)) {
    const auto held = [meter] { return meter ? meter->getUsed(WorkMeter::Unit::HeldBytes) : 0; };
    const auto heldBefore = held();
    // By number: a host's own levels may have other names.
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel(4), kiv::xml::ValidateLevel(0));
    const auto root = file.parse(stream, std::string(), pProgress(meter));
    const auto heldByDocument = held() - heldBefore;
    if (root)
        vDocumentRead(schema, *root);
    else
        xml::vReportTake(meter, Report::ConfigNotWellFormed);
    if (meter)
        meter->vMemoryGiveBack(heldByDocument);
    vLinksApply();
}

Config::~Config() {
    vUndo(links_->explicits);
    vUndo(links_->inverses);
}

void Config::vDocumentRead(SchemaPset& schema, const kiv::xml::const_Element& root) {
    const auto id = root.AttributeNodeGet("id");
    if (!(id ? xml::valueOf(*id) == schema.getName() : schema.getName().empty()))
        xml::vReportTake(pMeter(), Report::ConfigOfOtherSchema);
    xml::vChildrenOffer(
        root, [&](const kiv::xml::const_Element& child) { return boChildRead(schema, child); },
        [&](const kiv::xml::const_Element&) { xml::vReportTake(pMeter(), Report::ConfigChildUnknown); },
        pMeter());
}

bool Config::boChildRead(SchemaPset& schema, const kiv::xml::const_Element& child) {
    const auto tag = xml::tagOf(child);
    if (tag == "cnf:entity")
        Entity::vRead(*this, schema, child);
    else if (tag == "cnf:type")
        Type::vRead(*this, schema, child);
    else if (tag == "cnf:uosElement")
        uosElement_.vInit(child, pMeter());
    else if (tag == "cnf:schema")
        schema_.vInit(child, pMeter());
    else if (tag == "cnf:option")
        option_.vInit(child, pMeter());
    else
        return false;
    return true;
}

WorkMeter* Config::pMeter() const {
    return reading_ ? reading_->meter : nullptr;
}

void Config::vRecordTake(std::size_t size) {
    vObjectTake(pMeter());
    vMemoryTake(pMeter(), size);
}

const Attribute* Config::pAttribute(const Attribute& record) {
    vPlaceMake(links_->explicits, pMeter());
    vRecordTake(sizeof(record));
    return &attributes_.emplace_back(record);
}

const AttributeInverse* Config::pAttributeInverse(const AttributeInverse& record) {
    vPlaceMake(links_->inverses, pMeter());
    vRecordTake(sizeof(record));
    return &attributesInverse_.emplace_back(record);
}

const schema::Attribute* Config::pAttributeFind(const schema::Entity& entity, const std::string& name) {
    const schema::AttributeName key(name);
    return reading_ ? reading_->search.pFind(entity, key) : entity.pAttributeFromName(key, true);
}

const schema::AttributeInverse* Config::pAttributeInverseFind(const schema::Entity& entity,
                                                              const std::string& name) {
    return reading_ ? reading_->searchInverse.pFind(entity, sUpper(name))
                    : entity.pAttributeInverseFromName(name, true);
}

void Config::vLink(const schema::Attribute& attribute, const Attribute& record) {
    links_->explicits.emplace_back(&attribute, &record);
    if (!reading_)
        attribute.vXmlAttributeSet(&record);
}

void Config::vLink(const schema::AttributeInverse& attribute, const AttributeInverse& record) {
    links_->inverses.emplace_back(&attribute, &record);
    if (!reading_)
        attribute.vXmlAttributeSet(&record);
}

// Links are made when all is read: a reading that is broken off leaves the schema as it was.
void Config::vLinksApply() noexcept {
    vApply(links_->explicits);
    vApply(links_->inverses);
    reading_.reset();
}

} // namespace kiv::ifc::def::xmlschema

namespace kiv::ifc::def {

// Here and not beside the other members: so SchemaPset needs no include of configurations, which include it.
void SchemaPset::vXmlSchemaConfigInit(std::istream& stream) {
    // The place is there before the configuration links attributes to its records.
    xmlSchemaConfigs_.reserve(xmlSchemaConfigs_.size() + 1);
    xmlSchemaConfigs_.push_back(std::make_shared<const xmlschema::Config>(*this, stream));
}

void SchemaPset::vXmlSchemaConfigInit(std::istream& stream, const Budget& budget) {
    BudgetMeter meter(budget);
    vXmlSchemaConfigInit(stream, meter);
}

void SchemaPset::vXmlSchemaConfigInit(std::istream& stream, BudgetMeter& meter) {
    const BudgetMeter::Reading reading(meter);
    vMemoryTake(&meter, sizeof(xmlschema::Config));
    vRoomForOne(xmlSchemaConfigs_, &meter);
    xmlSchemaConfigs_.reserve(xmlSchemaConfigs_.size() + 1);
    xmlSchemaConfigs_.push_back(std::make_shared<const xmlschema::Config>(*this, stream, meter));
}

} // namespace kiv::ifc::def
