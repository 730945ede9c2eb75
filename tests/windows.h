#pragma once

namespace kvr_test {

/// The tests run on Windows, or on what stands in for it.
#if defined(_WIN32)
inline constexpr bool is_windows = true;
#else
inline constexpr bool is_windows = false;
#endif

} // namespace kvr_test
