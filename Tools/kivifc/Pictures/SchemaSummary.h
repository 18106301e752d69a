/// @file
/// What a schema holds, in numbers.
///
///     output.vWrite(sSchemaSummary(file, InheritanceTree(*file.schema), false));
///
/// Ownership: numbers and texts, which refer to nothing.
/// Threads:   free functions without state.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kivifc/Documents/SchemaFile.h"
#include "kivifc/Pictures/InheritanceTree.h"

#include <array>
#include <cstddef>
#include <string>

namespace kiv::kivifc {

struct SchemaCounts {
    std::size_t types = 0;
    std::size_t entities = 0;
    std::size_t entitiesAbstract = 0;
    std::size_t functions = 0;
    std::size_t rules = 0;
    std::size_t attributes = 0;
    std::size_t attributesOptional = 0;
    std::size_t attributesInverse = 0;
    std::size_t attributesDerived = 0;
    /// Those of the derived attributes that redeclare an attribute which was found.
    std::size_t attributesRedeclared = 0;
    std::size_t uniqueRules = 0;
    /// The parsed rules as the types and entities hold them.
    std::size_t whereRules = 0;
    /// The rules that ended the reading of their clause with a syntax error.
    std::size_t whereRulesFailed = 0;
    std::size_t roots = 0;
    std::size_t depth = 0;
    /// The data types that are not shared, by their kind.
    std::array<std::size_t, 12> dataTypes{};
};

SchemaCounts schemaCounts(const SchemaFile& file, const InheritanceTree& tree);

/// The numbers as lines of text; how to have the assertions listed is said when they are not.
std::string sSchemaSummary(const SchemaFile& file, const InheritanceTree& tree, bool areAssertionsListed);

} // namespace kiv::kivifc
