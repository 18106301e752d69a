/// @file
/// The UNIQUE clause of an entity.
///
///     for (const auto& rule : entity.pUnique()->getRules()) ...
///
/// Ownership: belongs to its entity.
/// Threads:   read-only once the schema is built; readable from any number of threads.
/// Errors:    none; the names are not looked up.
#pragma once

#include "kiv/Base/Export.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kiv::ifc::def::schema {

class Entity;
class ReadLineHelper;

/// One uniqueness rule: its label and the attributes whose values together are unique, as written.
struct UniqueRule {
    std::string label;
    std::vector<std::string> attributeNames;
};

class KIV_EXPORT Unique {
public:
    /// Appends the rule whose attribute names are in the current line from byte offset `pos`, separated by
    /// commas.
    void vUniqueAdd(const Entity& entity, std::string&& label, ReadLineHelper& line, std::size_t pos);

    /// The rules in the order of the declaration.
    const std::vector<UniqueRule>& getRules() const { return rules_; }

private:
    std::vector<UniqueRule> rules_;
};

} // namespace kiv::ifc::def::schema
