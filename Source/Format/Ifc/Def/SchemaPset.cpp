#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include "Format/Ifc/Def/Store/VisitedDefinitions.h"
#include "kiv/Format/Ifc/Def/IfcBudget.h"
#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"

#include <cstdint>
#include <utility>

namespace kiv::ifc::def {

namespace {

using SetList = std::vector<const xml::SetDef*>;

/// Whether a schema of this name searches the context.
bool isOfSchema(const SchemaPset::Context& context, std::string_view schemaName) {
    return !context.isStandard || context.name == schemaName;
}

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
    return isOfSchema(context, getName());
}

bool SchemaPset::checkContext(const Context& context, ContextFilter filter) const {
    return checkContextDefault(context) && (!filter || filter(context));
}

/// Calls `visit` with each context that is searched and its collection, until it returns true.
template <class Visit>
void SchemaPset::vSearch(const ContextFilter& filter, Visit&& visit) const {
    if (filter) {
        vSearchWithCallbacks(filter, visit);
        return;
    }
    for (const auto& [context, definitions] :
         SchemaContextAndPropertySetDefinitions::instance().getContexts()) {
        if (checkContextDefault(context) && visit(context, *definitions))
            return;
    }
}

/// The same where a host's code runs between the contexts. It may change the registry and let go of this
/// schema, so nothing is kept from one context to the next but copies.
template <class Visit>
void SchemaPset::vSearchWithCallbacks(const ContextFilter& filter, Visit&& visit) const {
    const std::string schemaName(getName());
    const auto& contexts = SchemaContextAndPropertySetDefinitions::instance().getContexts();
    for (auto next = contexts.begin(); next != contexts.end();) {
        const Context context = next->first;
        if (isOfSchema(context, schemaName) && (!filter || filter(context))) {
            // Looked up, as the filter may have removed it.
            const auto entry = contexts.find(context);
            if (entry != contexts.end() && visit(context, *entry->second))
                return;
        }
        next = contexts.upper_bound(context);
    }
}

void SchemaPset::forEachDefinition(Visitor visitor, ContextFilter filter) const {
    vSearchWithCallbacks(filter,
                         [&](const Context& context, const SchemaPropertySetDefinitions& definitions) {
                             const VisitedDefinitions visited(definitions);
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
