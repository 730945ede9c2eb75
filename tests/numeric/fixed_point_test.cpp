#include "kvr/numeric/fixed_point.h"
#include "kvr/numeric/radix_conversion.h"
#include "tests/allocation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <ostream>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct conversion {
    bool result;
    std::string output;

    bool operator==(const conversion& other) const {
        return result == other.result && output == other.output;
    }
};

void PrintTo(const conversion& value, std::ostream* out) {
    *out << (value.result ? "true, \"" : "false, \"") << value.output << '"';
}

const std::string untouched = "untouched";

conversion convert(const std::string& input, KVR_MEMORY_RADIXES from, KVR_MEMORY_RADIXES to,
                   const std::string& format) {
    std::string output = untouched;
    const bool result = kvr_radix_conversion_fixed_point(input, &output, from, to, format);
    return {result, output};
}

conversion from_fixed(const std::string& input, KVR_MEMORY_RADIXES to, const std::string& format) {
    return convert(input, RADIX_FIXED_POINT, to, format);
}

conversion to_fixed(const std::string& bits, const std::string& format) {
    return convert(bits, RADIX_BIN, RADIX_FIXED_POINT, format);
}

struct example {
    const char* fraction;
    const char* bits;
    const char* hexadecimal;
};

constexpr example examples_of_one_and_three_bits[] = {
    {"0.625", "0101", "5"}, {"-0.625", "1101", "D"}, {"1.0", "0000", "0"},
    {"-1.0", "1000", "8"},  {"0.3", "0010", "2"},
};

TEST(FixedPoint, FractionBecomesSignAndMagnitudeBits) {
    for (const example& each : examples_of_one_and_three_bits) {
        EXPECT_EQ(from_fixed(each.fraction, RADIX_BIN, "1.3"), (conversion{true, each.bits}));
    }
}

TEST(FixedPoint, FractionBecomesAnyOtherRadix) {
    for (const example& each : examples_of_one_and_three_bits) {
        EXPECT_EQ(from_fixed(each.fraction, RADIX_HEX, "1.3"), (conversion{true, each.hexadecimal}));
    }
    EXPECT_EQ(from_fixed("0.625", RADIX_OCT, "1.3"), (conversion{true, "05"}));
    EXPECT_EQ(from_fixed("0.625", RADIX_DEC, "1.3"), (conversion{true, "5"}));
    EXPECT_EQ(from_fixed("-0.625", RADIX_DEC, "1.3"), (conversion{true, "-2"}));
    EXPECT_EQ(from_fixed("-0.625", RADIX_UNS, "1.3"), (conversion{true, "31"}));
}

TEST(FixedPoint, BitsBecomeAFraction) {
    EXPECT_EQ(to_fixed("0101", "1.3"), (conversion{true, "0.625"}));
    EXPECT_EQ(to_fixed("1101", "1.3"), (conversion{true, "-0.625"}));
    EXPECT_EQ(to_fixed("1000", "1.3"), (conversion{true, "-1.0"}));
    EXPECT_EQ(to_fixed("0000", "1.3"), (conversion{true, "0.0"}));
    EXPECT_EQ(to_fixed("0100", "1.3"), (conversion{true, "0.5"}));
}

TEST(FixedPoint, OtherRadixesBecomeAFraction) {
    EXPECT_EQ(convert("5", RADIX_HEX, RADIX_FIXED_POINT, "1.3"), (conversion{true, "0.625"}));
    EXPECT_EQ(convert("05", RADIX_OCT, RADIX_FIXED_POINT, "1.3"), (conversion{true, "0.625"}));
    EXPECT_EQ(convert("5", RADIX_DEC, RADIX_FIXED_POINT, "1.3"), (conversion{true, "0.625"}));
    EXPECT_EQ(convert("-5", RADIX_DEC, RADIX_FIXED_POINT, "1.3"), (conversion{true, "-0.25"}));
    EXPECT_EQ(convert("13", RADIX_UNS, RADIX_FIXED_POINT, "1.3"), (conversion{true, "-0.625"}));
}

