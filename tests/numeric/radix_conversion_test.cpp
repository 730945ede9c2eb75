#include "kvr/numeric/radix_conversion.h"
#include "tests/numeric/literal_radix_conversion.h"
#include "tests/numeric/random_digits.h"
#include "tests/sanitized.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using kvr_test::random_digits;
using literal_radix_conversion::outcome;

constexpr unsigned radix_count = 7;

struct conversion_case {
    const char* input;
    KVR_MEMORY_RADIXES from;
    KVR_MEMORY_RADIXES to;
    unsigned width;
    const char* expected;
};

std::string converted(const std::string& input, KVR_MEMORY_RADIXES from, KVR_MEMORY_RADIXES to,
                      unsigned width = 0) {
    std::string output = "untouched";
    EXPECT_TRUE(kvr_radix_conversion(input, &output, from, to, width));
    return output;
}

void expect_all(const std::vector<conversion_case>& cases) {
    for (const conversion_case& test : cases) {
        EXPECT_EQ(converted(test.input, test.from, test.to, test.width), test.expected)
            << test.input << " from " << test.from << " to " << test.to << " at " << test.width;
    }
}

outcome library_outcome(const std::string& text, unsigned from, unsigned to, unsigned width) {
    std::string output = text;
    try {
        const bool result = kvr_radix_conversion(output, &output, static_cast<KVR_MEMORY_RADIXES>(from),
                                                 static_cast<KVR_MEMORY_RADIXES>(to), width);
        return {result, output};
    } catch (const std::out_of_range&) {
        EXPECT_EQ(output, text);
        return {false, std::nullopt};
    }
}

/// Reports a failure and returns false if the library and the literal steps differ.
bool is_literal(const std::string& text, unsigned from, unsigned to, unsigned width) {
    const outcome expected = literal_radix_conversion::convert(text, from, to, width);
    const outcome actual = library_outcome(text, from, to, width);
    EXPECT_EQ(actual.output, expected.output)
        << testing::PrintToString(text) << " from " << from << " to " << to << " at " << width;
    EXPECT_EQ(actual.result, expected.result) << from << " to " << to;
    return actual == expected;
}

/// False at the first difference in any pair of radixes.
bool is_literal_in_all_pairs(const std::string& text, const std::vector<unsigned>& widths) {
    for (unsigned from = 0; from < radix_count; ++from) {
        for (unsigned to = 0; to < radix_count; ++to) {
            for (const unsigned width : widths) {
                if (!is_literal(text, from, to, width)) {
                    return false;
                }
            }
        }
    }
    return true;
}

std::string bits_of(unsigned value, std::size_t width) {
    std::string bits;
    for (std::size_t bit = width; bit-- > 0;) {
        bits += (value >> bit & 1) != 0 ? '1' : '0';
    }
    return bits;
}

/// The digits that a text in a radix usually has.
std::string alphabet_of(unsigned radix) {
    switch (radix) {
    case RADIX_BIN:
        return "01";
    case RADIX_HEX:
        return "0123456789abcdefABCDEF";
    case RADIX_OCT:
        return "01234567";
    default:
        return "0123456789";
    }
}

/// About the number of digits that a word of @p bits needs.
std::size_t digits_for(std::size_t bits, unsigned radix) {
    switch (radix) {
    case RADIX_BIN:
        return bits;
    case RADIX_HEX:
        return bits / 4;
    case RADIX_OCT:
        return bits / 3;
    default:
        return bits * 3 / 10;
    }
}

} // namespace

TEST(RadixConversion, HexadecimalToBinaryKeepsFillsAndCuts) {
    expect_all({{"1F", RADIX_HEX, RADIX_BIN, 0, "00011111"},
                {"1F", RADIX_HEX, RADIX_BIN, 6, "011111"},
                {"1F", RADIX_HEX, RADIX_BIN, 10, "0000011111"}});
}

TEST(RadixConversion, DontCareDigitsAreCarriedThrough) {
    expect_all({{"x5", RADIX_HEX, RADIX_BIN, 0, "XXXX0101"},
                {"XXXX0101", RADIX_BIN, RADIX_HEX, 0, "X5"},
                {"10X", RADIX_BIN, RADIX_OCT, 0, "X"},
                {"x5", RADIX_HEX, RADIX_HEX, 0, "X5"},
                {"X5", RADIX_HEX, RADIX_OCT, 0, "XX5"},
                {"x5", RADIX_HEX, RADIX_HEX, 5, "X5"},
                {"X", RADIX_OCT, RADIX_HEX, 0, "X"}});
}

