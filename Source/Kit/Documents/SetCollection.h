/// @file
/// The sets of many documents as one collection, with what could not be used.
///
///     auto sets = setCollectionRead(*schema, setPathsCollect({"Sets"}).documents);
///     for (const auto& problem : sets.problems)
///         vShow(problem.path, problem.reason);
///     registry.addPropertySets({"office", false}, std::move(sets.definitions));
///
/// Ownership: the collection owns its sets; `paths` refers to them.
/// Threads:   several collections may be read on several threads.
/// Errors:    what cannot be read, is refused or has a name that is taken is among the problems, and the rest
///            is used. std::bad_alloc.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"
#include "kiv/Kit/Documents/ReadFailure.h"
#include "kiv/Kit/Documents/ReadOptions.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace kiv::ifc::def::schema {
class Schema;
}

namespace kiv::kit {

/// A document whose set is not in the collection.
struct CollectionProblem {
    std::string path;
    /// A sentence without a full stop.
    std::string reason;
    /// Why there is no set; absent when there is one and it was left out: refused by the schema, or of a name
    /// that an earlier document has.
    std::optional<ReadFailure> failure;
};

struct SetCollection {
    ifc::def::SchemaPropertySetDefinitions definitions;
    /// The document of each set in it.
    std::unordered_map<const ifc::def::xml::SetDef*, std::string> paths;
    /// In the order of the documents.
    std::vector<CollectionProblem> problems;
};

/// Reads the documents in their order and checks their sets.
KIV_EXPORT SetCollection setCollectionRead(const ifc::def::schema::Schema& schema,
                                           const std::vector<std::string>& documents,
                                           const ReadOptions& options = {});

struct SetDocument;

/// Adds the set of a document that was read and not yet checked.
KIV_EXPORT void vSetAdd(SetCollection& collection, const ifc::def::schema::Schema& schema,
                        SetDocument document);

} // namespace kiv::kit
