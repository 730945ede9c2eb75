#include "kvr/ram_rules/device_families.h"
#include "kvr/ram_rules/width_ratio.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

const std::string early = "SERIES_A1";
const std::string older = "SERIES_A2"; // from the group that supports ratio 8 in both directions
const std::string unknown = "SERIES_Z9";
const std::string newer = "SERIES_A3";

const char* const all_blocks[] = {"AUTO",   "KBLK-A", "KBLK-B", "KBLK-C", "KBLK-D",
                                  "KBLK-E", "KBLK-F", "KBLK-G", "KBLK-L"};

bool in_hardware(int a, int b, const std::string& block, const std::string& family, bool byte_enable = false,
                 int byte_size = 8) {
    return is_valid_dual_port_memory_width_ratio_in_hardware(a, b, block, family, false, byte_enable,
                                                             byte_size);
}

bool one_way(int a, int b, const std::string& block, const std::string& family, bool byte_enable = false,
             int byte_size = 8) {
    return is_valid_dual_port_memory_width_ratio(a, b, block, family, false, byte_enable, byte_size);
}

bool two_way(int a, int b, const std::string& block, const std::string& family, bool byte_enable_a = false,
             bool byte_enable_b = false, int byte_size = 8, bool large = false) {
    return is_valid_bidir_dual_port_memory_width_ratio(a, b, block, family, large, byte_enable_a,
                                                       byte_enable_b, byte_size);
}

TEST(WidthRatio, EqualWidthsFitEveryBlockOfTheFamily) {
    for (const char* block : {"KBLK-A", "KBLK-B", "KBLK-G", "AUTO"}) {
        EXPECT_TRUE(in_hardware(24, 24, block, older, true)) << block;
    }
    for (const char* block : {"KBLK-C", "KBLK-D", "KBLK-E", "KBLK-F", "KBLK-G", "KBLK-L", "AUTO"}) {
        EXPECT_TRUE(in_hardware(24, 24, block, newer, true)) << block;
    }
}

TEST(WidthRatio, EqualWidthsStillHaveToBeMultiplesOfTheByteSize) {
    for (const char* block : {"KBLK-B", "KBLK-G", "AUTO"}) {
        EXPECT_FALSE(in_hardware(20, 20, block, older, true)) << block;
    }
    for (const char* block : {"KBLK-C", "KBLK-D", "KBLK-E", "KBLK-F", "KBLK-G", "AUTO"}) {
        EXPECT_FALSE(in_hardware(20, 20, block, newer, true)) << block;
    }
}

TEST(WidthRatio, BlocksWithoutAlignmentTakeEqualWidthsOfNoWholeBytes) {
    EXPECT_TRUE(in_hardware(20, 20, "KBLK-A", older, true));
    EXPECT_TRUE(in_hardware(20, 20, "KBLK-L", newer, true));
}

TEST(WidthRatio, OlderBlockBTakesRatio32ButNot64) {
    EXPECT_TRUE(in_hardware(1, 32, "KBLK-B", older));
    EXPECT_FALSE(in_hardware(1, 64, "KBLK-B", older));
}

TEST(WidthRatio, ByteEnablesOnAWiderPortANarrowAndAreNotRetried) {
    EXPECT_FALSE(in_hardware(32, 4, "KBLK-B", older, true, 4));
    EXPECT_FALSE(one_way(32, 4, "KBLK-B", older, true, 4));
    EXPECT_TRUE(in_hardware(16, 4, "KBLK-B", older, true, 4));
}

TEST(WidthRatio, UnalignedNarrowerPortAIsRetriedWithoutByteEnables) {
    EXPECT_FALSE(in_hardware(4, 32, "KBLK-B", older, true, 8));
    EXPECT_TRUE(one_way(4, 32, "KBLK-B", older, true, 8));
}

TEST(WidthRatio, EarlyFamilyIsNarrowedEvenWhenPortAIsNarrower) {
    EXPECT_FALSE(in_hardware(8, 64, "KBLK-B", early, true, 8));
    EXPECT_TRUE(one_way(8, 64, "KBLK-B", early, true, 8));
    EXPECT_TRUE(in_hardware(8, 64, "KBLK-B", older, true, 8));
}

TEST(WidthRatio, NewerBlockLTakesEqualWidthsOnly) {
    EXPECT_FALSE(in_hardware(16, 8, "KBLK-L", newer));
    EXPECT_TRUE(in_hardware(16, 16, "KBLK-L", newer));
}

TEST(WidthRatio, BlockOfTheOtherKindOfFamilyIsNeverValid) {
    for (int width = 1; width <= 64; ++width) {
        EXPECT_FALSE(one_way(width, width, "KBLK-A", newer));
        EXPECT_FALSE(one_way(width, width, "KBLK-B", newer));
        for (const char* block : {"KBLK-C", "KBLK-D", "KBLK-E", "KBLK-F", "KBLK-L"}) {
            EXPECT_FALSE(one_way(width, width, block, older)) << block;
        }
    }
}