TEST(RadixConversion, ShortGroupsAreFilledUp) {
    expect_all({{"101", RADIX_BIN, RADIX_HEX, 0, "5"}, {"0000101", RADIX_BIN, RADIX_HEX, 0, "05"}});
}

TEST(RadixConversion, InvalidOctalDigitReadsAsZero) {
    expect_all({{"79", RADIX_OCT, RADIX_BIN, 0, "111000"}, {"79", RADIX_OCT, RADIX_OCT, 0, "70"}});
}

TEST(RadixConversion, InvalidHexadecimalDigitReadsAsZero) {
    expect_all({{"1G-", RADIX_HEX, RADIX_BIN, 0, "000100000000"}, {"1G-", RADIX_HEX, RADIX_HEX, 0, "100"}});
}

TEST(RadixConversion, SignedDecimalIsOnesComplementWithoutSignExtension) {
    expect_all({{"5", RADIX_DEC, RADIX_BIN, 0, "0101"},
                {"-5", RADIX_DEC, RADIX_BIN, 0, "1010"},
                {"-5", RADIX_DEC, RADIX_BIN, 8, "00001010"},
                {"-0", RADIX_DEC, RADIX_BIN, 0, "11"},
                {"-", RADIX_DEC, RADIX_BIN, 0, "11"},
                {"-5", RADIX_DEC, RADIX_HEX, 8, "0A"},
                {"-5", RADIX_DEC, RADIX_DEC, 8, "01"}});
}

TEST(RadixConversion, UnsignedDecimalComesOutReversed) {
    expect_all({{"12", RADIX_UNS, RADIX_BIN, 0, "1100"},
                {"1100", RADIX_BIN, RADIX_UNS, 0, "21"},
                {"1001", RADIX_BIN, RADIX_UNS, 0, "9"},
                {"11111111", RADIX_BIN, RADIX_UNS, 0, "552"},
                {"12", RADIX_UNS, RADIX_UNS, 0, "21"},
                {"", RADIX_UNS, RADIX_BIN, 0, "0"}});
}

TEST(RadixConversion, SignedDecimalResultReadsOnesComplement) {
    expect_all({{"7", RADIX_DEC, RADIX_DEC, 0, "7"},
                {"FF", RADIX_HEX, RADIX_DEC, 0, "-0"},
                {"10", RADIX_BIN, RADIX_DEC, 0, "-1"},
                {"0111", RADIX_BIN, RADIX_DEC, 0, "7"}});
}

TEST(RadixConversion, RadixNoneIsRefusedWithTheOutputWritten) {
    for (const unsigned other : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 7U}) {
        const auto radix = static_cast<KVR_MEMORY_RADIXES>(other);
        std::string output = "untouched";
        EXPECT_FALSE(kvr_radix_conversion("1", &output, radix, RADIX_NONE, 0));
        EXPECT_EQ(output, "") << other;
        output = "untouched";
        EXPECT_FALSE(kvr_radix_conversion("1", &output, RADIX_NONE, radix, 8));
        EXPECT_NE(output, "untouched") << other;
    }
}

TEST(RadixConversion, FromRadixNoneGivesZerosOfTheWidth) {
    std::string output;
    EXPECT_FALSE(kvr_radix_conversion("1F", &output, RADIX_NONE, RADIX_BIN, 8));
    EXPECT_EQ(output, "00000000");
    EXPECT_FALSE(kvr_radix_conversion("1F", &output, RADIX_NONE, RADIX_DEC, 8));
    EXPECT_EQ(output, "0");
}

TEST(RadixConversion, UnknownRadixesConvertAsNoDigitsAndSucceed) {
    for (const unsigned unknown : {5U, 7U, 100U}) {
        const auto radix = static_cast<KVR_MEMORY_RADIXES>(unknown);
        EXPECT_EQ(converted("1F", radix, RADIX_HEX), "");
        EXPECT_EQ(converted("1F", radix, RADIX_UNS), "0");
        EXPECT_EQ(converted("1F", radix, RADIX_HEX, 8), "00");
        EXPECT_EQ(converted("1F", radix, RADIX_DEC, 8), "0");
        EXPECT_EQ(converted("1F", RADIX_HEX, radix, 8), "");
        EXPECT_EQ(converted("1F", radix, radix, 8), "");
    }
}

TEST(RadixConversion, EmptySignedDecimalTextIsOutOfRange) {
    std::string output = "untouched";
    for (const KVR_MEMORY_RADIXES to : {RADIX_BIN, RADIX_DEC, RADIX_HEX, RADIX_NONE}) {
        EXPECT_THROW(kvr_radix_conversion("", &output, RADIX_DEC, to, 8), std::out_of_range);
    }
    EXPECT_EQ(output, "untouched");
}

