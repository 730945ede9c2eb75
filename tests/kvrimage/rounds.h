#pragma once

#include <cstdint>

/// The number of rounds of a test of random data: a quarter of @p all if code is counted or checked, which
/// takes ten times as long, and twenty times @p all in a program for this purpose alone.
constexpr int rounds(int all) {
#ifdef KVR_SLOW_BUILD
    return (all + 3) / 4;
#elif defined(KVR_MANY_ROUNDS)
    return 20 * all;
#else
    return all;
#endif
}

/// Ends a test that sanitizers make too slow; builds without them run it.
#ifdef KVR_SANITIZED
#define KVR_NOT_WITH_SANITIZERS() GTEST_SKIP() << "too slow with sanitizers"
#else
#define KVR_NOT_WITH_SANITIZERS() static_cast<void>(0)
#endif

/// The distance between the tested cases in a test of all cases. With sanitizers, which take ten times as
/// long, it is more than one; builds without them test every case.
#ifdef KVR_SANITIZED
constexpr std::uint32_t sweep_step = 7;
#else
constexpr std::uint32_t sweep_step = 1;
#endif
