#include "kvrimage/image/mixed_bits.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

namespace {

using kvrimage::mixed_bits;

TEST(MixedBits, AreThoseOfSplitmix64) {
    constexpr std::uint64_t step = 0x9E3779B97F4A7C15U;
    EXPECT_EQ(mixed_bits(step), 0xE220A8397B1DCDAFU);
    EXPECT_EQ(mixed_bits(2 * step), 0x6E789E6AA1B965F4U);
}

TEST(MixedBits, ChangeInManyPlacesWithOneBit) {
    for (unsigned bit = 0; bit < 64; ++bit) {
        const std::uint64_t changed = mixed_bits(1) ^ mixed_bits(1 ^ std::uint64_t{1} << bit);
        EXPECT_GT(std::popcount(changed), 16) << bit;
        EXPECT_LT(std::popcount(changed), 48) << bit;
    }
}

} // namespace
