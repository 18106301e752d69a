/// @file
/// The entities of a schema as the trees that their SUBTYPE OF clauses make.
///
///     const InheritanceTree tree(schema);
///     for (const auto* root : tree.getRoots())
///         for (const auto* child : tree.getChildren(*root))
///             ...
///
/// A supertype's own list of subtypes may be incomplete or left out; that is why children are found by their
/// supertype.
///
/// Ownership: refers to the schema, which must outlive it.
/// Threads:   read-only once made.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace kiv::kivifc {

class InheritanceTree {
public:
    using Entities = std::vector<const ifc::def::schema::Entity*>;

    explicit InheritanceTree(const ifc::def::schema::Schema& schema);

    /// The entities without a supertype, ordered by name.
    const Entities& getRoots() const { return roots_; }

    /// The direct subtypes, ordered by name.
    const Entities& getChildren(const ifc::def::schema::Entity& entity) const;

    /// The entities on the longest way from a root to a leaf; 0 without entities.
    std::size_t getDepth() const;

private:
    Entities roots_;
    std::unordered_map<const ifc::def::schema::Entity*, Entities> children_;
    Entities none_;
};

} // namespace kiv::kivifc
