/// @file
/// The rules of a WHERE clause, each once: a clause that was resolved again has its rules again.
///
///     for (const auto* rule : distinctRules(type.pWhere()))
///         use(rule->label);
///
/// Ownership: the rules belong to the clause.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"

#include <unordered_set>
#include <vector>

namespace kiv::kivifc::site {

/// None for null.
inline std::vector<const ifc::def::schema::ParsedRule*> distinctRules(const ifc::def::schema::Where* where) {
    std::vector<const ifc::def::schema::ParsedRule*> rules;
    if (!where)
        return rules;
    std::unordered_set<const ifc::def::schema::ParsedRule*> known;
    for (const auto& rule : where->getRules()) {
        // All that follow have been seen as well.
        if (!known.insert(&rule).second)
            break;
        rules.push_back(&rule);
    }
    return rules;
}

} // namespace kiv::kivifc::site
