#include "kvr/numeric/value_syntax.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct syntax_case {
    const char* text;
    bool expected;
};

struct width_case {
    const char* text;
    int width;
    bool expected;
};

/// All texts of three characters in which one is any byte and the others are @p filler.
template <typename Check>
void for_every_byte_in_every_position(const std::string& filler, Check check) {
    for (std::size_t position = 0; position < filler.size(); ++position) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string text = filler;
            text[position] = static_cast<char>(byte);
            check(text, position, static_cast<unsigned char>(byte));
        }
    }
}

bool is_digit(unsigned char byte) {
    return byte >= '0' && byte <= '9';
}

} // namespace

TEST(IntegerValue, DigitsWithOrWithoutMinusAreIntegers) {
    for (const syntax_case& test : {syntax_case{"", true}, {"-", true}, {"-0", true}, {"007", true}}) {
        EXPECT_EQ(kvr_is_integer_value(test.text), test.expected) << test.text;
    }
}

TEST(IntegerValue, EveryOtherSignOrCharacterIsRefused) {
    for (const syntax_case& test :
         {syntax_case{"1-", false}, {"--1", false}, {"+1", false}, {" 1", false}, {"1.0", false}}) {
        EXPECT_EQ(kvr_is_integer_value(test.text), test.expected) << test.text;
    }
}

TEST(IntegerValue, OnlyDigitsAndALeadingMinusPassAmongAllBytes) {
    for_every_byte_in_every_position(
        "123", [](const std::string& text, std::size_t position, unsigned char byte) {
            EXPECT_EQ(kvr_is_integer_value(text), is_digit(byte) || (position == 0 && byte == '-')) << text;
        });
}

TEST(FloatValue, DotWithADigitAfterItIsAFloat) {
    for (const syntax_case& test : {syntax_case{".5", true}, {"0.25", true}, {"12.0", true}}) {
        EXPECT_EQ(kvr_is_float_value(test.text), test.expected) << test.text;
    }
}

TEST(FloatValue, MissingFractionSignsExponentsAndSecondDotsAreRefused) {
    for (const syntax_case& test : {syntax_case{"5.", false},
                                    {"1", false},
                                    {"-1.5", false},
                                    {"1.2.3", false},
                                    {"1e5", false},
                                    {"", false},
                                    {".", false},
                                    {"..5", false},
                                    {".5.", false}}) {
        EXPECT_EQ(kvr_is_float_value(test.text), test.expected) << test.text;
    }
}

TEST(FloatValue, OnlyDigitsAroundOneDotPassAmongAllBytes) {
    for_every_byte_in_every_position("1.23",
                                     [](const std::string& text, std::size_t position, unsigned char byte) {
                                         const bool expected = position == 1 ? byte == '.' : is_digit(byte);
                                         EXPECT_EQ(kvr_is_float_value(text), expected) << text;
                                     });
}

TEST(HexValue, LengthIsAQuarterOfTheWidthRoundedDown) {
    for (const width_case& test : {width_case{"1aF", 12, true},
                                   {"1aF", 13, true},
                                   {"1aF", 15, true},
                                   {"1aF", 16, false},
                                   {"1aF", 11, false},
                                   {"", 3, true},
                                   {"0", 3, false},
                                   {"", 0, true},
                                   {"12", 10, true},
                                   {"", -1, false},
                                   {"0", -1, false}}) {
        EXPECT_EQ(kvr_is_hex_value(test.text, test.width), test.expected) << test.text << " " << test.width;
    }
}

TEST(HexValue, CharactersBeyondFAndPrefixesAndDontCaresAreRefused) {
    for (const width_case& test :
         {width_case{"1aG", 12, false}, {"0x1", 12, false}, {"1X0", 12, false}, {"-10", 12, false}}) {
        EXPECT_EQ(kvr_is_hex_value(test.text, test.width), test.expected) << test.text;
    }
}

TEST(HexValue, OnlyHexadecimalDigitsOfEitherCasePassAmongAllBytes) {
    for_every_byte_in_every_position("1aF", [](const std::string& text, std::size_t, unsigned char byte) {
        const bool expected = is_digit(byte) || (byte >= 'A' && byte <= 'F') || (byte >= 'a' && byte <= 'f');
        EXPECT_EQ(kvr_is_hex_value(text, 12), expected) << text;
    });
}

TEST(BinaryValue, LengthIsTheWidth) {
    for (const width_case& test : {width_case{"0101", 4, true},
                                   {"0101", 5, false},
                                   {"0101", 3, false},
                                   {"", 0, true},
                                   {"", 1, false},
                                   {"", -1, false}}) {
        EXPECT_EQ(kvr_is_binary_value(test.text, test.width), test.expected)
            << test.text << " " << test.width;
    }
}

TEST(BinaryValue, DontCareIsRefused) {
    EXPECT_FALSE(kvr_is_binary_value("01x1", 4));
}

TEST(BinaryValue, OnlyZeroAndOnePassAmongAllBytes) {
    for_every_byte_in_every_position("010", [](const std::string& text, std::size_t, unsigned char byte) {
        EXPECT_EQ(kvr_is_binary_value(text, 3), byte == '0' || byte == '1') << text;
    });
}
