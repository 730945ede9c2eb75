// The library's results for every relevant combination, compared with the plain implementation of the rules.

#include "kvr/ram_rules/device_families.h"
#include "kvr/ram_rules/width_ratio.h"
#include "tests/ram_rules/plain_width_ratio.h"
#include "tests/sanitized.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace {

struct block_text {
    std::string given;
    std::string known_as; // for the plain implementation
};

const std::vector<block_text> named_blocks = {
    {"AUTO", "AUTO"},     {"KBLK-A", "KBLK-A"}, {"KBLK-B", "KBLK-B"}, {"KBLK-C", "KBLK-C"},
    {"KBLK-D", "KBLK-D"}, {"KBLK-E", "KBLK-E"}, {"KBLK-F", "KBLK-F"}, {"KBLK-G", "KBLK-G"},
    {"KBLK-L", "KBLK-L"}, {"KBLK-H", ""},
};

const std::vector<block_text> odd_blocks = {
    {"", ""},
    {"auto", "AUTO"},
    {"AUTO ", ""},
    {"kblk-a", "KBLK-A"},
    {"kBlK-b", "KBLK-B"},
    {"kblk-f", "KBLK-F"},
    {"KBLK-g", "KBLK-G"},
    {"Kblk-L", "KBLK-L"},
    {"KBLK-GG", ""},
};

// Counts the checks, so that a sweep without any cannot pass.
struct sweep {
    long long asked = 0;
    long long valid = 0;

    void count(bool library, bool plain_reading, const char* function, int a, int b, const std::string& block,
               const std::string& family, int flags, int byte_size) {
        ++asked;
        valid += library ? 1 : 0;
        if (library != plain_reading) {
            ADD_FAILURE() << function << " widths " << a << ", " << b << " block \"" << block
                          << "\" family \"" << family << "\" flags " << flags << " byte size " << byte_size
                          << ": " << library;
        }
    }

    // flags: 1 = large block possible, 2 = byte enables of port A, 4 = of port B (bidirectional only).
    void ask(int a, int b, const block_text& block, const std::string& family, int flags, int byte_size) {
        const bool large = (flags & 1) != 0;
        const bool enable_a = (flags & 2) != 0;
        const bool enable_b = (flags & 4) != 0;
        count(is_valid_bidir_dual_port_memory_width_ratio(a, b, block.given, family, large, enable_a,
                                                          enable_b, byte_size),
              plain::two_way(a, b, block.known_as, family, large, enable_a, enable_b, byte_size), "bidir", a,
              b, block.given, family, flags, byte_size);
        if (enable_b) {
            return;
        }
        count(is_valid_dual_port_memory_width_ratio_in_hardware(a, b, block.given, family, large, enable_a,
                                                                byte_size),
              plain::one_way_in_hardware(a, b, block.known_as, family, large, enable_a, byte_size),
              "hardware", a, b, block.given, family, flags, byte_size);
        count(is_valid_dual_port_memory_width_ratio(a, b, block.given, family, large, enable_a, byte_size),
              plain::one_way(a, b, block.known_as, family, large, enable_a, byte_size), "retried", a, b,
              block.given, family, flags, byte_size);
    }

    void ask_all_flags(int a, int b, const block_text& block, const std::string& family,
                       const std::vector<int>& byte_sizes) {
        for (const int large : {0, 1}) {
            ask(a, b, block, family, large, 8);
            for (const int byte_size : byte_sizes) {
                for (const int enables : {2, 4, 6}) {
                    ask(a, b, block, family, large | enables, byte_size);
                }
            }
        }
    }
};

class WidthRatioOfFamily : public testing::TestWithParam<const char*> {};

// One family of each group and an unknown one.
INSTANTIATE_TEST_SUITE_P(EachGroup, WidthRatioOfFamily,
                         testing::Values("SERIES_A1", "SERIES_A2", "SERIES_A3", "SERIES_Z9"),
                         [](const testing::TestParamInfo<const char*>& parameter) {
                             return std::string(parameter.param);
                         });