TEST(FixedPoint, FractionIsCutToTheFormat) {
    EXPECT_EQ(from_fixed("0.9999", RADIX_BIN, "2.3"), (conversion{true, "00111"}));
    EXPECT_EQ(convert("0.3", RADIX_FIXED_POINT, RADIX_FIXED_POINT, "1.3"), (conversion{true, "0.25"}));
    EXPECT_EQ(convert("-0.99", RADIX_FIXED_POINT, RADIX_FIXED_POINT, "4.2"), (conversion{true, "-0.75"}));
}

TEST(FixedPoint, IntegerBitsThatDifferAreFalseWithTheOutputWritten) {
    EXPECT_EQ(to_fixed("1111", "2.2"), (conversion{true, "-0.75"}));
    EXPECT_EQ(to_fixed("0111", "2.2"), (conversion{false, "-0.75"}));
    EXPECT_EQ(to_fixed("0011", "2.2"), (conversion{true, "0.75"}));
    EXPECT_EQ(to_fixed("1011", "2.2"), (conversion{false, "0.75"}));
    EXPECT_EQ(to_fixed("0100", "2.2"), (conversion{false, "-1.0"}));
}

TEST(FixedPoint, SignIsThatOfTheFirstIntegerBitThatDiffers) {
    EXPECT_EQ(to_fixed("00101", "4.1"), (conversion{false, "-0.5"}));
    EXPECT_EQ(to_fixed("11011", "4.1"), (conversion{false, "0.5"}));
}

TEST(FixedPoint, ShortBitsRepeatTheirFirst) {
    EXPECT_EQ(to_fixed("101", "4.4"), (conversion{true, "-0.8125"}));
    EXPECT_EQ(to_fixed("011", "4.4"), (conversion{true, "0.1875"}));
    EXPECT_EQ(to_fixed("1", "1.3"), (conversion{true, "-0.875"}));
}

TEST(FixedPoint, LongBitsLoseTheirFront) {
    EXPECT_EQ(to_fixed("11110101", "1.3"), (conversion{true, "0.625"}));
    EXPECT_EQ(to_fixed("00001101", "1.3"), (conversion{true, "-0.625"}));
}

TEST(FixedPoint, DontCareBitsCountAsZero) {
    EXPECT_EQ(to_fixed("0X1", "1.2"), (conversion{true, "0.25"}));
    EXPECT_EQ(to_fixed("X11", "1.2"), (conversion{true, "0.75"}));
    EXPECT_EQ(to_fixed("0X11", "2.2"), (conversion{true, "0.75"}));
    EXPECT_EQ(to_fixed("1X11", "2.2"), (conversion{false, "0.75"}));
}

TEST(FixedPoint, BrokenFormatOnTheWayToAFractionIsFalseAndTouchesNothing) {
    for (const char* format : {"", "0.4", "4", "4.0", "4.", ".4", "-1.4", "4.-1", "x.y", "."}) {
        EXPECT_EQ(to_fixed("0101", format), (conversion{false, untouched})) << format;
        EXPECT_EQ(convert("0.5", RADIX_FIXED_POINT, RADIX_FIXED_POINT, format),
                  (conversion{false, untouched}))
            << format;
    }
}

TEST(FixedPoint, BrokenFormatOnTheWayFromAFractionIsTrueAndGivesNothing) {
    for (const char* format : {"", "0.4", "4"}) {
        EXPECT_EQ(from_fixed("0.5", RADIX_HEX, format), (conversion{true, ""})) << format;
        EXPECT_EQ(from_fixed("0.5", RADIX_BIN, format), (conversion{true, ""})) << format;
        EXPECT_EQ(from_fixed("0.5", RADIX_UNS, format), (conversion{true, "0"})) << format;
        EXPECT_EQ(from_fixed("", RADIX_OCT, format), (conversion{true, ""})) << format;
    }
}

