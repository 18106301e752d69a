/// @file
/// The sets of a collection by applicable class: what the sets of an entity are found by.
///
///     const auto classes = SetsByClass::classesOf(set);
///     index.vReserve("PSET_A", classes);  // all that can fail
///     index.vAdd("PSET_A", set, classes); // cannot
///     const auto* sets = index.pFind(entity.getNameHash(), entity.getName());
///
/// Ownership: refers to the sets, to the texts of their classes and to their upper-cased names, which must
///            outlive it.
/// Threads:   one thread while it is filled; then readable from any number of threads.
/// Errors:    std::bad_alloc from `classesOf` and `vReserve`. A class that is not there is null.
#pragma once

#include "Base/Arena.h"
#include "Base/BloomBits.h"
#include "Base/NameTable.h"
#include "Format/Ifc/Def/Store/OrderedSets.h"
#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace kiv::ifc::def {

class SetsByClass {
public:
    /// An applicable class, with the hash that it keeps itself.
    struct ClassName {
        std::uint32_t hash;
        std::string_view name;
    };

    /// The classes of one set, each once. An empty class is the name of no entity, not even of one without a
    /// name, and left out.
    static std::vector<ClassName> classesOf(const xml::SetDef& set);

    SetsByClass() = default;
    SetsByClass(SetsByClass&&) noexcept = default;
    SetsByClass& operator=(SetsByClass&& other) noexcept;
    ~SetsByClass() = default;

    /// Makes place for a set of this name that applies to these classes. When it throws, nothing that is
    /// found has changed.
    void vReserve(std::string_view upperName, const std::vector<ClassName>& classes);

    /// Adds a set, for which place was made last; none of this name must be there.
    void vAdd(std::string_view upperName, const xml::SetDef& set,
              const std::vector<ClassName>& classes) noexcept;

    /// The sets that name this class; null when there are none.
    const OrderedSets* pFind(std::uint32_t hash, std::string_view name) const;

private:
    struct Class {
        explicit Class(Arena& arena) : sets(arena) {}

        std::uint32_t hash = 0;
        OrderedSets sets;
    };

    void vFilterReserve(std::size_t classCount);
    ArenaPtr<Class> pMake();

    NameTable<Class> table_;
    // Holds the classes and their sets, so that they lie beside each other; null as long as there are none.
    std::unique_ptr<Arena> arena_;
    std::vector<ArenaPtr<Class>> classes_;
    // Made for classes that are about to be added.
    std::vector<ArenaPtr<Class>> prepared_;
    // Of the hashes of the classes: most entities are no class of any set, and this shows it soonest.
    BloomBits<std::vector<std::uint64_t>> filter_;
};

} // namespace kiv::ifc::def
