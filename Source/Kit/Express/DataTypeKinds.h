/// @file
/// The EXPRESS keywords of the kinds of data types.
///
///     DataTypeKeywords.at(dataTypeIndex(dataType)) // "STRING"
///
/// Ownership: the table lives as long as the process.
/// Threads:   any number of threads.
/// Errors:    none.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace kiv::kit {

/// By the number of the kind.
inline constexpr std::array<std::string_view, 12> DataTypeKeywords{
    "REAL",   "BOOLEAN",     "INTEGER", "NUMBER", "STRING", "LOGICAL",
    "BINARY", "ENUMERATION", "SELECT",  "ARRAY",  "LIST",   "SET"};

/// The number of the kind.
inline std::size_t dataTypeIndex(const ifc::def::schema::DataTypeBase& dataType) {
    return static_cast<std::size_t>(dataType.getDataTypeKind());
}

} // namespace kiv::kit
