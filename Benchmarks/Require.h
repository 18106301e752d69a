/// Ends a benchmark whose answers are wrong: a time means nothing then.
///
///     vRequire(schema != nullptr, "the text holds no schema");
#pragma once

#include <string_view>

namespace kiv::bench {

/// Does nothing when it holds; else prints what does not hold and ends the program with exit status 2.
void vRequire(bool holds, std::string_view what);

} // namespace kiv::bench