TEST(FixedPoint, BrokenFormatOnTheWayToSignedDecimalIsOutOfRange) {
    EXPECT_THROW(from_fixed("0.5", RADIX_DEC, "4"), std::out_of_range);
    EXPECT_THROW(from_fixed("0.5", RADIX_DEC, ""), std::out_of_range);
}

TEST(FixedPoint, FormatIsReadLeniently) {
    EXPECT_EQ(to_fixed("0101", " 1. 3"), (conversion{true, "0.625"}));
    EXPECT_EQ(to_fixed("0101", "+1x.3y"), (conversion{true, "0.625"}));
    EXPECT_EQ(to_fixed("0101", "1.3.9"), (conversion{true, "0.625"}));
}

TEST(FixedPoint, EmptyInputIsOutOfRange) {
    EXPECT_THROW(from_fixed("", RADIX_BIN, "1.3"), std::out_of_range);
    EXPECT_THROW(to_fixed("", "1.3"), std::out_of_range);
    EXPECT_THROW(convert("", RADIX_HEX, RADIX_FIXED_POINT, "1.3"), std::out_of_range);
    EXPECT_THROW(convert("", RADIX_DEC, RADIX_FIXED_POINT, "1.3"), std::out_of_range);
}

TEST(FixedPoint, EmptySignedDecimalIsOutOfRangeBeforeTheFormatIsChecked) {
    EXPECT_THROW(convert("", RADIX_DEC, RADIX_FIXED_POINT, ""), std::out_of_range);
}

TEST(FixedPoint, OutputStaysWhenAnErrorEscapes) {
    std::string output = untouched;
    EXPECT_THROW(kvr_radix_conversion_fixed_point("", &output, RADIX_BIN, RADIX_FIXED_POINT, "1.3"),
                 std::out_of_range);
    EXPECT_EQ(output, untouched);
}

TEST(FixedPoint, EmptyUnsignedDecimalIsZero) {
    EXPECT_EQ(convert("", RADIX_UNS, RADIX_FIXED_POINT, "1.3"), (conversion{true, "0.0"}));
}

TEST(FixedPoint, NoRadixIsFalseAndTouchesNothing) {
    EXPECT_EQ(convert("1", RADIX_NONE, RADIX_FIXED_POINT, "1.3"), (conversion{false, untouched}));
    EXPECT_EQ(convert("1", RADIX_FIXED_POINT, RADIX_NONE, "1.3"), (conversion{false, untouched}));
    EXPECT_EQ(convert("1", RADIX_BIN, RADIX_NONE, "1.3"), (conversion{false, untouched}));
    EXPECT_EQ(convert("1", RADIX_NONE, RADIX_NONE, ""), (conversion{false, untouched}));
}

TEST(FixedPoint, OtherRadixesConvertWithoutAFormat) {
    EXPECT_EQ(convert("1F", RADIX_HEX, RADIX_BIN, ""), (conversion{true, "00011111"}));
    EXPECT_EQ(convert("1100", RADIX_BIN, RADIX_UNS, "0.0"), (conversion{true, "21"}));
    EXPECT_EQ(convert("x5", RADIX_HEX, RADIX_BIN, "1.3"), (conversion{true, "XXXX0101"}));
}

TEST(FixedPoint, UnknownRadixHasNoBits) {
    constexpr auto unknown = static_cast<KVR_MEMORY_RADIXES>(9);
    EXPECT_EQ(from_fixed("0.5", unknown, "1.3"), (conversion{true, ""}));
    EXPECT_THROW(convert("0", unknown, RADIX_FIXED_POINT, "1.3"), std::out_of_range);
    EXPECT_EQ(convert("0", unknown, RADIX_FIXED_POINT, ""), (conversion{false, untouched}));
}

TEST(FixedPoint, OutputMayBeTheInput) {
    std::string text = "0.625";
    EXPECT_TRUE(kvr_radix_conversion_fixed_point(text, &text, RADIX_FIXED_POINT, RADIX_BIN, "1.3"));
    EXPECT_EQ(text, "0101");
    EXPECT_TRUE(kvr_radix_conversion_fixed_point(text, &text, RADIX_BIN, RADIX_FIXED_POINT, "1.3"));
    EXPECT_EQ(text, "0.625");
}

