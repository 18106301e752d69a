/// @file
/// The anchors of the rows of one page: each is there once, also where a document gives one name twice.
///
///     Anchors anchors;
///     anchors.sTake("Medium"); // "Medium"
///     anchors.sTake("Medium"); // "Medium~2"
///
/// Pages and the search ask in the same order, which is that of `vEntityPagesWrite` and the like: own
/// explicit attributes, derived ones, inverse ones, UNIQUE, WHERE; items, WHERE; members in document order,
/// each before those inside it.
///
/// Ownership: keeps copies.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Address.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace kiv::kivifc::site {

class Anchors {
public:
    /// The anchor of the next row of this name.
    std::string sTake(std::string_view name) {
        auto anchor = sAnchor(name);
        const auto count = ++counts_[anchor];
        // No other name has it: what follows "~" in anchors of names is nothing or 16 digits.
        return count == 1 ? anchor : anchor + '~' + std::to_string(count);
    }

private:
    std::unordered_map<std::string, int> counts_;
};

} // namespace kiv::kivifc::site