TEST(RadixConversion, NoDigitsOnTheirWayToSignedDecimalAreOutOfRange) {
    std::string output = "untouched";
    for (const KVR_MEMORY_RADIXES from : {RADIX_BIN, RADIX_HEX, RADIX_OCT, RADIX_FIXED_POINT, RADIX_NONE}) {
        EXPECT_THROW(kvr_radix_conversion("", &output, from, RADIX_DEC, 0), std::out_of_range);
    }
    EXPECT_THROW(kvr_radix_conversion("1", &output, RADIX_NONE, RADIX_DEC, 0), std::out_of_range);
    EXPECT_EQ(output, "untouched");
}

TEST(RadixConversion, OutputMayBeTheInput) {
    for (const KVR_MEMORY_RADIXES to : {RADIX_BIN, RADIX_DEC, RADIX_UNS, RADIX_HEX, RADIX_OCT, RADIX_NONE}) {
        std::string separate;
        std::string shared = "0123456789abcdefX0123456789abcdef0123456789ABCDEF";
        kvr_radix_conversion(shared, &separate, RADIX_HEX, to, 70);
        kvr_radix_conversion(shared, &shared, RADIX_HEX, to, 70);
        EXPECT_EQ(shared, separate) << to;
    }
}

TEST(RadixConversion, WideWordsAreExact) {
    // 2^100 is 1267650600228229401496703205376.
    expect_all({{"10000000000000000000000000", RADIX_HEX, RADIX_UNS, 0, "6735023076941049228220060567621"},
                {"1267650600228229401496703205376", RADIX_UNS, RADIX_HEX, 0, "10000000000000000000000000"},
                {"1267650600228229401496703205376", RADIX_DEC, RADIX_HEX, 96, "000000000000000000000000"},
                {"-1267650600228229401496703205376", RADIX_DEC, RADIX_HEX, 0, "2FFFFFFFFFFFFFFFFFFFFFFFFF"}});
}

TEST(RadixConversion, HugeWidthCostsNothingOnItsWayToDecimalOrToNoRadix) {
    constexpr unsigned huge = 4294967295U;
    expect_all({{"FF", RADIX_HEX, RADIX_DEC, huge, "552"},
                {"FX", RADIX_HEX, RADIX_UNS, huge, "042"},
                {"11", RADIX_BIN, RADIX_DEC, huge, "3"},
                {"", RADIX_BIN, RADIX_DEC, huge, "0"},
                {"-1", RADIX_DEC, RADIX_UNS, huge, "2"},
                {"1", RADIX_FIXED_POINT, RADIX_DEC, huge, "0"},
                {"11", RADIX_BIN, RADIX_FIXED_POINT, huge, ""}});
}

TEST(RadixConversion, AllShortBinaryTextsAreConvertedLiterallyInAllPairs) {
    for (unsigned length = 0; length <= 12; ++length) {
        for (unsigned value = 0; value < 1U << length; value += kvr_test::stride) {
            // Long texts use one width each, in turn; there are enough texts for every width.
            const std::vector<unsigned> widths =
                length <= 8 ? std::vector{0U, length / 2 + 1, length, length + 5} : std::vector{value % 17};
            ASSERT_TRUE(is_literal_in_all_pairs(bits_of(value, length), widths));
        }
    }
}

TEST(RadixConversion, AllShortDecimalTextsAreConvertedLiterallyInAllPairs) {
    for (int value = -4097; value <= 4097; value += 3 * kvr_test::stride) {
        ASSERT_TRUE(is_literal_in_all_pairs(std::to_string(value), {0, 12}));
    }
    for (const char* text : {"-", "-0", "--1", "00", "007", "-007", "x", "-x"}) {
        ASSERT_TRUE(is_literal_in_all_pairs(text, {0, 1, 2, 3, 20}));
    }
}

TEST(RadixConversion, AllHexadecimalAndOctalTextsOfTwelveBitsAreConvertedLiterally) {
    for (unsigned value = 0; value < 4096; value += kvr_test::stride) {
        const std::string hexadecimal = literal_radix_conversion::from_binary(bits_of(value, 12), RADIX_HEX);
        const std::string octal = literal_radix_conversion::from_binary(bits_of(value, 12), RADIX_OCT);
        for (unsigned to = 0; to < radix_count; ++to) {
            for (const unsigned width : {0U, 9U, 10U, 17U}) {
                ASSERT_TRUE(is_literal(hexadecimal, RADIX_HEX, to, width));
                ASSERT_TRUE(is_literal(octal, RADIX_OCT, to, width));
            }
        }
    }
}

