/// @file
/// One collection of set definitions that passed their check against one schema: the standard sets of a
/// release, or those of a host's file. The classes beside it register collections by context and search them
/// all.
///
///     SchemaPropertySetDefinitions sets;
///     if (!sets.xmlSetAdd(schema, std::move(set), errors))
///         refused(set, errors);
///     const auto* common = sets.getXmlSetFromName("pset_wallcommon");
///
/// Ownership: owns its sets; what it hands out lives as long as it does, also when it is moved.
/// Threads:   one thread while it is filled; then readable from any number of threads.
/// Errors:    what is not there is null or empty.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/IfcDefBase.h"
#include "kiv/Host/Id/KivId.h"

#include <memory>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {
class Entity;
class Schema;
} // namespace kiv::ifc::def::schema

namespace kiv::ifc::def::xml {
class XmlSetErrors;
}

namespace kiv::ifc::def {

class KIV_EXPORT SchemaPropertySetDefinitions {
public:
    SchemaPropertySetDefinitions();
    SchemaPropertySetDefinitions(SchemaPropertySetDefinitions&& other) noexcept;
    SchemaPropertySetDefinitions& operator=(SchemaPropertySetDefinitions&& other) noexcept;
    ~SchemaPropertySetDefinitions();

    /// Checks the set, which must not be null, against the schema and takes it. False only when the check
    /// failed; then the set stays with the caller and `errors` says why. A set whose name is present already,
    /// in whatever letter case, is checked all the same and then dropped: that is true, and no error. When
    /// memory runs out the collection is as it was and the set still with the caller; `errors` may hold
    /// records of the check.
    bool xmlSetAdd(const schema::Schema& schema, std::unique_ptr<xml::SetDef>&& set,
                   xml::XmlSetErrors& errors);

    /// The set of this name, in any letter case (ASCII); null when there is none.
    const xml::SetDef* getXmlSetFromName(std::string_view name) const;

    /// The same for a name that is upper-case already; in mixed case it finds nothing.
    const xml::SetDef* getXmlSetFromNameUpper(std::string_view upperName) const;

    /// The property or quantity with this GUID, the one added first of several; null when there is none. The
    /// null GUID finds the first one without a GUID.
    const xml::Def* getXmlDefFromIfd(const kiv::Guid& guid) const;

    /// All sets, by upper-cased name.
    std::vector<const xml::SetDef*> getXmlSets() const;

    /// The sets that name this very entity among their applicable classes, by upper-cased name; with
    /// `includeUnrestricted` those without applicable classes too. Cost: the length of the answer.
    std::vector<const xml::SetDef*> getXmlSetsToEntity(const schema::Entity& entity,
                                                       bool includeUnrestricted) const;

    /// The same for the entity and all above it, from the topmost supertype down. Unrestricted sets come with
    /// the topmost; a set that names several of the entities is there several times.
    std::vector<const xml::SetDef*> getXmlSetsAllToEntity(const schema::Entity& entity,
                                                          bool includeUnrestricted) const;

private:
    struct Index;

    // Null as long as no set was added, and after a move.
    std::unique_ptr<Index> index_;
};

} // namespace kiv::ifc::def
