/// @file
/// The order in which the objects of a schema are resolved, and so that of the reports about them: by the
/// hash of the upper-cased name, its length, and its bytes.
///
///     const bool isEarlier = isResolvedBefore({hash, name}, {otherHash, otherName});
///
/// Ownership: refers to the names.
/// Threads:   a function without state.
/// Errors:    none.
#pragma once

#include "Base/Ascii.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace kiv::ifc::def::schema {

struct ResolutionKey {
    /// Of the upper-cased name.
    std::uint32_t hash;
    /// In any letter case.
    std::string_view name;
};

/// False for two keys of one name.
inline bool isResolvedBefore(const ResolutionKey& left, const ResolutionKey& right) {
    if (left.hash != right.hash)
        return left.hash < right.hash;
    if (left.name.size() != right.name.size())
        return left.name.size() < right.name.size();
    const auto upperByte = [](char byte) { return static_cast<unsigned char>(ascii::getUpper(byte)); };
    return std::ranges::lexicographical_compare(left.name, right.name, {}, upperByte, upperByte);
}

} // namespace kiv::ifc::def::schema
