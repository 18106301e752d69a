/// @file
/// The ids of the rows of one page, each given out once. The address of a row is made of it, so it stays the
/// same from run to run: who writes the page, the search index and other pages ask for the ids of a page in
/// one order, what the page itself declares first.
///
///     RowIds ids;
///     html << "<tr" << attribute("id", ids.take("Medium").getText()) << ">"; // Medium
///     html << "<tr" << attribute("id", ids.take("Medium").getText()) << ">"; // Medium~~2
///
/// Ownership: ids are values.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Address.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace kiv::kivifc::site {

class RowIds {
public:
    /// That of the name; for a name that is there again the same with its number.
    RowId take(std::string_view name);

private:
    // By the id of the first one.
    std::unordered_map<std::string, std::size_t> counts_;
};

} // namespace kiv::kivifc::site
