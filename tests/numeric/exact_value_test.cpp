#include "kvr/numeric/exact_value.h"
#include "tests/memory/number_text.h"
#include "tests/numeric/literal_radix_conversion.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace kvr {

/// Shows an error in a failed expectation.
static void PrintTo(const exact_word_error& error, std::ostream* out) {
    *out << "kind " << static_cast<int>(error.what) << " at " << error.position << ", needs "
         << error.bits_needed;
}

} // namespace kvr

namespace {

using kvr::append_exact_word;
using kvr::dont_care_digits;
using kvr::exact_bits;
using kvr::exact_conversion;
using kvr::exact_text;
using kvr::exact_word_error;
using kind = exact_word_error::kind;

constexpr std::array all_radixes = {RADIX_BIN, RADIX_DEC, RADIX_UNS, RADIX_HEX, RADIX_OCT};

exact_word_error error(kind what, std::size_t position, std::uint64_t bits_needed = 0) {
    return {what, position, bits_needed};
}

/// The error of a conversion. It must not change the result.
std::optional<exact_word_error> error_of(const std::string& text, const exact_conversion& conversion) {
    std::string result = "untouched";
    const auto found = append_exact_word(result, text, conversion);
    if (found) {
        EXPECT_EQ(result, "untouched") << text;
    }
    return found;
}

std::string converted(const std::string& text, const exact_conversion& conversion) {
    std::string result;
    EXPECT_EQ(append_exact_word(result, text, conversion), std::nullopt) << text;
    return result;
}

std::string digits_of(unsigned value, unsigned base, int count) {
    return kvr_test::number_text(value, base, static_cast<std::size_t>(count));
}

/// The text of the word of @p width bits with the value @p pattern, computed with machine integers.
std::string expected_text(unsigned pattern, int width, KVR_MEMORY_RADIXES radix) {
    const int value = static_cast<int>(pattern);
    switch (radix) {
    case RADIX_BIN:
        return digits_of(pattern, 2, width);
    case RADIX_DEC:
        return std::to_string(value >= 1 << (width - 1) ? value - (1 << width) : value);
    case RADIX_HEX:
        return digits_of(pattern, 16, (width + 3) / 4);
    case RADIX_OCT:
        return digits_of(pattern, 8, (width + 2) / 3);
    default:
        return std::to_string(value);
    }
}

/// The smallest two's complement width of a value.
std::uint64_t signed_bits(int value) {
    std::uint64_t width = 1;
    while (value < -(1 << (width - 1)) || value > (1 << (width - 1)) - 1) {
        ++width;
    }
    return width;
}

std::uint64_t unsigned_bits(unsigned value) {
    std::uint64_t width = 0;
    while (value >> width != 0) {
        ++width;
    }
    return width;
}

std::string random_bits(std::mt19937_64& random, std::size_t width) {
    std::string bits;
    for (std::size_t bit = 0; bit < width; ++bit) {
        bits += random() % 2 != 0 ? '1' : '0';
    }
    return bits;
}

/// The exact decimal text of a binary one, most significant digit first, computed by a slow method.
std::string literal_unsigned(const std::string& bits) {
    const std::string reversed = literal_radix_conversion::binary_to_decimal(bits, false);
    return {reversed.rbegin(), reversed.rend()};
}

std::string twos_complement(std::string bits) {
    for (char& bit : bits) {
        bit = bit == '1' ? '0' : '1';
    }
    for (auto bit = bits.rbegin(); bit != bits.rend(); ++bit) {
        *bit = *bit == '1' ? '0' : '1';
        if (*bit == '1') {
            break;
        }
    }
    return bits;
}

/// Every text of @p length characters of "0", "1" and "X".
std::vector<std::string> ternary_texts(std::size_t length) {
    std::vector<std::string> texts = {""};
    for (std::size_t position = 0; position < length; ++position) {
        std::vector<std::string> longer;
        for (const std::string& text : texts) {
            for (const char digit : {'0', '1', 'X'}) {
                longer.push_back(text + digit);
            }
        }
        texts = longer;
    }
    return texts;
}

/// The text of bits that may be don't-care; no value if a digit would be mixed.
std::optional<std::string> expected_ternary_text(std::string bits, std::size_t group_size) {
    while (bits.size() % group_size != 0) {
        // A short group is padded like its bits: with don't-care only if they are don't-care.
        bits.insert(0, 1, bits.front() == 'X' ? 'X' : '0');
    }
    std::string text;
    for (std::size_t start = 0; start < bits.size(); start += group_size) {
        const std::string group = bits.substr(start, group_size);
        if (group == std::string(group_size, 'X')) {
            text += 'X';
        } else if (group.find('X') != std::string::npos) {
            return std::nullopt;
        } else {
            text += literal_radix_conversion::binary_to_grouped_radix(group, static_cast<int>(group_size));
        }
    }
    return text;
}

} // namespace

