#include "kiv/Format/Ifc/Def/SchemaContextAndPropertySetDefinitions.h"

#include "Format/Ifc/Def/Store/VisitedDefinitions.h"

#include <algorithm>
#include <utility>

namespace kiv::ifc::def {

SchemaContextAndPropertySetDefinitions::SchemaContextAndPropertySetDefinitions() = default;
SchemaContextAndPropertySetDefinitions::~SchemaContextAndPropertySetDefinitions() = default;

SchemaContextAndPropertySetDefinitions& SchemaContextAndPropertySetDefinitions::instance() {
    static SchemaContextAndPropertySetDefinitions registry;
    return registry;
}

void SchemaContextAndPropertySetDefinitions::addPropertySets(SchemaPropertySetDefinitionsContext&& context,
                                                             SchemaPropertySetDefinitions&& definitions) {
    // The definitions are moved when nothing can fail any more, so that they are never lost.
    auto owned = std::make_shared<SchemaPropertySetDefinitions>();
    const auto [entry, isNew] = contexts_.try_emplace(std::move(context), nullptr);
    *owned = std::move(definitions);
    if (isNew)
        entry->second = std::move(owned);
}

void SchemaContextAndPropertySetDefinitions::removePropertySets(const std::string& name) {
    const auto found = std::find_if(contexts_.begin(), contexts_.end(),
                                    [&](const auto& entry) { return entry.first.name == name; });
    if (found == contexts_.end())
        return;
    VisitedDefinitions::vKeep(found->second);
    contexts_.erase(found);
}

const SchemaPropertySetDefinitions* SchemaContextAndPropertySetDefinitions::getPropertySetsFromContext(
    const SchemaPropertySetDefinitionsContext& context) const {
    const auto found = contexts_.find(context);
    return found == contexts_.end() ? nullptr : found->second.get();
}

void SchemaContextAndPropertySetDefinitions::clear() {
    for (const auto& entry : contexts_)
        VisitedDefinitions::vKeep(entry.second);
    contexts_.clear();
}

void SchemaContextAndPropertySetDefinitions::clear(const SchemaPropertySetDefinitionsContext& context) {
    const auto found = contexts_.find(context);
    if (found == contexts_.end())
        return;
    VisitedDefinitions::vKeep(found->second);
    contexts_.erase(found);
}

} // namespace kiv::ifc::def