TEST(FixedPoint, OneIsTakenOffOnlyOnce) {
    EXPECT_EQ(from_fixed("1.25", RADIX_BIN, "1.4"), (conversion{true, "00100"}));
    EXPECT_EQ(from_fixed("-1.25", RADIX_BIN, "1.4"), (conversion{true, "10100"}));
    EXPECT_EQ(from_fixed("2.0", RADIX_BIN, "1.4"), (conversion{true, "01111"}));
    EXPECT_EQ(from_fixed("-7.25", RADIX_BIN, "1.4"), (conversion{true, "11111"}));
    EXPECT_EQ(from_fixed("inf", RADIX_BIN, "1.4"), (conversion{true, "01111"}));
    EXPECT_EQ(from_fixed("1e999", RADIX_BIN, "1.4"), (conversion{true, "01111"}));
}

TEST(FixedPoint, TextThatIsNoNumberIsZero) {
    EXPECT_EQ(from_fixed("x", RADIX_BIN, "1.3"), (conversion{true, "0000"}));
    EXPECT_EQ(from_fixed("-", RADIX_BIN, "1.3"), (conversion{true, "1000"}));
    EXPECT_EQ(from_fixed("nan", RADIX_BIN, "1.3"), (conversion{true, "0000"}));
}

TEST(FixedPoint, NumberIsReadLeniently) {
    EXPECT_EQ(from_fixed("+0.5x", RADIX_BIN, "1.3"), (conversion{true, "0100"}));
    EXPECT_EQ(from_fixed("625e-3", RADIX_BIN, "1.3"), (conversion{true, "0101"}));
    EXPECT_EQ(from_fixed("0x.8", RADIX_BIN, "1.3"), (conversion{true, "0100"}));
}

TEST(FixedPoint, OnlyALeadingMinusMakesTheSignBits) {
    EXPECT_EQ(from_fixed(" -0.5", RADIX_BIN, "2.2"), (conversion{true, "0000"}));
    EXPECT_EQ(from_fixed("--0.5", RADIX_BIN, "2.2"), (conversion{true, "1100"}));
    EXPECT_EQ(from_fixed("-+0.5", RADIX_BIN, "2.2"), (conversion{true, "1110"}));
}

TEST(FixedPoint, LongFractionsAreSummedAsDoubles) {
    EXPECT_EQ(to_fixed("0" + std::string(53, '1'), "1.53"),
              (conversion{true, "0.99999999999999988897769753748434595763683319091796875"}));
    EXPECT_EQ(to_fixed("0" + std::string(54, '1'), "1.54"), (conversion{true, "1.0"}));
    EXPECT_EQ(to_fixed("1" + std::string(60, '1'), "1.60"), (conversion{true, "-1.0"}));
}

TEST(FixedPoint, FractionTextIsExactToTheLastDigit) {
    EXPECT_EQ(to_fixed("0" + std::string(19, '0') + "1", "1.20"),
              (conversion{true, "0.00000095367431640625"}));
    EXPECT_EQ(from_fixed("0.00000095367431640625", RADIX_BIN, "1.20"),
              (conversion{true, "0" + std::string(19, '0') + "1"}));
}

std::string printed_power_of_two(int exponent) {
    char buffer[1100];
    std::snprintf(buffer, sizeof buffer, "%.*f", exponent,
                  std::strtod(("0x1p-" + std::to_string(exponent)).c_str(), nullptr));
    return buffer;
}

TEST(FixedPoint, SmallestFractionIsExact) {
    EXPECT_EQ(to_fixed("0" + std::string(1073, '0') + "1", "1.1074"),
              (conversion{true, printed_power_of_two(1074)}));
}

TEST(FixedPoint, EverySumIsRoundedToADouble) {
    // Each of the last two bits is too small by itself; together they are not.
    EXPECT_EQ(to_fixed("0" + std::string(52, '1') + "011", "1.55"),
              (conversion{true, "0.9999999999999997779553950749686919152736663818359375"}));
}

