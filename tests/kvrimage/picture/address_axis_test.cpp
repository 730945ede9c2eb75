#include "kvrimage/picture/address_axis.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

using address_ticks = std::vector<address_tick>;

TEST(AddressAxis, TicksAreMultiplesOfAPowerOfTwo) {
    const address_axis axis(column_grid(0, 255, 100), 0);
    EXPECT_EQ(axis.ticks(64.5), (address_ticks{{0, "0x00"}, {128, "0x80"}}));
    EXPECT_EQ(axis.ticks(64), (address_ticks{{0, "0x00"}, {64, "0x40"}, {128, "0x80"}, {192, "0xC0"}}));
}

TEST(AddressAxis, StepIsOneWordAtLeast) {
    EXPECT_EQ(address_axis(column_grid(1, 2, 100), 0).ticks(0.1), (address_ticks{{1, "0x1"}, {2, "0x2"}}));
}

TEST(AddressAxis, RangeWithoutAMultipleHasItsFirstAddress) {
    EXPECT_EQ(address_axis(column_grid(17, 30, 100), 0).ticks(16), (address_ticks{{17, "0x11"}}));
}

TEST(AddressAxis, LabelsAndStepsFollowTheBase) {
    const address_axis axis(column_grid(2, 20, 100), 3);
    EXPECT_EQ(axis.label_size(), 4);
    EXPECT_EQ(axis.ticks(8), (address_ticks{{5, "0x08"}, {13, "0x10"}}));
}

TEST(AddressAxis, HighestAddressesDoNotOverflow) {
    const address_axis axis(column_grid(0, 3, 4), 0xFFFF'FFFF'FFFF'FFFC);
    EXPECT_EQ(axis.label_size(), 18);
    EXPECT_EQ(axis.ticks(8), (address_ticks{{0, "0xFFFFFFFFFFFFFFFC"}}));
    EXPECT_EQ(axis.ticks(2), (address_ticks{{0, "0xFFFFFFFFFFFFFFFC"}, {2, "0xFFFFFFFFFFFFFFFE"}}));
}

} // namespace
