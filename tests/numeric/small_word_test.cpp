#include "kvr/numeric/exact_value.h"
#include "kvr/numeric/small_word.h"
#include "kvr/numeric/word_conversion.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

constexpr KVR_MEMORY_RADIXES radixes_of_small_words[] = {RADIX_BIN, RADIX_DEC,  RADIX_UNS,        RADIX_HEX,
                                                         RADIX_OCT, RADIX_NONE, RADIX_FIXED_POINT};
constexpr KVR_MEMORY_RADIXES exact_radixes[] = {RADIX_BIN, RADIX_DEC, RADIX_UNS, RADIX_HEX, RADIX_OCT};

/// Mostly digits of one radix, sometimes with a sign, a don't-care digit or any byte in between.
std::string hostile_text(std::mt19937_64& random) {
    const char* const alphabets[] = {"01", "01234567", "0123456789", "0123456789abcdefABCDEF",
                                     "9",  "Ff",       "0"};
    const std::string alphabet = alphabets[random() % std::size(alphabets)];
    std::string text(random() % 24, '0');
    if (random() % 8 == 0) {
        text.resize(text.size() + 60, '0');
    }
    for (char& character : text) {
        character = alphabet[random() % alphabet.size()];
    }
    if (!text.empty() && random() % 4 == 0) {
        text[random() % text.size()] = random() % 2 == 0 ? 'X' : static_cast<char>(random());
    }
    return random() % 3 == 0 ? "-" + text : text;
}

std::size_t critical_width(std::mt19937_64& random) {
    constexpr std::size_t widths[] = {1, 2, 3, 4, 5, 7, 8, 9, 31, 32, 33, 62, 63, 64, 65, 100};
    return widths[random() % std::size(widths)];
}

} // namespace

TEST(SmallWord, ConversionIsThatOfTheExactPath) {
    std::mt19937_64 random(31);
    std::size_t taken = 0;
    for (int count = 0; count < 300000; ++count) {
        const std::string text = hostile_text(random);
        const KVR_MEMORY_RADIXES from = radixes_of_small_words[random() % std::size(radixes_of_small_words)];
        const KVR_MEMORY_RADIXES to = radixes_of_small_words[random() % std::size(radixes_of_small_words)];
        const auto width = static_cast<unsigned>(random() % 2 == 0 ? 0 : critical_width(random));
        std::string output = "untouched";
        if (!kvr::convert_small_word(output, text, from, to, width)) {
            ASSERT_EQ(output, "untouched");
            continue;
        }
        ++taken;
        ASSERT_EQ(output, kvr::convert_word_through_binary_digits(text, from, to, width))
            << testing::PrintToString(text) << " from " << from << " to " << to << " at " << width;
    }
    EXPECT_GT(taken, 20000U);
}

TEST(SmallWord, OutputMayBeTheText) {
    std::string word = "FF0123456789ABCD";
    EXPECT_TRUE(kvr::convert_small_word(word, word, RADIX_HEX, RADIX_UNS, 0));
    EXPECT_EQ(word, "18552154653760057381");
}

TEST(SmallWord, WordsOfUpTo64BitsAreTaken) {
    struct conversion {
        const char* text;
        KVR_MEMORY_RADIXES from;
        bool is_taken;
    };
    constexpr conversion tested[] = {
        {"0", RADIX_DEC, true},
        {"-5", RADIX_DEC, true},
        {"12345678", RADIX_UNS, true},
        {"-4611686018427387904", RADIX_DEC, true},
        {"7", RADIX_OCT, true},
        {"777777777777777777777", RADIX_OCT, true},
        {"0000000000000000000000", RADIX_OCT, false},
        {"FFFFFFFFFFFFFFFF", RADIX_HEX, true},
        {"00000000000000000", RADIX_HEX, false},
        {"1", RADIX_BIN, false},
        {"", RADIX_HEX, false},
    };
    for (const conversion& each : tested) {
        for (const KVR_MEMORY_RADIXES to : {RADIX_HEX, RADIX_OCT, RADIX_DEC, RADIX_UNS, RADIX_BIN}) {
            std::string output;
            EXPECT_EQ(kvr::convert_small_word(output, each.text, each.from, to, 64),
                      each.is_taken && to != RADIX_BIN)
                << each.text << " to " << to;
        }
    }
}