TEST(ExactBits, SignedDecimalIsTwosComplement) {
    std::string bits;
    EXPECT_EQ(exact_bits("-5", RADIX_DEC, 8, bits), std::nullopt);
    EXPECT_EQ(bits, "11111011");
    EXPECT_EQ(exact_bits("-128", RADIX_DEC, 8, bits), std::nullopt);
    EXPECT_EQ(bits, "10000000");
    EXPECT_EQ(exact_bits("127", RADIX_DEC, 8, bits), std::nullopt);
    EXPECT_EQ(bits, "01111111");
    EXPECT_EQ(exact_bits("-0", RADIX_DEC, 8, bits), std::nullopt);
    EXPECT_EQ(bits, "00000000");
}

TEST(ExactBits, ResultIsReplacedAndKeptAfterAnError) {
    std::string bits = "old";
    EXPECT_EQ(exact_bits("300", RADIX_UNS, 8, bits), error(kind::too_wide, 0, 9));
    EXPECT_EQ(bits, "old");
    EXPECT_EQ(exact_bits("3", RADIX_UNS, 2, bits), std::nullopt);
    EXPECT_EQ(bits, "11");
}

TEST(ExactBits, InputMayBeTheResult) {
    std::string word = "A5";
    EXPECT_EQ(exact_bits(word, RADIX_HEX, 8, word), std::nullopt);
    EXPECT_EQ(word, "10100101");
    EXPECT_EQ(exact_text(word, RADIX_DEC, word), std::nullopt);
    EXPECT_EQ(word, "-91");
}

TEST(ExactBits, LeadingZerosDoNotCount) {
    std::string bits;
    EXPECT_EQ(exact_bits("0003", RADIX_HEX, 2, bits), std::nullopt);
    EXPECT_EQ(bits, "11");
    EXPECT_EQ(exact_bits("-0002", RADIX_DEC, 2, bits), std::nullopt);
    EXPECT_EQ(bits, "10");
}

TEST(ExactBits, DontCareDigitsGiveDontCareBits) {
    std::string bits;
    EXPECT_EQ(exact_bits("x5", RADIX_HEX, 8, bits), std::nullopt);
    EXPECT_EQ(bits, "XXXX0101");
    EXPECT_EQ(exact_bits("X5", RADIX_OCT, 8, bits), std::nullopt);
    EXPECT_EQ(bits, "00XXX101");
    EXPECT_EQ(exact_bits("1x", RADIX_BIN, 4, bits), std::nullopt);
    EXPECT_EQ(bits, "001X");
}

TEST(ExactBits, DontCareDigitAcrossTheTopGivesTheBitsOfTheWord) {
    std::string bits;
    EXPECT_EQ(exact_bits("XX", RADIX_HEX, 6, bits), std::nullopt);
    EXPECT_EQ(bits, "XXXXXX");
    EXPECT_EQ(exact_bits("0X3", RADIX_HEX, 5, bits), std::nullopt);
    EXPECT_EQ(bits, "X0011");
}

TEST(ExactBits, DontCareDigitAboveTheWordIsTooWide) {
    EXPECT_EQ(error_of("XX", {RADIX_HEX, RADIX_BIN, 4}), error(kind::too_wide, 0, 5));
    EXPECT_EQ(error_of("0X11", {RADIX_BIN, RADIX_BIN, 2}), error(kind::too_wide, 1, 3));
}

TEST(ExactBits, DontCareDigitsCanBeRefused) {
    std::string bits = "old";
    EXPECT_EQ(exact_bits("5x", RADIX_HEX, 8, bits, dont_care_digits::refused), error(kind::dont_care, 1));
    EXPECT_EQ(bits, "old");
    EXPECT_EQ(exact_bits("55", RADIX_HEX, 8, bits, dont_care_digits::refused), std::nullopt);
}

TEST(ExactBits, TextWithoutDigitsIsEmpty) {
    for (const KVR_MEMORY_RADIXES radix : all_radixes) {
        EXPECT_EQ(error_of("", {radix, RADIX_BIN, 8}), error(kind::empty, 0));
    }
    EXPECT_EQ(error_of("-", {RADIX_DEC, RADIX_BIN, 8}), error(kind::empty, 1));
}

