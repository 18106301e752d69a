/// The sets of a collection by applicable class: the index behind the sets of an entity.
///
///     auto classes = SetsByClass::classesOf("PSET_A", set);
///     index.vReserve(classes.size());
///     index.vMerge(std::move(classes)); // cannot fail
///     const auto* sets = index.pFind(entity.getNameHash(), entity.getName());
///
/// Ownership: refers to the sets, to the texts of their classes and to their upper-cased names, which must outlive it.
/// Threads:   one thread while it is filled; then readable from any number of threads.
/// Errors:    a class that is not there is null.
#pragma once

#include "Format/Ifc/Def/IfcDefBase.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

namespace kiv::ifc::def {

class SetsByClass {
public:
    /// Sets by upper-cased name.
    using SetsByName = std::map<std::string_view, const xml::SetDef*>;
    /// An applicable class, by the hash that it keeps itself. The hash takes part in the comparison: that of an empty
    /// class is 0, so it is not the class of an entity without a name.
    struct ClassName {
        std::uint32_t hash;
        std::string_view name;

        friend auto operator<=>(const ClassName&, const ClassName&) = default;
    };
    using Classes = std::map<ClassName, SetsByName>;

    /// The classes of one set.
    static Classes classesOf(std::string_view upperName, const xml::SetDef& set);

    /// Makes place for so many more classes. When it throws, nothing has changed.
    void vReserve(std::size_t count);

    /// Adds the classes, for which there must be place.
    void vMerge(Classes&& classes) noexcept;

    /// The sets that name this class; null when there are none.
    const SetsByName* pFind(std::uint32_t hash, std::string_view name) const;

private:
    std::size_t bucketOf(std::uint32_t hash) const { return (hash ^ hash >> 16) & (buckets_.size() - 1); }

    // A power of two of buckets, or none, at least as many as classes. Names come from documents, which may choose them so
    // that they all meet in one bucket: so each is ordered, and searching it never means walking through it.
    std::vector<Classes> buckets_;
    std::size_t size_ = 0;
};

} // namespace kiv::ifc::def
