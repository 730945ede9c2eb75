#pragma once

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