TEST(ExactBits, DigitsOfOtherRadixesAreInvalid) {
    const struct {
        const char* text;
        KVR_MEMORY_RADIXES radix;
        std::size_t position;
    } cases[] = {{"012", RADIX_BIN, 2}, {"18", RADIX_OCT, 1},  {"0xA", RADIX_OCT, 2}, {"1G", RADIX_HEX, 1},
                 {"1A", RADIX_UNS, 1},  {"-1", RADIX_UNS, 0},  {"-1", RADIX_HEX, 0},  {"--1", RADIX_DEC, 1},
                 {"1-", RADIX_DEC, 1},  {"+1", RADIX_DEC, 0},  {"1X", RADIX_DEC, 1},  {"x", RADIX_UNS, 0},
                 {"-X", RADIX_DEC, 1},  {"U", RADIX_HEX, 0},   {"1u", RADIX_BIN, 1},  {" 1", RADIX_HEX, 0},
                 {"1 ", RADIX_DEC, 1},  {"1_0", RADIX_BIN, 1}, {"\xB2", RADIX_UNS, 0}};
    for (const auto& test : cases) {
        EXPECT_EQ(error_of(test.text, {test.radix, RADIX_BIN, 16}), error(kind::invalid_digit, test.position))
            << test.text;
    }
}

TEST(ExactBits, NoByteIsADigitByMistake) {
    const std::string digits = "0123456789ABCDEF";
    for (int byte = 0; byte < 256; ++byte) {
        const char upper = static_cast<char>(byte >= 'a' && byte <= 'f' ? byte - 32 : byte);
        const std::size_t value = digits.find(upper);
        for (const auto& [radix, base] : {std::pair{RADIX_BIN, 2U},
                                          {RADIX_OCT, 8U},
                                          {RADIX_UNS, 10U},
                                          {RADIX_DEC, 10U},
                                          {RADIX_HEX, 16U}}) {
            const std::string text = {'1', static_cast<char>(byte)};
            const auto found = error_of(text, {radix, radix, 32, dont_care_digits::refused});
            const bool is_dont_care = (byte == 'x' || byte == 'X') && base != 10;
            const kind expected = is_dont_care ? kind::dont_care : kind::invalid_digit;
            if (value < base) {
                EXPECT_EQ(found, std::nullopt) << byte;
            } else {
                EXPECT_EQ(found, error(expected, 1)) << byte;
            }
        }
    }
}

TEST(ExactBits, TooWideReportsTheFirstDigitThatCountsAndTheWidthNeeded) {
    EXPECT_EQ(error_of("0012", {RADIX_HEX, RADIX_BIN, 4}), error(kind::too_wide, 2, 5));
    EXPECT_EQ(error_of("0072", {RADIX_OCT, RADIX_HEX, 5}), error(kind::too_wide, 2, 6));
    EXPECT_EQ(error_of("128", {RADIX_DEC, RADIX_DEC, 8}), error(kind::too_wide, 0, 9));
    EXPECT_EQ(error_of("-0129", {RADIX_DEC, RADIX_HEX, 8}), error(kind::too_wide, 2, 9));
    EXPECT_EQ(error_of("256", {RADIX_UNS, RADIX_BIN, 8}), error(kind::too_wide, 0, 9));
    EXPECT_EQ(error_of("18446744073709551616", {RADIX_UNS, RADIX_BIN, 64}), error(kind::too_wide, 0, 65));
}

TEST(ExactText, HexadecimalAndOctalHaveTheDigitsOfTheWidth) {
    std::string text;
    EXPECT_EQ(exact_text("0000001111", RADIX_HEX, text), std::nullopt);
    EXPECT_EQ(text, "00F");
    EXPECT_EQ(exact_text("0000001111", RADIX_OCT, text), std::nullopt);
    EXPECT_EQ(text, "0017");
}

TEST(ExactText, EmptyDigitsAreAnError) {
    std::string text = "old";
    EXPECT_EQ(exact_text("", RADIX_HEX, text), error(kind::empty, 0));
    EXPECT_EQ(text, "old");
}

TEST(ExactText, OtherCharactersAreInvalid) {
    std::string text = "old";
    EXPECT_EQ(exact_text("01U1", RADIX_BIN, text), error(kind::invalid_digit, 2));
    EXPECT_EQ(text, "old");
}

