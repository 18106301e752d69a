/// @file
/// Which lines of a schema the library takes for which declaration.
///
///     const auto lines = schemaLines(text);
///     // lines.statements[n] is what became schema.getObjects()[n]
///
/// Private to the kit. The library reads a schema line by line: a line that contains a keyword begins a
/// declaration, which lasts up to a line that contains its end. Following it shows what it passes over, and
/// why.
///
/// Ownership: refers to the text, which must outlive it.
/// Threads:   any number of threads may read one.
/// Errors:    none but std::bad_alloc. Time grows with the text.
#pragma once

#include "kiv/Kit/Positions/ExpressPositions.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace kiv::kit {

/// One declaration as the library reads it. Offsets are in bytes, from the beginning of the text.
struct SchemaStatement {
    ExpressDeclarationKind kind = ExpressDeclarationKind::Type;
    /// The last line has the keyword that ends it, and does not merely end the text.
    bool isEnded = false;
    /// Of the keyword.
    std::size_t keyword = 0;
    std::string_view name;
    /// Of the first line, and after the line feed of the last.
    std::size_t begin = 0;
    std::size_t end = 0;
    /// After the line feed of the first line, and of the last line.
    std::size_t firstLineEnd = 0;
    std::size_t lastLine = 0;
};

struct SchemaLines {
    /// Of the line after the header of the last schema; npos when there is no header.
    std::size_t begin = std::string_view::npos;
    /// After the line with END_SCHEMA, or the end of the text.
    std::size_t end = 0;
    /// In the order of the text.
    std::vector<SchemaStatement> statements;
};

SchemaLines schemaLines(std::string_view text);

} // namespace kiv::kit
