/// Runs something on a thread that has little stack, as the threads of some hosts do.
///
///     onSmallStack([] { EXPECT_TRUE(schemaFromText(deep)); });
///
/// Errors: an exception that comes out of it fails the test.
#pragma once

#include <functional>

namespace kiv::test {

/// Returns when it is done.
void onSmallStack(const std::function<void()>& run);

} // namespace kiv::test
