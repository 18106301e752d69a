/// @file
/// Keywords of EXPRESS that somebody has misspelt.
///
///     misspeltKeyword("ENTITIY", keywords) // "ENTITY"
///
/// Private to the kit.
///
/// Ownership: the result is one of the keywords.
/// Threads:   a free function without state.
/// Errors:    std::bad_alloc.
#pragma once

#include <span>
#include <string_view>

namespace kiv::kit {

/// The keyword that a word in capitals was to be, at most two letters away; empty when it is like none of
/// them, or is one of them.
std::string_view misspeltKeyword(std::string_view word, std::span<const std::string_view> keywords);

} // namespace kiv::kit
