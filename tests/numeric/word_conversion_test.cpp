#include "kvr/numeric/word_conversion.h"
#include "tests/numeric/random_digits.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>

namespace {

using kvr::convert_word_through_binary_digits;
using kvr_test::random_digits;

/// The result of the fast path; no value if it leaves the text to the exact path.
std::optional<std::string> convert_word_directly(const std::string& text, KVR_MEMORY_RADIXES from,
                                                 KVR_MEMORY_RADIXES to, unsigned int width) {
    std::string output = "untouched";
    if (!kvr::convert_word_directly(output, text, from, to, width)) {
        EXPECT_EQ(output, "untouched");
        return std::nullopt;
    }
    std::string shared = text;
    EXPECT_TRUE(kvr::convert_word_directly(shared, shared, from, to, width));
    EXPECT_EQ(shared, output);
    return output;
}

} // namespace

TEST(WordConversion, FastPathTakesPlainWords) {
    EXPECT_EQ(convert_word_directly("1F", RADIX_HEX, RADIX_OCT, 8), "037");
    EXPECT_EQ(convert_word_directly("-5", RADIX_DEC, RADIX_HEX, 8), "0A");
    EXPECT_EQ(convert_word_directly("77", RADIX_OCT, RADIX_UNS, 0), "36");
    EXPECT_EQ(convert_word_directly("-", RADIX_DEC, RADIX_HEX, 0), "3");
}

TEST(WordConversion, FastPathTakesAnyDigitsOfARadixToItself) {
    EXPECT_EQ(convert_word_directly("axg1", RADIX_HEX, RADIX_HEX, 0), "AX01");
    EXPECT_EQ(convert_word_directly("axg1", RADIX_HEX, RADIX_HEX, 14), "2X01");
    EXPECT_EQ(convert_word_directly("axg1", RADIX_HEX, RADIX_HEX, 10), "X01");
    EXPECT_EQ(convert_word_directly("78x", RADIX_OCT, RADIX_OCT, 11), "070X");
    EXPECT_EQ(convert_word_directly("", RADIX_HEX, RADIX_HEX, 9), "000");
    EXPECT_EQ(convert_word_directly("", RADIX_HEX, RADIX_HEX, 0), "");
}

TEST(WordConversion, FastPathTakesAnyDigitsOnTheirWayToBinary) {
    EXPECT_EQ(convert_word_directly("axg1", RADIX_HEX, RADIX_BIN, 0), "1010XXXX00000001");
    EXPECT_EQ(convert_word_directly("78x", RADIX_OCT, RADIX_BIN, 8), "11000XXX");
    EXPECT_EQ(convert_word_directly("78x", RADIX_OCT, RADIX_BIN, 11), "00111000XXX");
    EXPECT_EQ(convert_word_directly("fX", RADIX_HEX, RADIX_BIN, 2), "XX");
    EXPECT_EQ(convert_word_directly("", RADIX_HEX, RADIX_BIN, 3), "000");
    EXPECT_EQ(convert_word_directly("", RADIX_OCT, RADIX_BIN, 0), "");
}

TEST(WordConversion, FastPathLeavesTheOthers) {
    EXPECT_EQ(convert_word_directly("1X", RADIX_HEX, RADIX_OCT, 0), std::nullopt);
    EXPECT_EQ(convert_word_directly("1 2", RADIX_DEC, RADIX_HEX, 0), std::nullopt);
    EXPECT_EQ(convert_word_directly("-1", RADIX_UNS, RADIX_HEX, 0), std::nullopt);
    EXPECT_EQ(convert_word_directly("", RADIX_DEC, RADIX_HEX, 0), std::nullopt);
    EXPECT_EQ(convert_word_directly("", RADIX_HEX, RADIX_DEC, 0), std::nullopt);
    EXPECT_EQ(convert_word_directly("11", RADIX_BIN, RADIX_HEX, 0), std::nullopt);
    EXPECT_EQ(convert_word_directly("11", RADIX_UNS, RADIX_BIN, 0), std::nullopt);
    EXPECT_EQ(convert_word_directly("11", RADIX_NONE, RADIX_HEX, 0), std::nullopt);
    EXPECT_EQ(convert_word_directly("11", RADIX_HEX, RADIX_FIXED_POINT, 0), std::nullopt);
}

TEST(WordConversion, FastPathGivesWhatTheExactPathGives) {
    const KVR_MEMORY_RADIXES radixes[] = {RADIX_BIN, RADIX_DEC,  RADIX_UNS,        RADIX_HEX,
                                          RADIX_OCT, RADIX_NONE, RADIX_FIXED_POINT};
    std::mt19937_64 random(14);
    std::size_t direct_count = 0;
    for (std::size_t length = 1; length <= 300; length += 1 + length / 8) {
        for (const char* alphabet : {"01", "01234567", "0123456789", "0123456789abCDEF", "01fX", "089g-"}) {
            const std::string digits = random_digits(random, length, alphabet);
            const auto some_width = static_cast<unsigned>(1 + random() % (length * 5));
            for (const std::string& text : {digits, "-" + digits}) {
                for (const KVR_MEMORY_RADIXES from : radixes) {
                    for (const KVR_MEMORY_RADIXES to : radixes) {
                        for (const unsigned width : {0U, some_width, 1500U}) {
                            const auto direct = convert_word_directly(text, from, to, width);
                            if (direct) {
                                ++direct_count;
                                ASSERT_EQ(*direct, convert_word_through_binary_digits(text, from, to, width))
                                    << text << " from " << from << " to " << to << " at " << width;
                            }
                        }
                    }
                }
            }
        }
    }
    EXPECT_GT(direct_count, 5000U);
}
