/// @file
/// What a schema holds: the memory of its objects, the objects themselves, and the tables that look-ups ask.
///
/// Ownership: owns every object and data type of the schema.
/// Threads:   one thread while the schema is built; then readable from any number of threads.
/// Errors:    none.
#pragma once

#include "Base/Arena.h"
#include "Base/NameDirectory.h"
#include "Base/NameTable.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace kiv::ifc::def::schema {

struct Schema::Model {
    /// Small, as a text may hold thousands of schemas of a line each.
    static constexpr std::size_t FirstBlockSize = 1024;
    /// A hundredth of what a large schema takes.
    static constexpr std::size_t LargestBlockSize = std::size_t{1} << 13;

    Model() = default;
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;
    ~Model() {
        for (auto* const object : objectsAsRead)
            ArenaDelete()(object);
    }

    std::string name;
    // Declared in the reverse of the order in which they are destroyed after the objects: shared data types,
    // data types, and last the texts and trees of all of them.
    Arena arena{FirstBlockSize, LargestBlockSize};
    std::vector<ArenaPtr<DataTypeBase>> dataTypes;
    std::array<ArenaPtr<DataTypeBase>, 7> sharedTypes;
    // Owned.
    std::vector<ObjectBase*> objectsAsRead;
    std::vector<ObjectBase*> objectsByName;
    // By upper-cased name.
    NameTable<ObjectBase> objectTable;
    // Attributes of one name in the order in which their entities were resolved.
    NameDirectory<const Attribute> attributesDirectory;
};

} // namespace kiv::ifc::def::schema
