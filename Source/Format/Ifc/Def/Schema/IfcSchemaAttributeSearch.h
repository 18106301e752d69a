/// @file
/// Finds attributes of entities and of their supertypes by name, as look-ups of `Entity` do, for many
/// questions one after the other.
///
///     AttributeSearch<Attribute> search;
///     const auto* name = search.pFind(wall, AttributeName("Name"));
///
/// Each question is a walk along the supertypes, which is what is cheapest in schemas as people write them.
/// When many steps were taken it goes on with a table, so that no schema makes thousands of questions cost
/// thousands of steps each.
///
/// Ownership: refers to entities and attributes, which must live as long as it.
/// Threads:   not thread-safe.
/// Errors:    what is not there is null.
#pragma once

#include "kiv/Base/WorkMeter.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttribute.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttributeInverse.h"

#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>

namespace kiv::ifc::def::schema {

/// After how many entities and attributes that were looked at a search makes a table. Real schemas take some
/// hundreds, their configurations a thousand.
inline constexpr std::size_t AttributeStepsMax = 1U << 14;

/// `Kind` is Attribute or AttributeInverse.
template <class Kind>
class AttributeSearch {
public:
    /// Explicit attributes are found by their names as written, inverse ones by their upper-cased names.
    using Key = std::conditional_t<std::is_same_v<Kind, Attribute>, AttributeName, std::string>;

    /// A meter hears of the memory of the table, and is asked for each step whether to go on; null for none.
    explicit AttributeSearch(std::size_t stepsMax = AttributeStepsMax, WorkMeter* meter = nullptr);
    ~AttributeSearch();
    AttributeSearch(const AttributeSearch&) = delete;
    AttributeSearch& operator=(const AttributeSearch&) = delete;

    /// The first attribute of this name in the entity, else in the nearest of its supertypes that has one;
    /// null when none has. The supertypes of the entity must all be resolved. Cost: once the table is made,
    /// the logarithm of the number of names; for each entity and attribute that is met the first time the
    /// same again.
    const Kind* pFind(const Entity& entity, const Key& key);

private:
    class Table;

    std::size_t stepsLeft_;
    WorkMeter* meter_;
    std::unique_ptr<Table> table_;
};

extern template class AttributeSearch<Attribute>;
extern template class AttributeSearch<AttributeInverse>;

} // namespace kiv::ifc::def::schema
