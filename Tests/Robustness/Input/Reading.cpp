#include "Robustness/Input/Reading.h"

#include "Support/ModelText.h"
#include "Support/SchemaPsetFromText.h"
#include "Support/XmlFromText.h"
#include "kiv/Base/Exception.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"
#include "kiv/Host/Xml/KivXml.h"

#include <algorithm>
#include <exception>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace kiv::test {

namespace {

using namespace ifc::def;
using schema::AttributeName;
using schema::Entity;
using schema::Schema;

/// Something that does not hold.
class Broken : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

void vRequire(bool holds, const char* law, std::string_view name) {
    if (!holds)
        throw Broken(std::string(law).append(": ").append(name));
}

/// What came out, when it was no exception that is promised.
template <class Run>
std::string sFaultOf(const Run& run) {
    try {
        run();
    } catch (const std::exception& exception) {
        return exception.what();
    } catch (...) {
        return "something is thrown that is no exception";
    }
    return {};
}

// ---- Schemas

void vInheritanceAsk(const Entity& entity) {
    const auto* supertype = entity.pSupertype();
    vRequire(entity.isSameOrSubtypeOf(entity), "an entity is itself", entity.getName());
    vRequire(!supertype || entity.isSameOrSubtypeOf(*supertype), "an entity is below its supertype",
             entity.getName());
    vRequire(!supertype || Entity::pCommonBaseGet(entity, *supertype) == supertype,
             "supertype and entity meet in the supertype", entity.getName());
}

void vAttributesAsk(const Schema& schema, const Entity& entity) {
    for (const auto& attribute : entity.getAttributes()) {
        const auto name = attribute.getName();
        const auto* found = entity.pAttributeFromName(AttributeName(name), false);
        vRequire(found && found->getName() == name, "an entity finds its attribute", name);
        vRequire(entity.pAttributeFromNameUpper(std::string(attribute.getNameUpper()), true) != nullptr,
                 "an entity finds its attribute in capitals", name);
        const auto* direct = schema.pAttributeGet(std::string(entity.getName()), std::string(name));
        vRequire(direct && &direct->getEntity() == &entity, "a schema finds the attribute", name);
        const auto all = schema.attributesGet(std::string(name));
        vRequire(std::any_of(all.begin(), all.end(),
                             [&](const schema::Attribute& other) { return &other == &attribute; }),
                 "a schema finds all attributes of a name", name);
    }
    for (const auto& attribute : entity.getAttributesInverse())
        vRequire(entity.pAttributeInverseFromName(std::string(attribute.getName()), true) != nullptr,
                 "an entity finds its inverse attribute", attribute.getName());
}

void vTypeAsk(const schema::Type& type) {
    const auto* dataType = type.pDataType();
    if (const auto* select = dynamic_cast<const schema::DataTypeSelect*>(dataType))
        for (const auto* member : select->getMembers())
            vRequire(select->isCompatible(*member), "a select takes its member", member->getName());
    if (const auto* enumeration = dynamic_cast<const schema::DataTypeEnum*>(dataType))
        for (const auto& item : enumeration->getItems())
            vRequire(enumeration->boContains(item), "an enumeration has its item", item);
    if (dataType)
        dataType->pBaseType();
}

void vObjectAsk(const Schema& schema, const schema::ObjectBase& object) {
    const auto* found = schema.pObjectFromName(object.getName());
    vRequire(found && found->getNameUpper() == object.getNameUpper(), "a name is found", object.getName());
    vRequire(schema.pObjectFromName(object.getNameUpper()) == found, "a name is found in capitals",
             object.getName());
    const auto* entity = Entity::pFrom(&object);
    if (entity)
        vInheritanceAsk(*entity);
    // Another object of this name hides what this one has.
    if (entity && found == &object)
        vAttributesAsk(schema, *entity);
    if (const auto* type = schema::Type::pFrom(&object))
        vTypeAsk(*type);
}

void vSchemaAsk(const Schema& schema, bool whole) {
    for (const auto* object : schema.getObjects())
        vObjectAsk(schema, *object);
    vRequire(schema.getObjectsByName().size() <= schema.getObjects().size(), "no name is made up", "");
    if (whole)
        vRequire(!sModelText(schema).empty(), "a model has a text", "");
}

// ---- Sets

template <class Set>
const auto& membersOf(const Set& set) {
    if constexpr (std::is_same_v<Set, pset::PropertySetDef>)
        return set.getProperties();
    else
        return set.getQuantities();
}

void vCollectionAsk(const SchemaPropertySetDefinitions& sets, const Schema& schema,
                    const ifc::def::xml::SetDef& set) {
    vRequire(sets.getXmlSetFromName(set.getName()) == &set, "a set is found", set.getName());
    for (const auto& applicable : set.getApplicableClasses()) {
        const auto* entity = Entity::pFrom(schema.pObjectFromName(applicable.getClassName()));
        // The class must be written as the entity is.
        if (!entity || entity->getName() != applicable.getClassName())
            continue;
        const auto found = sets.getXmlSetsAllToEntity(*entity, true);
        vRequire(std::find(found.begin(), found.end(), &set) != found.end(), "a set is found by its class",
                 applicable.getClassName());
    }
}

/// Reads, checks, writes and collects the set, and asks for it.
template <class Set>
void vSetAsk(const kiv::xml::Element& root, const Schema& schema) {
    ifc::def::xml::XmlSetErrors errors;
    auto set = std::make_unique<Set>(root, errors);
    const auto& kept = *set;
    for (const auto& member : membersOf(kept)) {
        member.checkForErrors(schema, errors);
        vRequire(member.getConcept() == kept.getName() + "." + member.getName(), "a member has its concept",
                 member.getName());
    }
    XmlTarget target("Sets");
    kept.exportDef(target.root(), nullptr);
    XmlFromText(target.sText());
    SchemaPropertySetDefinitions sets;
    if (sets.xmlSetAdd(schema, std::move(set), errors)) {
        vCollectionAsk(sets, schema, kept);
        for (const auto& member : membersOf(kept))
            vRequire(sets.getXmlDefFromIfd(member.getIfdGuid()) != nullptr, "a member is found by its GUID",
                     member.getName());
    }
    ifc::def::xml::XmlSetsErrors report;
    const bool isEmpty = errors.getRecords().empty();
    report.sets.insert(std::move(errors));
    vRequire(report.getFormattedErrors().empty() == isEmpty, "records are reported", "");
}

// ---- Configurations

void vLinksAsk(const Entity& entity) {
    const auto isKnown = [](const auto* record) {
        return !record || record->getRepresentation() <= xmlschema::ExpAttribute::DoubleTag;
    };
    for (const auto& attribute : entity.getAttributes())
        vRequire(isKnown(attribute.pXmlAttribute()), "a record has a representation", attribute.getName());
    for (const auto& attribute : entity.getAttributesInverse())
        vRequire(isKnown(attribute.pXmlAttribute()), "a record has a representation", attribute.getName());
}

} // namespace

