/// Whether the tests were built with a sanitizer, under which times mean nothing and everything takes longer.
#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define KIV_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define KIV_SANITIZED 1
#endif
#endif
#ifndef KIV_SANITIZED
#define KIV_SANITIZED 0
#endif

namespace kiv::test {

inline constexpr bool isSanitized = KIV_SANITIZED != 0;

} // namespace kiv::test
