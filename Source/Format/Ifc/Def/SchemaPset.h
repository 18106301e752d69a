/// @file
/// The object a host works with: a schema together with the set definitions that apply to it and, if the host
/// gives one, its IFC-XML configuration.
///
///     std::unique_ptr<SchemaPset> ifc(SchemaPset::pStepStreamRead(stream));
///     const auto* wall = schema::Entity::pFrom(ifc->pObjectFromName("IfcWall"));
///     for (const auto* set : ifc->getXmlSetsAllToEntity(*wall, true, {}))
///         std::cout << set->getName() << '\n';
///
/// It searches the registry's contexts in the registry's order: those of hosts first, then the standard one
/// that has the schema's own name. So a host's set hides a standard one of the same name.
///
/// Ownership: owns its schema objects and every configuration it was given; the definitions belong to the
///            registry and live as long as their context is registered.
/// Threads:   as `Schema` and the registry: searches from any number of threads while neither is changed; not
///            while a configuration is read.
/// Errors:    what is not found is null or empty; what a filter or visitor throws is passed on.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/SchemaContextAndPropertySetDefinitions.h"
#include "kiv/Host/Id/KivId.h"

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::xmlschema {
class Config;
}

namespace kiv::ifc::def {

struct Budget;
class BudgetMeter;

class KIV_EXPORT SchemaPset : public schema::Schema {
public:
    using Context = SchemaPropertySetDefinitionsContext;
    using ContextFilter = SchemaPropertySetDefinitionsFilter;
    using Visitor = std::function<void(const Context&, const SchemaPropertySetDefinitions&)>;

    /// Reads the schema, as `schema::Schema` does.
    SchemaPset(std::istream& stream, const std::string& headerLine, std::size_t schemaPos);
    SchemaPset(std::istream& stream, const std::string& headerLine, std::size_t schemaPos,
               BudgetMeter& meter);
    ~SchemaPset() override;

    /// Reads the text of one schema; null when the stream holds none. Of several the last counts. Errors as
    /// `Schema`; a stream that is set to throw at its end always does, and then there is no schema.
    static std::unique_ptr<SchemaPset> pStepStreamRead(std::istream& stream);
    /// The same within a budget; throws `BudgetExceeded` beyond it, and then there is no schema.
    static std::unique_ptr<SchemaPset> pStepStreamRead(std::istream& stream, const Budget& budget);
    static std::unique_ptr<SchemaPset> pStepStreamRead(std::istream& stream, BudgetMeter& meter);

    /// The standard definitions of this schema; null when none are registered.
    const SchemaPropertySetDefinitions* getStandardDefinitions() const;
    /// The definitions of exactly this context, whatever schema they are made for; null when none are
    /// registered.
    const SchemaPropertySetDefinitions* getDefinitionsFromContext(const Context& context) const;

    /// True for every context of a host, and for the standard one of the schema's name.
    bool checkContextDefault(const Context& context) const;
    /// The same, narrowed by the filter.
    bool checkContext(const Context& context, ContextFilter filter) const;

    /// Calls the visitor for each context that is searched, in that order.
    ///
    /// A visitor, and the filter of any search, may change the registry on this thread: what it removes
    /// before its turn is not searched, what it adds is searched if its turn is still to come. A visitor may
    /// even remove the context it is called for, and let go of this schema; the context and the collection
    /// that it was handed live until it returns. The context is a copy that is gone then; the collection
    /// lives on as long as it is registered. No other thread may change the registry meanwhile.
    void forEachDefinition(Visitor visitor, ContextFilter filter) const;

    /// The first set of this name, which must be upper-case already; null when there is none.
    const xml::SetDef* pXmlSetFromNameUpper(std::string_view upperName, ContextFilter filter) const;
    /// The first set of this name, in any letter case (ASCII); null when there is none.
    const xml::SetDef* pXmlSetFromName(std::string_view name, ContextFilter filter) const;
    /// The first property or quantity with this GUID; null when there is none.
    const xml::Def* pXmlDefFromIfd(const kiv::Guid& guid) const;

    /// The sets of each context for this very entity, joined in the order of the search. A name that several
    /// contexts have is there several times.
    std::vector<const xml::SetDef*> getXmlSetsToEntity(const schema::Entity& entity, bool includeUnrestricted,
                                                       ContextFilter filter) const;
    /// The same for the entity and all above it.
    std::vector<const xml::SetDef*>
    getXmlSetsAllToEntity(const schema::Entity& entity, bool includeUnrestricted, ContextFilter filter) const;

    /// Reads an IFC-XML configuration (ISO 10303-28) and links it to the attributes. A later one takes the
    /// place of an earlier one; attributes that only the earlier one knows stay linked to it, so it is kept
    /// too.
    void vXmlSchemaConfigInit(std::istream& stream);
    /// The same within a budget; throws `BudgetExceeded` beyond it, and then nothing has changed.
    void vXmlSchemaConfigInit(std::istream& stream, const Budget& budget);
    void vXmlSchemaConfigInit(std::istream& stream, BudgetMeter& meter);
    /// The configuration read last; null when none was.
    const xmlschema::Config* pXmlSchemaConfig() const;

private:
    template <class Visit>
    void vSearch(const ContextFilter& filter, Visit&& visit) const;
    template <class Visit>
    void vSearchWithCallbacks(const ContextFilter& filter, Visit&& visit) const;
    template <class Find>
    const xml::SetDef* pSetFind(const ContextFilter& filter, Find find) const;

    // Shared pointers destroy what they were made for without this class knowing it: configurations know the
    // schema and not the other way round.
    std::vector<std::shared_ptr<const xmlschema::Config>> xmlSchemaConfigs_;
};

} // namespace kiv::ifc::def
