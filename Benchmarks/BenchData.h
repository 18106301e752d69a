/// What the benchmarks run on, read into memory before anything is timed: the real data that KIV_TEST_DATA names, else
/// the sample that ships with us.
#pragma once

#include "Format/Ifc/Def/Schema/IfcSchema.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace kiv::bench {

/// The text of the schema; read once.
const std::string& schemaText();

/// The texts of the set documents, ordered by path; read once.
const std::vector<std::string>& setTexts();

/// All of them together, in bytes.
std::size_t setBytes();

/// Reads the schema from its text; ends the program when there is none in it.
std::unique_ptr<ifc::def::schema::Schema> loadSchema();

} // namespace kiv::bench