TEST(RadixConversion, EveryByteInEveryPositionIsConvertedLiterallyInAllPairs) {
    for (const std::string filler : {"5", "-7", "107", "1010"}) {
        for (std::size_t position = 0; position < filler.size(); ++position) {
            for (int byte = 0; byte < 256; byte += kvr_test::stride) {
                std::string text = filler;
                text[position] = static_cast<char>(byte);
                ASSERT_TRUE(is_literal_in_all_pairs(text, {0, 5}));
            }
        }
    }
}

TEST(RadixConversion, RandomWordsAreConvertedLiterally) {
    std::mt19937_64 random(12);
    for (const std::size_t bits : {13U, 31U, 33U, 63U, 64U, 65U, 127U, 128U, 129U, 200U, 400U}) {
        for (unsigned from = 0; from <= RADIX_OCT; ++from) {
            const std::size_t count = digits_for(bits, from);
            const std::string digits = random_digits(random, count, alphabet_of(from));
            const std::string text = from == RADIX_DEC && random() % 2 == 0 ? "-" + digits : digits;
            for (unsigned to = 0; to < radix_count; ++to) {
                for (const std::size_t width : {std::size_t{0}, bits - 3, bits, bits + 70}) {
                    ASSERT_TRUE(is_literal(text, from, to, static_cast<unsigned>(width)));
                }
            }
        }
    }
}

TEST(RadixConversion, RandomWordsOf4096BitsAreConvertedLiterally) {
    std::mt19937_64 random(13);
    const std::string hexadecimal = random_digits(random, 1024, alphabet_of(RADIX_HEX));
    const std::string decimal = "-1" + random_digits(random, 1232, alphabet_of(RADIX_DEC));
    ASSERT_TRUE(is_literal(hexadecimal, RADIX_HEX, RADIX_DEC, 0));
    ASSERT_TRUE(is_literal(hexadecimal, RADIX_HEX, RADIX_UNS, 4093));
    ASSERT_TRUE(is_literal(hexadecimal, RADIX_HEX, RADIX_OCT, 4000));
    ASSERT_TRUE(is_literal(decimal, RADIX_DEC, RADIX_HEX, 4096));
    ASSERT_TRUE(is_literal(decimal.substr(1), RADIX_UNS, RADIX_BIN, 0));
}

TEST(ConvertToBinaryString, EveryRadixHasItsDigits) {
    EXPECT_EQ(convert_to_binary_string("01xz", RADIX_BIN), "01xz");
    EXPECT_EQ(convert_to_binary_string("-5", RADIX_DEC), "1010");
    EXPECT_EQ(convert_to_binary_string("12", RADIX_UNS), "1100");
    EXPECT_EQ(convert_to_binary_string("1f", RADIX_HEX), "00011111");
    EXPECT_EQ(convert_to_binary_string("79", RADIX_OCT), "111000");
}

TEST(ConvertToBinaryString, UnknownRadixesHaveNone) {
    for (const int radix : {-1, 5, 6, 7, 100}) {
        EXPECT_EQ(convert_to_binary_string("1", radix), "") << radix;
        EXPECT_EQ(convert_from_binary_string("1", radix), "") << radix;
    }
}

TEST(ConvertToBinaryString, EmptyTextHasNoneExceptInDecimal) {
    EXPECT_EQ(convert_to_binary_string("", RADIX_HEX), "");
    EXPECT_EQ(convert_to_binary_string("", RADIX_OCT), "");
    EXPECT_EQ(convert_to_binary_string("", RADIX_BIN), "");
    EXPECT_EQ(convert_to_binary_string("", RADIX_UNS), "0");
    EXPECT_THROW(convert_to_binary_string("", RADIX_DEC), std::out_of_range);
}

TEST(ConvertFromBinaryString, EveryRadixHasItsText) {
    EXPECT_EQ(convert_from_binary_string("01xz", RADIX_BIN), "01xz");
    EXPECT_EQ(convert_from_binary_string("10", RADIX_DEC), "-1");
    EXPECT_EQ(convert_from_binary_string("1100", RADIX_UNS), "21");
    EXPECT_EQ(convert_from_binary_string("11010", RADIX_HEX), "1A");
    EXPECT_EQ(convert_from_binary_string("11010", RADIX_OCT), "32");
    EXPECT_THROW(convert_from_binary_string("", RADIX_DEC), std::out_of_range);
}