TEST(ExactText, DecimalCannotShowDontCares) {
    std::string text = "old";
    EXPECT_EQ(exact_text("0X1X", RADIX_DEC, text), error(kind::dont_care, 1));
    EXPECT_EQ(exact_text("XXXX", RADIX_UNS, text), error(kind::dont_care, 0));
    EXPECT_EQ(text, "old");
}

TEST(ExactText, DigitOfKnownAndDontCareBitsCannotBeShown) {
    std::string text = "old";
    EXPECT_EQ(exact_text("XXXX010X", RADIX_HEX, text), error(kind::dont_care, 7));
    EXPECT_EQ(exact_text("1XX", RADIX_HEX, text), error(kind::dont_care, 1));
    EXPECT_EQ(text, "old");
    EXPECT_EQ(exact_text("xxXX0101", RADIX_HEX, text), std::nullopt);
    EXPECT_EQ(text, "X5");
}

TEST(ExactText, AllShortDigitsWithDontCaresAreShownOrRefused) {
    for (std::size_t length = 1; length <= 7; ++length) {
        for (const std::string& bits : ternary_texts(length)) {
            for (const auto& [radix, group_size] : {std::pair{RADIX_BIN, std::size_t{1}},
                                                    {RADIX_HEX, std::size_t{4}},
                                                    {RADIX_OCT, std::size_t{3}}}) {
                const auto expected = expected_ternary_text(bits, group_size);
                std::string text = "old";
                const auto found = exact_text(bits, radix, text);
                ASSERT_EQ(found.has_value(), !expected.has_value()) << bits << " in " << radix;
                ASSERT_EQ(text, expected.value_or("old")) << bits << " in " << radix;
                std::string back;
                if (!found) {
                    ASSERT_EQ(exact_bits(text, radix, static_cast<std::uint32_t>(length), back),
                              std::nullopt);
                    ASSERT_EQ(back, bits);
                }
            }
        }
    }
}

TEST(AppendExactWord, DontCareThatTheTargetCannotShowIsFoundInTheText) {
    // 1, 4 don't-care bits, 4 known bits: octal digits of 3 bits divide the don't-care digit.
    EXPECT_EQ(error_of("1X5", {RADIX_HEX, RADIX_OCT, 9}), error(kind::dont_care, 1));
    EXPECT_EQ(error_of("00X", {RADIX_OCT, RADIX_HEX, 9}), error(kind::dont_care, 2));
    EXPECT_EQ(error_of("1X5", {RADIX_HEX, RADIX_DEC, 9}), error(kind::dont_care, 1));
    EXPECT_EQ(converted("XXX000", {RADIX_HEX, RADIX_OCT, 24}), "XXXX0000");
    EXPECT_EQ(converted("0X", {RADIX_OCT, RADIX_HEX, 3}), "X");
}

TEST(AppendExactWord, TextIsAppended) {
    std::string line = "0000 : ";
    EXPECT_EQ(append_exact_word(line, "255", {RADIX_UNS, RADIX_HEX, 12}), std::nullopt);
    line += ';';
    EXPECT_EQ(line, "0000 : 0FF;");
}

TEST(AppendExactWord, SameRadixIsBroughtIntoShape) {
    EXPECT_EQ(converted("af", {RADIX_HEX, RADIX_HEX, 17}), "000AF");
    EXPECT_EQ(converted("0000003x", {RADIX_HEX, RADIX_HEX, 6}), "3X");
    EXPECT_EQ(converted("X3", {RADIX_HEX, RADIX_HEX, 6}), "X3");
    EXPECT_EQ(converted("007", {RADIX_UNS, RADIX_UNS, 8}), "7");
    EXPECT_EQ(converted("-007", {RADIX_DEC, RADIX_DEC, 8}), "-7");
    EXPECT_EQ(converted("-0", {RADIX_DEC, RADIX_DEC, 8}), "0");
}

TEST(AppendExactWord, EveryWordUpToTenBitsIsExactInAllPairs) {
    for (int width = 1; width <= 10; ++width) {
        for (unsigned pattern = 0; pattern < 1U << width; ++pattern) {
            const std::string bits = digits_of(pattern, 2, width);
            for (const KVR_MEMORY_RADIXES from : all_radixes) {
                const std::string text = expected_text(pattern, width, from);
                std::string back;
                ASSERT_EQ(exact_bits(text, from, static_cast<std::uint32_t>(width), back), std::nullopt)
                    << text;
                ASSERT_EQ(back, bits) << text;
                ASSERT_EQ(exact_text(bits, from, back), std::nullopt);
                ASSERT_EQ(back, text) << bits;
                for (const KVR_MEMORY_RADIXES to : all_radixes) {
                    ASSERT_EQ(converted(text, {from, to, static_cast<std::size_t>(width)}),
                              expected_text(pattern, width, to))
                        << text << " from " << from << " to " << to << " at " << width;
                }
            }
        }
    }
}