TEST(FixedPoint, BitsTooSmallForADoubleAddNothing) {
    EXPECT_EQ(to_fixed("0" + std::string(1074, '0') + "1", "1.1075"), (conversion{true, "0.0"}));
    EXPECT_EQ(to_fixed("1" + std::string(2000, '0') + "1", "1.2001"), (conversion{true, "-1.0"}));
}

TEST(FixedPoint, BitsTooSmallForADoubleAreSetInAWord) {
    EXPECT_EQ(from_fixed("0.5", RADIX_BIN, "1.1077"),
              (conversion{true, "01" + std::string(1073, '0') + "111"}));
}

TEST(FixedPoint, MillionsOfFractionBitsAreExact) {
    const conversion word = from_fixed("-0.75", RADIX_BIN, "1.3000000");
    EXPECT_TRUE(word.result);
    EXPECT_EQ(word.output.size(), 3000001U);
    EXPECT_EQ(word.output.substr(0, 5), "11100");
    EXPECT_EQ(to_fixed(word.output, "1.3000000"), (conversion{true, "-0.75"}));
}

TEST(FixedPoint, BitsTooSmallForADoubleAreNotSetByLessThanNothing) {
    EXPECT_EQ(from_fixed("--0.5", RADIX_BIN, "1.1077"), (conversion{true, "1" + std::string(1077, '0')}));
    EXPECT_EQ(from_fixed("nan", RADIX_BIN, "1.1077"), (conversion{true, std::string(1078, '0')}));
}

TEST(FixedPoint, WordsHaveAsManyBitsAsTheFormatSays) {
    constexpr std::size_t many = 20'000'000;
    const conversion fraction = from_fixed("-0.5", RADIX_BIN, "1." + std::to_string(many));
    EXPECT_TRUE(fraction.result);
    EXPECT_TRUE(fraction.output == "11" + std::string(1073, '0') + std::string(many - 1074, '1'));
    const conversion integer = from_fixed("-0.5", RADIX_HEX, std::to_string(many) + ".4");
    EXPECT_TRUE(integer.output == std::string(many / 4, 'F') + "8");
    EXPECT_EQ(convert(integer.output, RADIX_HEX, RADIX_FIXED_POINT, "4.4"), (conversion{true, "-0.5"}));
}

TEST(FixedPoint, WordsThatFindNoMemoryThrow) {
    std::string output = "untouched";
    const failing_allocation failing(1); // for the bits: the other texts need no allocation
    EXPECT_THROW(
        kvr_radix_conversion_fixed_point("0.5", &output, RADIX_FIXED_POINT, RADIX_BIN, "9.2000000000"),
        std::bad_alloc);
    EXPECT_TRUE(failing_allocation::happened());
}

TEST(FixedPoint, FractionsAreReadFromWordsOfAnyWidth) {
    EXPECT_EQ(to_fixed("101", "2000000000.2"), (conversion{true, "-0.25"}));
    EXPECT_EQ(to_fixed("01", "1.2000000000"), (conversion{true, "0.0"}));
    EXPECT_EQ(to_fixed("01", "2000000000.2000000000"), (conversion{true, "0.0"}));
    EXPECT_EQ(to_fixed("1", "99999999999.99999999999"), (conversion{true, "-1.0"}));
    EXPECT_EQ(to_fixed("0101", "2147483647.3"), (conversion{true, "0.625"}));
}

TEST(FixedPoint, IntegerBitsAreCheckedAfterTheRepeatedOnes) {
    EXPECT_EQ(to_fixed("0101", "2000000000.2"), (conversion{false, "-0.25"}));
    EXPECT_EQ(to_fixed("1001", "2000000000.2"), (conversion{false, "0.25"}));
}

