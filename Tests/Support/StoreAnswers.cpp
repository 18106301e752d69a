#include "Support/StoreAnswers.h"

#include "kiv/Format/Ifc/Def/PropertyNameSearcher.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def;
namespace defs = ifc::def::xml;

std::string sLower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte;
    });
    return lower;
}

std::vector<const defs::Def*> membersOf(const defs::SetDef& set) {
    std::vector<const defs::Def*> members;
    const auto append = [&members](const auto& defs) {
        for (const auto& def : defs)
            members.push_back(&def);
    };
    if (const auto* const properties = dynamic_cast<const pset::PropertySetDef*>(&set))
        append(properties->getProperties());
    if (const auto* const quantities = dynamic_cast<const qto::QuantitySetDef*>(&set))
        append(quantities->getQuantities());
    return members;
}

/// One line an answer.
class Answers {
public:
    explicit Answers(const SchemaPset& schema) : schema_(schema) {}

    std::string sText() && { return std::move(text_); }

    void vSchemaAsk() {
        for (const auto* const object : schema_.getObjects()) {
            const auto* const found = schema_.pObjectFromName(sLower(object->getName()));
            vLine("object", found ? found->getName() : "none");
            if (const auto* const entity = schema::Entity::pFrom(object))
                vEntityAsk(*entity);
        }
    }

    void vRegistryAsk() {
        vLine("standard", schema_.getStandardDefinitions() ? "there" : "none");
        schema_.forEachDefinition(
            [this](const SchemaPset::Context& context, const SchemaPropertySetDefinitions& sets) {
                vLine("context", context.name);
                vLine("same", schema_.getDefinitionsFromContext(context) == &sets ? "yes" : "no");
                for (const auto* const set : sets.getXmlSets())
                    vSetAsk(*set);
            },
            {});
    }

private:
    void vLine(std::string_view question, std::string_view answer) {
        text_.append(question).append(": ").append(answer).append(1, '\n');
    }

    void vSetsLine(std::string_view question, const std::vector<const defs::SetDef*>& sets) {
        std::string names;
        for (const auto* const set : sets)
            names += set->getName() + ' ';
        vLine(question, names);
    }

    void vTypeAsk(const std::string& question) {
        vLine(question, ifc::findPropertyTypeName(question, schema_).value_or("no type"));
    }

    void vEntityAsk(const schema::Entity& entity) {
        const std::string name(entity.getName());
        for (const auto& attribute : entity.getAttributes()) {
            const std::string attributeName(attribute.getName());
            const auto* const found = schema_.pAttributeGet(sLower(name), sLower(attributeName));
            vLine("attribute", found ? found->getName() : "none");
            vLine("of that name", std::to_string(schema_.attributesGet(attributeName).size()));
            vLine("inherited",
                  entity.pAttributeFromName(schema::AttributeName(attributeName), true) == &attribute
                      ? "own"
                      : "other");
            const auto* const record = attribute.pXmlAttribute();
            vLine("record", record ? std::to_string(static_cast<int>(record->getRepresentation())) : "none");
            vTypeAsk(name + '.' + attributeName);
        }
        vSetsLine("sets", schema_.getXmlSetsToEntity(entity, true, {}));
        vSetsLine("all sets", schema_.getXmlSetsAllToEntity(entity, true, {}));
    }

    void vSetAsk(const defs::SetDef& set) {
        const auto* const found = schema_.pXmlSetFromName(sLower(set.getName()), {});
        vLine("set", found ? found->getName() : "none");
        for (const auto* const member : membersOf(set)) {
            const auto* const byGuid = schema_.pXmlDefFromIfd(member->getIfdGuid());
            vLine(member->getIfdGuid().toString(false), byGuid ? byGuid->getConcept() : "none");
            vLine("entity", member->getEntityName());
            vTypeAsk(member->getConcept());
        }
    }

    const SchemaPset& schema_;
    std::string text_;
};

} // namespace

std::string sCollectionAnswers(const schema::Schema& schema, const SchemaPropertySetDefinitions& sets) {
    std::string text;
    for (const auto* const set : sets.getXmlSets()) {
        const auto* const found = sets.getXmlSetFromName(sLower(set->getName()));
        text += (found == set ? "set " : "other set ") + set->getName() + '\n';
        for (const auto* const member : membersOf(*set)) {
            const auto* const byGuid = sets.getXmlDefFromIfd(member->getIfdGuid());
            text += (byGuid ? byGuid->getConcept() : "none") + '\n';
        }
    }
    for (const auto* const object : schema.getObjects()) {
        if (const auto* const entity = schema::Entity::pFrom(object)) {
            text.append(entity->getName()).append(1, ':');
            for (const auto* const set : sets.getXmlSetsAllToEntity(*entity, true))
                text += ' ' + set->getName();
            text += '\n';
        }
    }
    return text;
}

std::string sAnswers(const SchemaPset& schema) {
    Answers answers(schema);
    answers.vSchemaAsk();
    answers.vRegistryAsk();
    return std::move(answers).sText();
}

} // namespace kiv::test