TEST(AppendExactWord, EveryValueOutsideTenBitsIsTooWide) {
    for (int width = 1; width <= 10; ++width) {
        for (int value = -1200; value <= 1200; ++value) {
            const auto found =
                error_of(std::to_string(value), {RADIX_DEC, RADIX_BIN, static_cast<std::size_t>(width)});
            const std::uint64_t needed = signed_bits(value);
            const std::size_t position = value < 0 ? 1U : 0U;
            ASSERT_EQ(found, needed > static_cast<unsigned>(width)
                                 ? std::optional(error(kind::too_wide, position, needed))
                                 : std::nullopt)
                << value << " at " << width;
        }
        for (unsigned value = 1U << width; value < 2500; ++value) {
            const exact_word_error expected = error(kind::too_wide, 0, unsigned_bits(value));
            const int wide = static_cast<int>(unsigned_bits(value));
            for (const KVR_MEMORY_RADIXES from : {RADIX_BIN, RADIX_UNS, RADIX_HEX, RADIX_OCT}) {
                ASSERT_EQ(error_of(expected_text(value, wide, from),
                                   {from, RADIX_HEX, static_cast<std::size_t>(width)}),
                          expected)
                    << value << " from " << from << " at " << width;
            }
        }
    }
}

TEST(AppendExactWord, WideWordsRoundTripThroughAllPairs) {
    std::mt19937_64 random(15);
    for (const std::size_t width :
         {11U, 31U, 32U, 33U, 63U, 64U, 65U, 127U, 128U, 129U, 256U, 1000U, 1024U, 1281U, 4096U}) {
        const std::string words[] = {random_bits(random, width), std::string(width, '0'),
                                     std::string(width, '1'), "1" + std::string(width - 1, '0'),
                                     "0" + std::string(width - 1, '1')};
        for (const std::string& bits : words) {
            for (const KVR_MEMORY_RADIXES from : all_radixes) {
                const std::string text = converted(bits, {RADIX_BIN, from, width});
                for (const KVR_MEMORY_RADIXES to : all_radixes) {
                    const std::string other = converted(text, {from, to, width});
                    ASSERT_EQ(converted(other, {to, RADIX_BIN, width}), bits) << from << " to " << to;
                }
            }
        }
    }
}

TEST(AppendExactWord, WideDecimalTextsAreThoseOfTheLiteralSteps) {
    std::mt19937_64 random(16);
    for (const std::size_t width : {64U, 65U, 100U, 333U, 1100U}) {
        const std::string low_bits = random_bits(random, width - 1);
        const std::string negative = "-" + literal_unsigned(twos_complement("1" + low_bits));
        EXPECT_EQ(converted("0" + low_bits, {RADIX_BIN, RADIX_DEC, width}), literal_unsigned(low_bits));
        EXPECT_EQ(converted("1" + low_bits, {RADIX_BIN, RADIX_DEC, width}), negative);
        EXPECT_EQ(converted("1" + low_bits, {RADIX_BIN, RADIX_UNS, width}), literal_unsigned("1" + low_bits));
        EXPECT_EQ(converted(negative, {RADIX_DEC, RADIX_BIN, width}), "1" + low_bits);
    }
}

TEST(AppendExactWord, SignedDecimalEndsOfWideWordsAreExact) {
    EXPECT_EQ(converted("-9223372036854775808", {RADIX_DEC, RADIX_HEX, 64}), "8000000000000000");
    EXPECT_EQ(converted("9223372036854775807", {RADIX_DEC, RADIX_HEX, 64}), "7FFFFFFFFFFFFFFF");
    EXPECT_EQ(error_of("9223372036854775808", {RADIX_DEC, RADIX_HEX, 64}), error(kind::too_wide, 0, 65));
    EXPECT_EQ(error_of("-9223372036854775809", {RADIX_DEC, RADIX_HEX, 64}), error(kind::too_wide, 1, 65));
    EXPECT_EQ(converted("-1", {RADIX_DEC, RADIX_HEX, 130}), "3" + std::string(32, 'F'));
}
