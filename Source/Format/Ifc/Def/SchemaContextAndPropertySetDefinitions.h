/// @file
/// The registry of all set-definition collections of the process, each under the context it came from.
///
///     auto& registry = SchemaContextAndPropertySetDefinitions::instance();
///     registry.addPropertySets({"IFC4", true}, std::move(standardSets));
///     registry.addPropertySets({"office.xml", false}, std::move(officeSets));
///
/// Ownership: owns the collections; what was found in one dies when its context is removed.
/// Threads:   made safely by whichever thread comes first; then, not to be changed while another thread
///            searches it.
/// Errors:    what is not there is null; removing what is not there does nothing.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"

#include <compare>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace kiv::ifc::def {

/// Where a collection came from.
struct SchemaPropertySetDefinitionsContext {
    /// For standard definitions the name of their schema, else any text that the host chooses.
    std::string name;
    /// True for the standard definitions of a schema.
    bool isStandard = false;

    friend bool operator==(const SchemaPropertySetDefinitionsContext&,
                           const SchemaPropertySetDefinitionsContext&) = default;
    /// Contexts that are not standard first, then by name: a search that stops at the first hit prefers a
    /// host's own definitions.
    friend std::strong_ordering operator<=>(const SchemaPropertySetDefinitionsContext& left,
                                            const SchemaPropertySetDefinitionsContext& right) {
        if (left.isStandard != right.isStandard)
            return left.isStandard <=> right.isStandard;
        return left.name <=> right.name;
    }
};

/// Says whether a context is to be searched; an empty one accepts all.
using SchemaPropertySetDefinitionsFilter = std::function<bool(const SchemaPropertySetDefinitionsContext&)>;

class KIV_EXPORT SchemaContextAndPropertySetDefinitions {
public:
    /// The registry alone owns the collections, but for the one that a visitor of
    /// `SchemaPset::forEachDefinition` is looking at, which lives until it returns.
    using Contexts =
        std::map<SchemaPropertySetDefinitionsContext, std::shared_ptr<const SchemaPropertySetDefinitions>>;

    /// The registry of the process; empty at first, destroyed at its end.
    static SchemaContextAndPropertySetDefinitions& instance();

    SchemaContextAndPropertySetDefinitions(const SchemaContextAndPropertySetDefinitions&) = delete;
    SchemaContextAndPropertySetDefinitions& operator=(const SchemaContextAndPropertySetDefinitions&) = delete;

    /// Registers a collection. A context that is registered already keeps its collection, and the new one is
    /// destroyed; `clear` it first to replace it. When memory runs out, nothing is registered and both stay
    /// with the caller.
    void addPropertySets(SchemaPropertySetDefinitionsContext&& context,
                         SchemaPropertySetDefinitions&& definitions);

    /// Removes the first context of this name, standard or not; one of a host comes before a standard one.
    void removePropertySets(const std::string& name);

    /// The collection of exactly this context; null when it is not registered.
    const SchemaPropertySetDefinitions*
    getPropertySetsFromContext(const SchemaPropertySetDefinitionsContext& context) const;

    /// Removes all contexts.
    void clear();
    /// Removes exactly this context.
    void clear(const SchemaPropertySetDefinitionsContext& context);

    /// All contexts in the order in which they are searched.
    const Contexts& getContexts() const { return contexts_; }

private:
    SchemaContextAndPropertySetDefinitions();
    ~SchemaContextAndPropertySetDefinitions();

    Contexts contexts_;
};

} // namespace kiv::ifc::def
