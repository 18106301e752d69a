#include "Support/SmallStack.h"

#include "Support/Sanitized.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <pthread.h>

namespace kiv::test {

namespace {

// Sanitizers put room between all variables of a function, and so take several times as much.
constexpr std::size_t StackSize = (isSanitized ? 4 : 1) * std::size_t{512} * 1024;

void* pRun(void* run) {
    try {
        (*static_cast<const std::function<void()>*>(run))();
    } catch (const std::exception& exception) {
        ADD_FAILURE() << exception.what();
    }
    return nullptr;
}

} // namespace

void onSmallStack(const std::function<void()>& run) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, StackSize), 0);
    pthread_t thread{};
    auto copy = run;
    ASSERT_EQ(pthread_create(&thread, &attributes, pRun, &copy), 0);
    EXPECT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}

} // namespace kiv::test
