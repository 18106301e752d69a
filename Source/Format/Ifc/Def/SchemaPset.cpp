#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include "kiv/Format/Ifc/Def/IfcBudget.h"
#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"

#include <cstdint>
#include <utility>

namespace kiv::ifc::def {

namespace {

using SetList = std::vector<const xml::SetDef*>;

void vAppend(SetList& sets, SetList&& found) {
    if (sets.empty())
        sets = std::move(found);
    else
        sets.insert(sets.end(), found.begin(), found.end());
}

} // namespace

SchemaPset::SchemaPset(std::istream& stream, const std::string& headerLine, std::size_t schemaPos) :
    schema::Schema(stream, headerLine, schemaPos) {}

SchemaPset::SchemaPset(std::istream& stream, const std::string& headerLine, std::size_t schemaPos,
                       BudgetMeter& meter) :
    schema::Schema(stream, headerLine, schemaPos, meter) {}

SchemaPset::~SchemaPset() = default;

std::unique_ptr<SchemaPset> SchemaPset::pStepStreamRead(std::istream& stream) {
    std::unique_ptr<SchemaPset> result;
    schema::pStepStreamRead(stream, [&](std::istream& in, const std::string& header, std::size_t pos) {
        result = std::make_unique<SchemaPset>(in, header, pos);
        return result.get();
    });
    return result;
}

std::unique_ptr<SchemaPset> SchemaPset::pStepStreamRead(std::istream& stream, const Budget& budget) {
    BudgetMeter meter(budget);
    return pStepStreamRead(stream, meter);
}

std::unique_ptr<SchemaPset> SchemaPset::pStepStreamRead(std::istream& stream, BudgetMeter& meter) {
    std::unique_ptr<SchemaPset> result;
    std::uint64_t heldByResult = 0;
    const auto factory = [&](std::istream& in, const std::string& header, std::size_t pos) {
        const auto heldBefore = meter.getUsed(WorkMeter::Unit::HeldBytes);
        auto next = std::make_unique<SchemaPset>(in, header, pos, meter);
        result = std::move(next);
        meter.vMemoryGiveBack(heldByResult);
        heldByResult = meter.getUsed(WorkMeter::Unit::HeldBytes) + heldByResult - heldBefore;
        return result.get();
    };
    schema::pStepStreamRead(stream, factory, meter);
    return result;
}

const SchemaPropertySetDefinitions* SchemaPset::getStandardDefinitions() const {
    return getDefinitionsFromContext({std::string(getName()), true});
}

const SchemaPropertySetDefinitions* SchemaPset::getDefinitionsFromContext(const Context& context) const {
    return SchemaContextAndPropertySetDefinitions::instance().getPropertySetsFromContext(context);
}

bool SchemaPset::checkContextDefault(const Context& context) const {
    return !context.isStandard || context.name == getName();
}

bool SchemaPset::checkContext(const Context& context, ContextFilter filter) const {
    return isSearched(context, filter);
}

bool SchemaPset::isSearched(const Context& context, const ContextFilter& filter) const {
    return checkContextDefault(context) && (!filter || filter(context));
}

/// Calls `visit` with each context that is searched and its collection, until it returns true.
template <class Visit>
void SchemaPset::vSearch(const ContextFilter& filter, Visit&& visit) const {
    for (const auto& [context, definitions] :
         SchemaContextAndPropertySetDefinitions::instance().getContexts()) {
        if (isSearched(context, filter) && visit(context, *definitions))
            return;
    }
}

void SchemaPset::forEachDefinition(Visitor visitor, ContextFilter filter) const {
    vSearch(filter, [&](const Context& context, const SchemaPropertySetDefinitions& definitions) {
        visitor(context, definitions);
        return false;
    });
}

/// The first set that `find` finds in a collection.
template <class Find>
const xml::SetDef* SchemaPset::pSetFind(const ContextFilter& filter, Find find) const {
    const xml::SetDef* set = nullptr;
    vSearch(filter, [&](const Context&, const SchemaPropertySetDefinitions& definitions) {
        set = find(definitions);
        return set != nullptr;
    });
    return set;
}

const xml::SetDef* SchemaPset::pXmlSetFromNameUpper(std::string_view upperName, ContextFilter filter) const {
    return pSetFind(filter, [upperName](const SchemaPropertySetDefinitions& definitions) {
        return definitions.getXmlSetFromNameUpper(upperName);
    });
}

const xml::SetDef* SchemaPset::pXmlSetFromName(std::string_view name, ContextFilter filter) const {
    return pSetFind(filter, [name](const SchemaPropertySetDefinitions& definitions) {
        return definitions.getXmlSetFromName(name);
    });
}

const xml::Def* SchemaPset::pXmlDefFromIfd(const kiv::Guid& guid) const {
    const xml::Def* def = nullptr;
    vSearch({}, [&](const Context&, const SchemaPropertySetDefinitions& definitions) {
        def = definitions.getXmlDefFromIfd(guid);
        return def != nullptr;
    });
    return def;
}

std::vector<const xml::SetDef*> SchemaPset::getXmlSetsToEntity(const schema::Entity& entity,
                                                               bool includeUnrestricted,
                                                               ContextFilter filter) const {
    std::vector<const xml::SetDef*> sets;
    vSearch(filter, [&](const Context&, const SchemaPropertySetDefinitions& definitions) {
        vAppend(sets, definitions.getXmlSetsToEntity(entity, includeUnrestricted));
        return false;
    });
    return sets;
}

std::vector<const xml::SetDef*> SchemaPset::getXmlSetsAllToEntity(const schema::Entity& entity,
                                                                  bool includeUnrestricted,
                                                                  ContextFilter filter) const {
    std::vector<const xml::SetDef*> sets;
    vSearch(filter, [&](const Context&, const SchemaPropertySetDefinitions& definitions) {
        vAppend(sets, definitions.getXmlSetsAllToEntity(entity, includeUnrestricted));
        return false;
    });
    return sets;
}

const xmlschema::Config* SchemaPset::pXmlSchemaConfig() const {
    return xmlSchemaConfigs_.empty() ? nullptr : xmlSchemaConfigs_.back().get();
}

} // namespace kiv::ifc::def