TEST(WidthRatio, UnknownBlockIsNeverValidOneWay) {
    for (const char* block :
         {"", " AUTO", "AUTO ", "KBLK", "KBLK-H", "KBLK-AA", "KBLK_A", "KBLK-A-AND-MORE"}) {
        EXPECT_FALSE(one_way(8, 8, block, older)) << block;
        EXPECT_FALSE(one_way(8, 8, block, newer)) << block;
    }
    EXPECT_FALSE(one_way(8, 8, std::string("AUTO\0", 5), older));
    EXPECT_FALSE(one_way(8, 8, std::string("\0AUTO", 5), older));
}

TEST(WidthRatio, BlockTypeMatchesInAnyLetterCase) {
    EXPECT_TRUE(in_hardware(8, 16, "auto", older));
    EXPECT_TRUE(in_hardware(8, 16, "aUtO", older));
    EXPECT_TRUE(in_hardware(8, 16, "kblk-b", older));
    EXPECT_TRUE(in_hardware(8, 16, "Kblk-E", newer));
    EXPECT_FALSE(in_hardware(8, 16, "KBLK\rB", older)); // "-" and CR differ by the case bit
}

TEST(WidthRatio, FamilyMatchesInAnyLetterCase) {
    EXPECT_TRUE(in_hardware(8, 16, "KBLK-E", "series_a3"));
    EXPECT_TRUE(in_hardware(8, 16, "KBLK-E", "Series A3"));
    EXPECT_TRUE(in_hardware(8, 16, "KBLK-E", "sERIESa3"));
}

TEST(WidthRatio, FamilyWithAnExtraBlankIsAnOlderOne) {
    EXPECT_FALSE(in_hardware(8, 16, "KBLK-E", "SERIES  A3"));
    EXPECT_TRUE(in_hardware(8, 16, "KBLK-B", "SERIES  A3"));
}

TEST(WidthRatio, TruncatedRatioIsNotEnough) {
    EXPECT_FALSE(in_hardware(9, 4, "KBLK-B", older));
    EXPECT_FALSE(in_hardware(4, 9, "AUTO", newer));
    EXPECT_FALSE(two_way(9, 4, "AUTO", older));
}

TEST(WidthRatio, OlderAutoFollowsTheLargeBlockFirst) {
    const auto with_large = [](int a, int b, bool byte_enable) {
        return is_valid_dual_port_memory_width_ratio_in_hardware(a, b, "AUTO", older, true, byte_enable, 1);
    };
    EXPECT_FALSE(with_large(1, 16, false));
    EXPECT_TRUE(with_large(8, 1, true));
    EXPECT_FALSE(in_hardware(8, 1, "AUTO", older, true, 1));
    EXPECT_TRUE(in_hardware(1, 32, "AUTO", older));
}

TEST(WidthRatio, EarlyFamilyWithAutoIsNotNarrowed) {
    EXPECT_TRUE(in_hardware(8, 64, "AUTO", early, true, 8));
    EXPECT_FALSE(in_hardware(8, 64, "KBLK-B", early, true, 8));
}

TEST(WidthRatio, NewerAutoIgnoresTheLargeBlock) {
    EXPECT_TRUE(is_valid_dual_port_memory_width_ratio_in_hardware(1, 32, "AUTO", newer, true, false, 8));
    EXPECT_TRUE(is_valid_dual_port_memory_width_ratio_in_hardware(1, 32, "AUTO", newer, false, false, 8));
}

TEST(WidthRatio, BlockATakesAnyAlignmentButNarrows) {
    EXPECT_TRUE(in_hardware(6, 3, "KBLK-A", older, true, 8));
    EXPECT_FALSE(in_hardware(12, 3, "KBLK-A", older, true, 8));
    EXPECT_TRUE(in_hardware(3, 48, "KBLK-A", older, true, 8));
}

TEST(WidthRatio, BidirRatio8WithByteEnablesOnTheNarrowerPortNeedsTheGroup) {
    for (const kvr::device_family& family : kvr::device_families()) {
        if (kvr::includes(family.groups, kvr::family_group::newer)) {
            continue;
        }
        const std::string name(family.spellings.front());
        const bool member = kvr::includes(family.groups, kvr::family_group::bidir_ratio8);
        EXPECT_EQ(two_way(8, 64, "KBLK-G", name, true, false), member) << name;
        EXPECT_EQ(two_way(64, 8, "KBLK-G", name, false, true), member) << name;
        EXPECT_EQ(two_way(8, 64, "AUTO", name, true, false, 8, true), member) << name;
    }
    EXPECT_FALSE(two_way(8, 64, "KBLK-G", unknown, true, false));
}

TEST(WidthRatio, BidirRatio8WithByteEnablesOnTheWiderPortOnlyNeedsNoGroup) {
    EXPECT_TRUE(two_way(8, 64, "KBLK-G", early, false, true));
    EXPECT_TRUE(two_way(64, 8, "KBLK-G", unknown, true, false));
    EXPECT_TRUE(two_way(8, 64, "KBLK-G", unknown));
    EXPECT_FALSE(two_way(8, 64, "KBLK-G", unknown, true, true));
}

