/// @file
/// The attributes of an entity as sections of its page: explicit ones with those that it inherits, inverse
/// and derived ones, UNIQUE.
///
///     EntityAttributes attributes(model, wall, ids, html);
///     attributes.vWrite();
///
/// What the entity itself declares has its ids at once, what it inherits when it is written.
///
/// Ownership: refers to the model and the page, which must outlive it.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Elements.h"
#include "kivifc/Site/RowIds.h"
#include "kivifc/Site/SiteModel.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv::kivifc::site {

/// Of a line of supertypes, the nearest; what is above them is left to their pages, so that a long line does
/// not make each page of it as long.
inline constexpr std::size_t LineMax = 32;

/// The entity and its supertypes, the nearest first.
std::vector<const ifc::def::schema::Entity*> nearestOf(const ifc::def::schema::Entity& entity);

class EntityAttributes {
public:
    EntityAttributes(const SiteModel& model, const ifc::def::schema::Entity& entity, RowIds& ids, Html& html);

    void vWrite();

private:
    using Entity = ifc::def::schema::Entity;
    using Attribute = ifc::def::schema::Attribute;
    using AttributeInverse = ifc::def::schema::AttributeInverse;
    using AttributeBase = ifc::def::schema::AttributeBase;

    /// How a section is headed.
    struct Kind {
        Markup id;
        Markup title;
        Markup column;
        /// Which attributes are counted at the supertype that declares them first; null for none.
        std::size_t DeclaredAgain::*again = nullptr;
    };

    std::optional<Redeclaration> nearestRedeclarationOf(const Attribute& attribute) const;
    void vOwnIdsTake();
    void vExplicitWrite();
    void vInverseWrite();
    void vDerivedWrite();
    void vUniqueWrite();
    template <typename ItemsOf, typename NameOf, typename WriteCell>
    void vKindWrite(const Kind& kind, const ItemsOf& itemsOf, const NameOf& nameOf,
                    const WriteCell& vCellWrite);
    void vRowBegin(const Entity& declaring, const void* item, std::string_view name);
    void vGroupBegin(const Entity& declaring);
    void vStateWrite(const Attribute& attribute);
    void vRedeclarationsBelowWrite(const Attribute& attribute);

    const SiteModel& model_;
    const Entity& entity_;
    RowIds& ids_;
    Html& html_;
    std::vector<const Entity*> line_;
    // Those of the line that declare something again, the nearest first.
    std::vector<const Entity*> redeclaring_;
    // Of what the entity itself declares, by its place in memory: what it inherits does not take them away.
    std::unordered_map<const void*, RowId> ownIds_;
};

} // namespace kiv::kivifc::site
