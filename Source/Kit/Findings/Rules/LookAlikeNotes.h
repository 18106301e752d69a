/// @file
/// Says of names that nobody knows which of their characters are not what they look like.
///
/// Private to the kit.
///
///     vLookAlikesExplain(run); // character 5 is U+0430, a letter of Cyrillic that looks like "a"
///
/// Ownership: none.
/// Threads:   each run is used by one thread.
/// Errors:    std::bad_alloc.
#pragma once

namespace kiv::kit {

class RuleRun;

/// Adds notes to the findings of the other families, which come first.
void vLookAlikesExplain(RuleRun& run);

} // namespace kiv::kit
