/// @file
/// The sets that apply to an entity, with their members, as a section of its page: those that name the
/// entity, then those of its supertypes, each by predefined type.
///
///     EntitySetParts parts(model);
///     for (const auto* entity : model.getEntities())
///         vEntitySetsWrite(model, *entity, parts, html);
///
/// Ownership: refers to the model, which must outlive it.
/// Threads:   one thread.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Html.h"
#include "kivifc/Site/SetMembers.h"
#include "kivifc/Site/SiteModel.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>

namespace kiv::kivifc::site {

/// Of the definition of a set, in bytes; the page of the set has all of it.
inline constexpr std::size_t SetDefinitionMax = 300;

/// Each set as the pages of entities show it, written once: it is there again on the page of each entity
/// below those that it names, and so most of what a site takes on disk.
class EntitySetParts {
public:
    struct Part {
        /// What is within its `details`.
        Html html;
        /// Of members.
        std::size_t rows;
    };

    explicit EntitySetParts(const SiteModel& model);

    const Part& of(const SiteSet& set, MembersDetail detail);

    /// The languages that names and definitions are translated into, with blanks between; of very many, some.
    const std::string& getLanguages() const { return languages_; }

private:
    const SiteModel& model_;
    std::string languages_;
    std::map<std::pair<const SiteSet*, MembersDetail>, Part> parts_;
};

/// Nothing when no set applies.
void vEntitySetsWrite(const SiteModel& model, const ifc::def::schema::Entity& entity, EntitySetParts& parts,
                      Html& html);

} // namespace kiv::kivifc::site
