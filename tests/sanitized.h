#pragma once

namespace kvr_test {

/// True in a build with sanitizers, in which the longest tests check fewer cases. Other builds check all of
/// them.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool is_sanitized = true;
#elif defined(__has_feature)
inline constexpr bool is_sanitized = __has_feature(address_sanitizer);
#else
inline constexpr bool is_sanitized = false;
#endif

/// The step of a long test through its cases. It is larger than one in a build for valgrind, where a test
/// takes dozens of times as long.
#if defined(KVR_TEST_FEWER_CASES)
inline constexpr int stride = 20;
#else
inline constexpr int stride = 1;
#endif

/// The number of generated cases: in such a build, fewer than @p all.
template <class Number>
constexpr Number fewer(Number all) {
    return (all + stride - 1) / stride;
}

} // namespace kvr_test
