/// @file
/// The files that every site has: style, programs, licences. They are files of this repository, which the
/// build puts into the program.
///
///     for (const auto& asset : getAssets())
///         folder.vWrite(asset);
///
/// Ownership: they live as long as the process.
/// Threads:   any number of threads.
/// Errors:    none.
#pragma once

#include <span>
#include <string_view>

namespace kiv::kivifc::site {

struct Asset {
    /// "site.css".
    std::string_view name;
    std::string_view bytes;
};

/// Ordered by name.
std::span<const Asset> getAssets();

} // namespace kiv::kivifc::site
