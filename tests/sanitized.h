#pragma once

namespace kvr_test {

/// True in a build with sanitizers, where the longest tests look at fewer cases: what they compare is all
/// looked at in the other build.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool is_sanitized = true;
#elif defined(__has_feature)
inline constexpr bool is_sanitized = __has_feature(address_sanitizer);
#else
inline constexpr bool is_sanitized = false;
#endif

/// A test that takes long goes by so many through its cases: more than by one in a build for valgrind, where
/// it takes dozens of times as long...
#if defined(KVR_TEST_FEWER_CASES)
inline constexpr int stride = 20;
#else
inline constexpr int stride = 1;
#endif

/// ...or, where it makes them up, through so many instead of @p all.
template <class Number>
constexpr Number fewer(Number all) {
    return (all + stride - 1) / stride;
}

} // namespace kvr_test
