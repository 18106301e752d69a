/// What tests of the least host ask of it besides.
///
///     EXPECT_EQ(leastReports(), std::vector<std::string>{"Entity not found"});
///
/// Threads: one.
#pragma once

#include <string>
#include <vector>

namespace kiv::test {

/// The messages of all reports up to now; a test clears them first.
std::vector<std::string>& leastReports();

} // namespace kiv::test