// Every pair of widths for every block; the flags and byte sizes rotate.
TEST_P(WidthRatioOfFamily, AllWidthsTo600AgreeWithThePlainReading) {
    const std::string family = GetParam();
    sweep sweep;
    int turn = 0;
    const int step = kvr_test::stride * (kvr_test::is_sanitized ? 7 : 1);
    for (int a = 1; a <= 600; a += step) {
        for (int b = 1; b <= 600; ++b) {
            for (const block_text& block : named_blocks) {
                turn = (turn + 1) % 83; // a prime, so that each block gets every value
                sweep.ask(a, b, block, family, turn % 8, 1 + turn / 8 % 10);
            }
        }
    }
    EXPECT_GT(sweep.asked, 10 * 600 * 600 / step);
    EXPECT_GT(sweep.valid, kvr_test::fewer(1000));
}

// Every integer ratio up to 64 and values close to it, for every block, every flag and every byte size.
TEST_P(WidthRatioOfFamily, AllRatiosAgreeWithThePlainReading) {
    const std::string family = GetParam();
    const std::vector<int> byte_sizes = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    sweep sweep;
    for (const int narrow : {1, 2, 3, 4, 5, 7, 8, 9, 10, 16, 18, 20, 24, 72}) {
        for (int ratio = 1; ratio <= 64 && ratio * narrow <= 600; ++ratio) {
            for (const int wide : {narrow * ratio, narrow * ratio + 1}) {
                for (const block_text& block : named_blocks) {
                    sweep.ask_all_flags(narrow, wide, block, family, byte_sizes);
                    sweep.ask_all_flags(wide, narrow, block, family, byte_sizes);
                }
            }
        }
    }
    EXPECT_GT(sweep.valid, 10000);
}

const std::vector<int> telling_widths = {1, 2, 3, 4, 8, 9, 16, 18, 32, 36, 64, 72, 128, 600};

TEST(WidthRatioSweep, AllFamiliesAgreeWithThePlainReading) {
    std::vector<std::string> families = {"", "SERIES_Z9"};
    for (const kvr::device_family& family : kvr::device_families()) {
        families.emplace_back(family.spellings.front());
    }
    sweep sweep;
    for (const std::string& family : families) {
        for (const block_text& block : named_blocks) {
            for (const int a : telling_widths) {
                for (const int b : telling_widths) {
                    sweep.ask_all_flags(a, b, block, family, {3, 8});
                }
            }
        }
    }
    EXPECT_GT(sweep.valid, 10000);
}

TEST(WidthRatioSweep, OddBlockTextsAgreeWithThePlainReading) {
    sweep sweep;
    for (const char* family : {"SERIES_A1", "SERIES_A2", "SERIES_A3", "SERIES_Z9"}) {
        for (const block_text& block : odd_blocks) {
            for (const int a : telling_widths) {
                for (const int b : telling_widths) {
                    sweep.ask_all_flags(a, b, block, family, {1, 8});
                }
            }
        }
    }
    EXPECT_GT(sweep.valid, 10000);
}

TEST(WidthRatioSweep, NoWidthIsATrap) {
    const std::vector<int> widths = {INT_MIN, INT_MIN + 1, -64, -9, -8, -4,          -2,     -1,
                                     0,       1,           2,   8,  64, INT_MAX / 2, INT_MAX};
    sweep sweep;
    for (const char* family : {"SERIES_A1", "SERIES_A2", "SERIES_A3", "SERIES_Z9"}) {
        for (const block_text& block : named_blocks) {
            for (const int a : widths) {
                for (const int b : widths) {
                    sweep.ask_all_flags(a, b, block, family, {INT_MIN, -8, -1, 0, 1, INT_MAX});
                }
            }
        }
    }
    EXPECT_GT(sweep.valid, kvr_test::fewer(1000));
}

} // namespace
