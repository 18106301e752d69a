/// What is measured on: the real data that KIV_TEST_DATA names, else the sample that ships with us, scaled up
/// to about the same size. All of it is in memory before anything is timed.
#pragma once

#include "Scaling.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kiv::bench {

struct Input {
    /// What it is, for a reader of the figures.
    std::string description;
    std::string schemaText;
    /// The set documents, ordered by path.
    std::vector<std::string> setTexts;

    std::size_t setBytes() const;
};

/// The real data when it is there, else 24 copies of the sample schema and 50 of its sets.
Input inputRead();

/// The sample that ships with us in that many copies.
Input sampleRead(std::size_t schemaCopies, std::size_t setCopies);

/// Copies of schema and sets.
struct InputCopies {
    explicit InputCopies(const Input& input, char mark = 'X') :
        schema(input.schemaText, mark), sets(input.setTexts, schema) {}

    SchemaCopies schema;
    SetCopies sets;
};

} // namespace kiv::bench
