/// @file
/// The names of the loaded schema as rules speak of them: the nearest one, another release that has one.
///
/// Private to the kit.
///
///     RuleNames names(run);
///     names.vNearestNote(draft, "IfcWal", SchemaNames::Entities); // did you mean "IfcWall"?
///
/// Ownership: refers to the run and its schemas.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc.
#pragma once

#include "Kit/Findings/RuleRun.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv::kit {

enum class SchemaNames : std::uint8_t { Types, Entities };

class RuleNames {
public:
    /// Nearest names are looked for this often in one document: a document with more unknown names is not one
    /// with slips of the pen.
    static constexpr std::size_t maxSearches = 200;

    explicit RuleNames(const RuleRun& run) : run_(run) {}

    /// The schema's name, for messages.
    std::string sSchema() const { return std::string(run_.schema.getName()); }
    /// The first of the further releases that has such a name; null when none has.
    const OtherSchema* pOtherWith(std::string_view name) const;

    /// Whether nearest names are still looked for.
    bool boSearchLeft() const { return searches_ != maxSearches; }
    /// The nearest name in the schema; empty when none is near.
    std::string_view nearest(std::string_view name, SchemaNames kind);
    /// The nearest of those names; empty when none is near.
    std::string_view nearestOf(std::string_view name, const std::vector<std::string_view>& candidates);
    /// Adds it as a note, when there is one.
    void vNearestNote(FindingDraft& draft, std::string_view name, SchemaNames kind);

private:
    const std::vector<std::string_view>& namesOf(SchemaNames kind);

    const RuleRun& run_;
    std::size_t searches_ = 0;
    std::vector<std::string_view> types_;
    std::vector<std::string_view> entities_;
};

/// "an entity", "a defined type", "a function", "a rule".
std::string sKindOf(const ifc::def::schema::ObjectBase& object);

} // namespace kiv::kit
