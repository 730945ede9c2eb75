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

} // namespace kvr_test
