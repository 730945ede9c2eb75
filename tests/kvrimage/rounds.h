#pragma once

/// How many of @p all rounds a test of random data makes: a quarter where code is counted or checked, which
/// takes ten times as long.
constexpr int rounds(int all) {
#ifdef KVR_SLOW_BUILD
    return (all + 3) / 4;
#else
    return all;
#endif
}