Reading::Reading(std::string schemaText) :
    schemaText_(std::move(schemaText)), schema_(schemaPsetFromWholeText(schemaText_)) {}

Reading::~Reading() = default;

std::string Reading::sSchemaFault(const std::string& text, bool whole) const {
    return sFaultOf([&] {
        try {
            if (const auto schema = schemaPsetFromWholeText(text))
                vSchemaAsk(*schema, whole);
        } catch (const kiv::exception&) {    // a list that is left open
        } catch (const std::out_of_range&) { // a number in a rule
        }
    });
}

std::string Reading::sSetFault(const std::string& text) const {
    return sFaultOf([&] {
        kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
        std::istringstream stream(text);
        const auto root = file.parse(stream, "", nullptr);
        vRequire(root ? file.pError() == nullptr : !file.pError()->reason.empty(),
                 "a document that is refused has a reason", "");
        if (!root)
            return;
        vSetAsk<pset::PropertySetDef>(*root, *schema_);
        vSetAsk<qto::QuantitySetDef>(*root, *schema_);
    });
}

std::string Reading::sConfigFault(const std::string& text) {
    constexpr int Many = 500;
    return sFaultOf([&] {
        if (configurations_++ % Many == 0)
            configured_ = schemaPsetFromWholeText(schemaText_);
        std::istringstream stream(text);
        configured_->vXmlSchemaConfigInit(stream);
        vRequire(configured_->pXmlSchemaConfig() != nullptr, "a configuration is kept", "");
        for (const auto* object : configured_->getObjects())
            if (const auto* entity = Entity::pFrom(object))
                vLinksAsk(*entity);
    });
}

std::string Reading::sFault(const std::string& text, bool whole) {
    auto fault = sSchemaFault(text, whole);
    if (fault.empty())
        fault = sSetFault(text);
    return fault.empty() ? sConfigFault(text) : fault;
}

} // namespace kiv::test
