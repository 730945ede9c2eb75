#pragma once

#include <cstdint>

/// How many of @p all rounds a test of random data makes: a quarter where code is counted or checked, which
/// takes ten times as long, and twenty times as many in a program that is for nothing else.
constexpr int rounds(int all) {
#ifdef KVR_SLOW_BUILD
    return (all + 3) / 4;
#elif defined(KVR_MANY_ROUNDS)
    return 20 * all;
#else
    return all;
#endif
}

/// The distance of the cases that a test of all cases of a kind takes: with sanitizers, which take ten times
/// as long, it is more than one, and the builds without them take every case.
#ifdef KVR_SANITIZED
constexpr std::uint32_t sweep_step = 7;
#else
constexpr std::uint32_t sweep_step = 1;
#endif