// The conversion to a fraction, step by step, for a word of full width.
conversion fraction_step_by_step(std::string bits, std::size_t integer_bits, std::size_t fraction_bits) {
    const std::size_t width = integer_bits + fraction_bits;
    bits = width < bits.size() ? bits.substr(bits.size() - width)
                               : std::string(width - bits.size(), bits.at(0)) + bits;
    conversion result{true, ""};
    bool one = bits[0] == '1';
    for (std::size_t i = 1; i < integer_bits && result.result; ++i) {
        result.result = (bits[i] == '1') == one;
        one = bits[i] == '1';
    }
    double fraction = 0.0;
    for (std::size_t i = 0; i < fraction_bits; ++i) {
        fraction += bits[integer_bits + i] == '1' ? 1.0 / static_cast<double>(2ULL << i) : 0.0;
    }
    if (one && fraction == 0.0) {
        return {result.result, "-1.0"};
    }
    char buffer[100];
    std::snprintf(buffer, sizeof buffer, "%.*f", static_cast<int>(fraction_bits), fraction);
    result.output = buffer;
    while (result.output.size() > 3 && result.output.back() == '0') {
        result.output.pop_back();
    }
    result.output.insert(0, one ? "-" : "");
    return result;
}

std::string format_of(std::size_t integer_bits, std::size_t fraction_bits) {
    return std::to_string(integer_bits) + "." + std::to_string(fraction_bits);
}

std::vector<std::string> texts_of_one_to(std::size_t length, const std::string& alphabet) {
    std::vector<std::string> texts;
    for (const char letter : alphabet) {
        texts.emplace_back(1, letter);
    }
    for (std::size_t i = 0; i < texts.size() && texts[i].size() < length; ++i) {
        for (const char letter : alphabet) {
            texts.push_back(texts[i] + letter);
        }
    }
    return texts;
}

TEST(FixedPoint, FractionsAgreeWithAStepByStepReadingOfAllShortWords) {
    const std::vector<std::string> words = texts_of_one_to(13, "01");
    for (std::size_t integer_bits = 1; integer_bits <= 6; ++integer_bits) {
        for (std::size_t fraction_bits = 1; fraction_bits <= 6; ++fraction_bits) {
            const std::string format = format_of(integer_bits, fraction_bits);
            for (const std::string& word : words) {
                ASSERT_EQ(to_fixed(word, format), fraction_step_by_step(word, integer_bits, fraction_bits))
                    << word << " in " << format;
            }
        }
    }
}

TEST(FixedPoint, FractionsAgreeWithAStepByStepReadingOfWordsWithDontCareBits) {
    const std::vector<std::string> words = texts_of_one_to(6, "01X");
    for (std::size_t integer_bits = 1; integer_bits <= 6; ++integer_bits) {
        for (std::size_t fraction_bits = 1; fraction_bits <= 6; ++fraction_bits) {
            const std::string format = format_of(integer_bits, fraction_bits);
            for (const std::string& word : words) {
                ASSERT_EQ(to_fixed(word, format), fraction_step_by_step(word, integer_bits, fraction_bits))
                    << word << " in " << format;
            }
        }
    }
}

TEST(FixedPoint, FractionsAgreeWithAStepByStepReadingOfRandomLongWords) {
    std::mt19937 random(5);
    for (int round = 0; round < 20000; ++round) {
        const std::size_t integer_bits = 1 + random() % 40;
        const std::size_t fraction_bits = 1 + random() % 63;
        std::string word(1 + random() % 120, '0');
        for (char& bit : word) {
            bit = random() % 4 == 0 ? '0' : '1';
        }
        ASSERT_EQ(to_fixed(word, format_of(integer_bits, fraction_bits)),
                  fraction_step_by_step(word, integer_bits, fraction_bits))
            << word << " in " << format_of(integer_bits, fraction_bits);
    }
}

// The bits of a number of 128ths, in whole numbers only.
std::string word_of_128ths(int count, std::size_t integer_bits, std::size_t fraction_bits) {
    std::string word(integer_bits, count < 0 ? '1' : '0');
    int rest = std::abs(count) >= 128 ? std::abs(count) - 128 : std::abs(count);
    for (std::size_t i = 0; i < fraction_bits; ++i) {
        const int weight = 64 >> i;
        const bool set = rest >= weight;
        rest -= set ? weight : 0;
        word += set ? '1' : '0';
    }
    return word;
}