TEST(WidthRatio, BidirNewerBlockFStopsAtRatio4) {
    EXPECT_FALSE(two_way(8, 64, "KBLK-F", newer));
    EXPECT_TRUE(two_way(16, 64, "KBLK-F", newer));
    EXPECT_FALSE(two_way(8, 64, "KBLK-G", newer));
    EXPECT_FALSE(two_way(8, 64, "AUTO", newer, false, false, 8, true));
    EXPECT_TRUE(two_way(8, 64, "AUTO", newer));
}

TEST(WidthRatio, BidirUnknownBlockFollowsTheGenericRule) {
    for (const char* block : {"", "no such block", "KBLK-A", "KBLK-B"}) {
        EXPECT_TRUE(two_way(4, 64, block, older)) << block;
        EXPECT_FALSE(two_way(4, 128, block, older)) << block;
        EXPECT_TRUE(two_way(4, 64, block, newer)) << block;
        EXPECT_FALSE(two_way(64, 8, block, newer, true)) << block;
    }
}

TEST(WidthRatio, BidirByteEnablesOfEitherPortAskForWholeBytes) {
    EXPECT_FALSE(two_way(4, 8, "AUTO", older, true, false));
    EXPECT_FALSE(two_way(4, 8, "AUTO", older, false, true));
    EXPECT_TRUE(two_way(4, 8, "AUTO", older, false, false));
    EXPECT_TRUE(two_way(4, 8, "AUTO", older, true, true, 4));
}

TEST(WidthRatio, BidirEarlyFamilyIsNarrowedByByteEnablesOfAnyPort) {
    EXPECT_FALSE(two_way(8, 32, "AUTO", early, true, false));
    EXPECT_FALSE(two_way(32, 8, "AUTO", early, false, true));
    EXPECT_TRUE(two_way(8, 32, "AUTO", older, true, false));
}

TEST(WidthRatio, ZeroWidthIsNeverValid) {
    for (const std::string& family : {early, older, unknown, newer}) {
        for (const char* block : all_blocks) {
            for (const bool byte_enable : {false, true}) {
                EXPECT_FALSE(one_way(0, 0, block, family, byte_enable)) << block;
                EXPECT_FALSE(one_way(0, 8, block, family, byte_enable)) << block;
                EXPECT_FALSE(one_way(8, 0, block, family, byte_enable)) << block;
                EXPECT_FALSE(two_way(0, 0, block, family, byte_enable)) << block;
                EXPECT_FALSE(two_way(0, 8, block, family, byte_enable)) << block;
                EXPECT_FALSE(two_way(8, 0, block, family, byte_enable)) << block;
            }
        }
    }
}

TEST(WidthRatio, ZeroByteSizeIsNeverValidWhileByteEnablesAreOn) {
    for (const char* block : all_blocks) {
        for (const std::string& family : {older, newer}) {
            EXPECT_FALSE(in_hardware(8, 8, block, family, true, 0)) << block;
            EXPECT_FALSE(one_way(8, 8, block, family, true, 0)) << block;
            EXPECT_FALSE(one_way(8, 16, block, family, true, 0)) << block;
            EXPECT_FALSE(two_way(8, 8, block, family, true, false, 0)) << block;
            EXPECT_FALSE(two_way(8, 8, block, family, false, true, 0)) << block;
            EXPECT_TRUE(two_way(8, 8, block, family, false, false, 0)) << block;
        }
    }
    EXPECT_TRUE(in_hardware(8, 16, "AUTO", older, false, 0));
}

TEST(WidthRatio, NegativeWidthsAreDividedAsTheyStand) {
    EXPECT_TRUE(in_hardware(-8, -8, "AUTO", older));  // -8 / -8 is 1
    EXPECT_FALSE(in_hardware(-8, 8, "AUTO", older));  // 8 / -8 is -1
    EXPECT_FALSE(in_hardware(-8, -4, "AUTO", older)); // -4 / -8 is 0
    EXPECT_FALSE(in_hardware(-4, -8, "AUTO", older)); // -4 / -8 is 0
    EXPECT_TRUE(in_hardware(-8, -8, "KBLK-L", newer));
    EXPECT_TRUE(in_hardware(-8, -8, "AUTO", older, true, -4));
    EXPECT_FALSE(in_hardware(-8, -8, "AUTO", older, true, -3));
}

TEST(WidthRatio, LimitsOfTheIntegersAreNoTrap) {
    EXPECT_FALSE(one_way(INT_MIN, -1, "AUTO", older));
    EXPECT_FALSE(one_way(-1, INT_MIN, "AUTO", older));
    EXPECT_FALSE(one_way(INT_MAX, INT_MIN, "AUTO", older, true, -1));
    EXPECT_TRUE(one_way(INT_MIN, INT_MIN, "AUTO", older, true, -1));
    EXPECT_FALSE(two_way(INT_MIN, -1, "AUTO", newer, true, true, -1));
    EXPECT_TRUE(two_way(INT_MIN, INT_MIN, "AUTO", newer, true, true, -1));
    EXPECT_FALSE(one_way(INT_MAX, 1, "AUTO", older));
}

} // namespace
