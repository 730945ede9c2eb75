#pragma once

namespace kvr_test {

/// True if the tests run on Windows or on a substitute for it.
#if defined(_WIN32)
inline constexpr bool is_windows = true;
#else
inline constexpr bool is_windows = false;
#endif

} // namespace kvr_test