TEST(FixedPoint, WordsAgreeWithWholeNumberArithmetic) {
    for (std::size_t integer_bits = 1; integer_bits <= 6; ++integer_bits) {
        for (std::size_t fraction_bits = 1; fraction_bits <= 6; ++fraction_bits) {
            const std::string format = format_of(integer_bits, fraction_bits);
            for (int count = -400; count <= 400; ++count) {
                char text[40];
                std::snprintf(text, sizeof text, "%.7f", count / 128.0);
                ASSERT_EQ(from_fixed(text, RADIX_BIN, format),
                          (conversion{true, word_of_128ths(count, integer_bits, fraction_bits)}))
                    << text << " in " << format;
            }
        }
    }
}

TEST(FixedPoint, EveryFractionComesBackFromItsWord) {
    for (std::size_t fraction_bits = 1; fraction_bits <= 6; ++fraction_bits) {
        const std::string format = format_of(3, fraction_bits);
        for (const std::string& fraction : texts_of_one_to(fraction_bits, "01")) {
            const std::string padded = fraction + std::string(fraction_bits - fraction.size(), '0');
            for (const char* sign : {"000", "111"}) {
                const std::string word = sign + padded;
                ASSERT_EQ(from_fixed(to_fixed(word, format).output, RADIX_BIN, format),
                          (conversion{true, word}));
            }
        }
    }
}

std::string to_binary_format(const std::string& input) {
    std::string output = untouched;
    EXPECT_TRUE(kvr_convert_numeric_string_to_binary_format(input, output));
    return output;
}

TEST(BinaryFormat, TakesWhatFollowsTheBinaryPrefixUnchecked) {
    EXPECT_EQ(to_binary_format("0b10x1"), "10x1");
    EXPECT_EQ(to_binary_format("0b012 hello"), "012 hello");
}

TEST(BinaryFormat, ConvertsHexadecimalDigits) {
    EXPECT_EQ(to_binary_format("0xA5"), "10100101");
    EXPECT_EQ(to_binary_format("0x1f"), "00011111");
    EXPECT_EQ(to_binary_format("0xX5"), "XXXX0101");
}

TEST(BinaryFormat, ConvertsUnsignedDecimal) {
    EXPECT_EQ(to_binary_format("13"), "1101");
    EXPECT_EQ(to_binary_format("0"), "0");
    EXPECT_EQ(to_binary_format("0013"), "1101");
    EXPECT_EQ(to_binary_format("18446744073709551616"), "1" + std::string(64, '0'));
}

TEST(BinaryFormat, PrefixWithoutDigitsIsReadAsDecimal) {
    EXPECT_EQ(to_binary_format("0x"), convert_to_binary_string("0x", RADIX_UNS));
    EXPECT_NE(to_binary_format("0x"), "");
    EXPECT_EQ(to_binary_format("0b"), convert_to_binary_string("0b", RADIX_UNS));
    EXPECT_NE(to_binary_format("0b"), "");
}

TEST(BinaryFormat, UpperCasePrefixIsReadAsDecimal) {
    EXPECT_EQ(to_binary_format("0XA5"), convert_to_binary_string("0XA5", RADIX_UNS));
    EXPECT_NE(to_binary_format("0XA5"), "10100101");
    EXPECT_EQ(to_binary_format("0B10"), convert_to_binary_string("0B10", RADIX_UNS));
    EXPECT_NE(to_binary_format("0B10"), "10");
}

TEST(BinaryFormat, EmptyTextIsZero) {
    EXPECT_EQ(to_binary_format(""), "0");
}

TEST(BinaryFormat, OutputMayBeTheInput) {
    std::string text = "0xA5";
    EXPECT_TRUE(kvr_convert_numeric_string_to_binary_format(text, text));
    EXPECT_EQ(text, "10100101");
}

} // namespace