TEST(SmallWord, LargestNumbersAreTaken) {
    std::string output;
    EXPECT_TRUE(kvr::convert_small_word(output, "9999999999999999999", RADIX_UNS, RADIX_HEX, 64));
    EXPECT_EQ(output, "8AC7230489E7FFFF");
    EXPECT_FALSE(kvr::convert_small_word(output, "10000000000000000000", RADIX_UNS, RADIX_HEX, 64));
    EXPECT_FALSE(kvr::convert_small_word(output, "9999999999999999999", RADIX_DEC, RADIX_HEX, 64));
    EXPECT_FALSE(kvr::convert_small_word(output, "00000000000000001", RADIX_HEX, RADIX_UNS, 0));
}

TEST(SmallExactWord, WordIsThatOfTheExactPath) {
    std::mt19937_64 random(32);
    std::size_t taken = 0;
    for (int count = 0; count < 300000; ++count) {
        const std::string text = hostile_text(random);
        kvr::exact_conversion conversion;
        conversion.from = exact_radixes[random() % std::size(exact_radixes)];
        conversion.to = exact_radixes[random() % std::size(exact_radixes)];
        conversion.width = critical_width(random);
        std::string expected = "before ";
        const auto fault = kvr::append_exact_word_plainly(expected, text, conversion);
        std::string actual = "before ";
        ASSERT_EQ(kvr::append_exact_word(actual, text, conversion), fault);
        ASSERT_EQ(actual, expected) << testing::PrintToString(text) << " from " << conversion.from << " to "
                                    << conversion.to << " at " << conversion.width;
        std::string direct = "before ";
        const bool is_taken = kvr::append_small_exact_word(direct, text, conversion);
        ASSERT_EQ(direct, is_taken ? expected : "before ");
        taken += is_taken ? 1 : 0;
    }
    EXPECT_GT(taken, 30000U);
}

TEST(SmallExactWord, WordsThatFitTheWidthAreTaken) {
    struct number {
        const char* text;
        KVR_MEMORY_RADIXES from;
        std::size_t width;
        bool is_taken;
    };
    constexpr number tested[] = {
        {"0", RADIX_DEC, 1, true},
        {"-1", RADIX_DEC, 1, true},
        {"-2", RADIX_DEC, 1, false},
        {"127", RADIX_DEC, 8, true},
        {"128", RADIX_DEC, 8, false},
        {"-128", RADIX_DEC, 8, true},
        {"-129", RADIX_DEC, 8, false},
        {"-", RADIX_DEC, 8, false},
        {"255", RADIX_UNS, 8, true},
        {"256", RADIX_UNS, 8, false},
        {"9223372036854775807", RADIX_DEC, 64, true},
        {"-9223372036854775808", RADIX_DEC, 64, true},
        {"9999999999999999999", RADIX_UNS, 64, true},
        {"00000000000000000001", RADIX_UNS, 64, false},
        {"FF", RADIX_HEX, 8, true},
        {"100", RADIX_HEX, 8, false},
        {"FFFFFFFFFFFFFFFF", RADIX_HEX, 64, true},
        {"00000000000000001", RADIX_HEX, 64, false},
        {"777777777777777777777", RADIX_OCT, 63, true},
        {"777777777777777777777", RADIX_OCT, 62, false},
        {"0000000000000000000001", RADIX_OCT, 64, false},
        {"1111111111111111111111111111111111111111111111111111111111111111", RADIX_BIN, 64, true},
        {"10", RADIX_BIN, 1, false},
        {"1", RADIX_BIN, 65, false},
        {"", RADIX_HEX, 8, false},
    };
    for (const number& each : tested) {
        for (const KVR_MEMORY_RADIXES to : exact_radixes) {
            kvr::exact_conversion conversion;
            conversion.from = each.from;
            conversion.to = to;
            conversion.width = each.width;
            std::string result;
            EXPECT_EQ(kvr::append_small_exact_word(result, each.text, conversion), each.is_taken)
                << each.text << " to " << to;
        }
    }
}

TEST(SmallExactWord, HexadecimalDigitsOfAnyWidthStayWhatTheyAre) {
    std::string result = "x";
    EXPECT_TRUE(kvr::append_same_hex_digits(result, "1f" + std::string(98, 'a'), 397));
    EXPECT_EQ(result, "x1F" + std::string(98, 'A'));
    EXPECT_TRUE(kvr::append_same_hex_digits(result = "", "f", 12));
    EXPECT_EQ(result, "00F");
    for (const char* text : {"", "X1", "1G", "2FF", "01FF"}) {
        EXPECT_FALSE(kvr::append_same_hex_digits(result = "kept", text, 9)) << text;
        EXPECT_EQ(result, "kept");
    }
}
