#include "kvrimage/picture/value_axis.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

struct axis_case {
    value_order order;
    value_bounds bounds;
    value_axis axis;
};

TEST(ValueAxis, HasZeroWhereItIsNearOrTheOnlyOtherValue) {
    const value_order plain(8, {});
    const value_order with_sign(8, {.is_signed = true}); // zero has the key 128
    const axis_case cases[] = {
        {plain, {100, 110}, {100, 110}},
        {plain, {5, 10}, {0, 10}},
        {plain, {6, 11}, {6, 11}},
        {plain, {7, 7}, {0, 7}},
        {plain, {0, 0}, {0, 1}},
        {with_sign, {120, 125}, {120, 128}},
        {with_sign, {110, 120}, {110, 128}},
        {with_sign, {110, 115}, {110, 115}},
        {with_sign, {100, 100}, {100, 128}},
        {with_sign, {128, 128}, {128, 129}},
        {with_sign, {0, 255}, {0, 255}},
        {value_order(1, {.is_signed = true}), {1, 1}, {0, 1}},
    };
    for (const axis_case& each : cases) {
        EXPECT_EQ(axis_for(each.order, each.bounds), each.axis)
            << each.bounds.lowest << " " << each.bounds.highest;
    }
}

TEST(ValueAxis, PositionsAreInProportion) {
    const value_axis axis{100, 300};
    EXPECT_EQ(axis.position_of(100), 0);
    EXPECT_EQ(axis.position_of(150), 0.25);
    EXPECT_EQ(axis.position_of(300), 1);
}

struct tick_case {
    value_order order;
    value_axis axis;
    std::uint32_t most;
    std::vector<value_tick> ticks;
};

TEST(ValueAxis, TicksAreRoundValues) {
    const value_order eight(8, {});
    const value_order sixteen(16, {.is_signed = true});
    const std::uint64_t zero = 32768;
    const std::uint64_t half = std::uint64_t{1} << 63U;
    const std::uint64_t two_31 = std::uint64_t{1} << 31U;
    const std::uint64_t exa = 1'000'000'000'000'000'000;
    const tick_case cases[] = {
        {eight,
         {0, 255},
         8,
         {{0, "0x0"},
          {0x20, "0x20"},
          {0x40, "0x40"},
          {0x60, "0x60"},
          {0x80, "0x80"},
          {0xA0, "0xA0"},
          {0xC0, "0xC0"},
          {0xE0, "0xE0"}}},
        {eight, {0, 1}, 8, {{0, "0x0"}, {1, "0x1"}}},
        {eight, {101, 110}, 5, {{102, "0x66"}, {104, "0x68"}, {106, "0x6A"}, {108, "0x6C"}, {110, "0x6E"}}},
        {value_order(16, {.is_signed = true, .fraction_bits = 8}),
         {zero - 300, zero + 200},
         4,
         {{zero - 256, "-1"}, {zero - 128, "-0.5"}, {zero, "0"}, {zero + 128, "0.5"}}},
        {sixteen,
         {zero - 25, zero + 12},
         4,
         {{zero - 20, "-20"}, {zero - 10, "-10"}, {zero, "0"}, {zero + 10, "10"}}},
        {sixteen,
         {zero - 19, zero - 10},
         5,
         {{zero - 18, "-18"},
          {zero - 16, "-16"},
          {zero - 14, "-14"},
          {zero - 12, "-12"},
          {zero - 10, "-10"}}},
        {sixteen,
         {zero - 20, zero},
         4,
         {{zero - 20, "-20"}, {zero - 15, "-15"}, {zero - 10, "-10"}, {zero - 5, "-5"}, {zero, "0"}}},
        {value_order(64, {}),
         {0, ~std::uint64_t{0}},
         4,
         {{0, "0x0"},
          {std::uint64_t{1} << 62U, "0x4000000000000000"},
          {std::uint64_t{2} << 62U, "0x8000000000000000"},
          {std::uint64_t{3} << 62U, "0xC000000000000000"}}},
        {value_order(64, {.is_signed = true}),
         {0, ~std::uint64_t{0}},
         4,
         {{half - 5 * exa, "-5e18"}, {half, "0"}, {half + 5 * exa, "5e18"}}},
        {value_order(32, {.is_signed = true}),
         {two_31, two_31 + 10'000'000},
         4,
         {{two_31, "0"}, {two_31 + 5'000'000, "5e6"}, {two_31 + 10'000'000, "10e6"}}},
        {value_order(32, {.is_signed = true}),
         {two_31, two_31 + 8'999'999},
         4,
         {{two_31, "0"},
          {two_31 + 2'000'000, "2000000"},
          {two_31 + 4'000'000, "4000000"},
          {two_31 + 6'000'000, "6000000"},
          {two_31 + 8'000'000, "8000000"}}},
    };
    for (const tick_case& each : cases) {
        const auto ticks = ticks_of(each.order, each.axis, each.most);
        std::vector<std::string> labels;
        for (const value_tick& tick : ticks) {
            labels.push_back(tick.label);
        }
        EXPECT_TRUE(ticks == each.ticks) << testing::PrintToString(labels);
    }
}

TEST(ValueAxis, LongValuesThatAreCloseKeepTheirDigits) {
    const std::uint64_t far = (std::uint64_t{1} << 63U) + 4'000'000'000;
    const auto ticks = ticks_of(value_order(64, {.is_signed = true}), {far, far + 3}, 4);
    ASSERT_EQ(ticks.size(), 4);
    EXPECT_EQ(ticks[3].label, "4000000003");
}

TEST(ValueAxis, BarsGrowFromZeroOrFromWhatIsNearestToIt) {
    const value_order with_sign(8, {.is_signed = true});
    EXPECT_EQ((value_axis{100, 200}.bar_base(with_sign)), 128);
    EXPECT_EQ((value_axis{130, 200}.bar_base(with_sign)), 130);
    EXPECT_EQ((value_axis{0, 100}.bar_base(with_sign)), 100);
    EXPECT_EQ((value_axis{0, 100}.bar_base(value_order(8, {}))), 0);
}

} // namespace
