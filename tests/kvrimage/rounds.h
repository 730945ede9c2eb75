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

// Sanitizers, valgrind and emulators make programs ten times as slow and more.
#if defined(KVR_SANITIZED) || defined(KVR_TEST_FEWER_CASES)
#define KVR_SLOW_PROGRAM
#endif

/// Ends a test that takes too long in a slow program; the other builds run it.
#ifdef KVR_SLOW_PROGRAM
#define KVR_NOT_IN_A_SLOW_PROGRAM() GTEST_SKIP() << "too slow with sanitizers or in an emulator"
#else
#define KVR_NOT_IN_A_SLOW_PROGRAM() static_cast<void>(0)
#endif

/// The distance between the tested cases in a test of all cases. In a slow program, it is more than one; the
/// other builds test every case.
#ifdef KVR_SLOW_PROGRAM
constexpr std::uint32_t sweep_step = 7;
#else
constexpr std::uint32_t sweep_step = 1;
#endif
