#include "kvrimage/image/word.h"
#include "kvrimage/image/word_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <stdexcept>

namespace {

using namespace kvrimage;
using fault_kind = word_fault::kind;

word parsed_word(std::string_view text, radix of, std::uint32_t width) {
    const word_result result = word::parse(text, of, width);
    EXPECT_TRUE(result.value.has_value()) << text;
    EXPECT_FALSE(result.fault.has_value()) << text;
    return result.value.value_or(word(width));
}

word word_of_bits(std::string_view digits) {
    return parsed_word(digits, radix::bin, static_cast<std::uint32_t>(digits.size()));
}

TEST(Word, IsZeroAtFirst) {
    EXPECT_EQ(word(1).to_text(radix::bin), "0");
    EXPECT_EQ(word(130).to_text(radix::hex), std::string(33, '0'));
    EXPECT_EQ(word(widest_word).to_unsigned(), 0U);
}

TEST(Word, RefusesWidthsThatNoWordHas) {
    EXPECT_THROW(word{0}, std::invalid_argument);
    EXPECT_THROW(word{widest_word + 1}, std::invalid_argument);
    EXPECT_THROW((void)word::of(0, 0), std::invalid_argument);
    EXPECT_THROW((void)word::of_signed(0, 0), std::invalid_argument);
    EXPECT_THROW((void)word::parse("0", radix::hex, 0), std::invalid_argument);
    EXPECT_THROW((void)word::parse("0", radix::hex, widest_word + 1), std::invalid_argument);
    EXPECT_THROW((void)word::of_bytes("", byte_order::little, 0), std::invalid_argument);
}

TEST(Word, OfTakesWhatFits) {
    EXPECT_EQ(word::of(255, 8).to_unsigned(), 255U);
    EXPECT_THROW((void)word::of(256, 8), std::overflow_error);
    EXPECT_THROW((void)word::of(std::uint64_t{1} << 63U, 63), std::overflow_error);
    EXPECT_EQ(word::of(~std::uint64_t{0}, 64).to_unsigned(), ~std::uint64_t{0});
    EXPECT_EQ(word::of(~std::uint64_t{0}, 65).to_text(radix::hex), "0FFFFFFFFFFFFFFFF");
}

TEST(Word, OfSignedIsTwosComplementAtAnyWidth) {
    EXPECT_EQ(word::of_signed(-1, 1).to_text(radix::hex), "1");
    EXPECT_EQ(word::of_signed(-128, 8).to_text(radix::hex), "80");
    EXPECT_EQ(word::of_signed(127, 8).to_text(radix::hex), "7F");
    EXPECT_THROW((void)word::of_signed(-129, 8), std::overflow_error);
    EXPECT_THROW((void)word::of_signed(128, 8), std::overflow_error);
    EXPECT_THROW((void)word::of_signed(1, 1), std::overflow_error);
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(word::of_signed(lowest, 64).to_signed(), lowest);
    EXPECT_EQ(word::of_signed(lowest, 70).to_text(radix::hex), "3F8000000000000000");
    EXPECT_EQ(word::of_signed(lowest, 70).to_signed(), lowest);
    EXPECT_EQ(word::of_signed(-2, 130).to_text(radix::dec), "-2");
    EXPECT_EQ(word::of_signed(5, 130).to_signed(), 5);
}

TEST(Word, ParseTakesTextsOfEachRadix) {
    EXPECT_EQ(parsed_word("0001011", radix::bin, 4), word::of(11, 4));
    EXPECT_EQ(parsed_word("17", radix::oct, 4), word::of(15, 4));
    EXPECT_EQ(parsed_word("-8", radix::dec, 4), word::of(8, 4));
    EXPECT_EQ(parsed_word("-0", radix::dec, 4), word(4));
    EXPECT_EQ(parsed_word("7", radix::dec, 4), word::of(7, 4));
    EXPECT_EQ(parsed_word("15", radix::uns, 4), word::of(15, 4));
    EXPECT_EQ(parsed_word("000000000000000000fF", radix::hex, 8), word::of(255, 8));
    EXPECT_EQ(parsed_word("18446744073709551616", radix::uns, 65).to_text(radix::hex), "10000000000000000");
    EXPECT_EQ(parsed_word("-9223372036854775808", radix::dec, 64), word::of(std::uint64_t{1} << 63U, 64));
}

TEST(Word, ParseTakesDontCareDigits) {
    EXPECT_EQ(parsed_word("x1", radix::hex, 8), word_of_bits("XXXX0001"));
    EXPECT_EQ(parsed_word("X7", radix::oct, 5), word_of_bits("XX111"));
    EXPECT_EQ(parsed_word("X", radix::hex, 3), word_of_bits("XXX"));
    EXPECT_TRUE(word_of_bits("1X").has_dont_care());
    EXPECT_FALSE(word_of_bits("10").has_dont_care());
    EXPECT_TRUE(parsed_word("X" + std::string(16, '0'), radix::hex, 68).has_dont_care());
}

TEST(Word, ParseReportsWhatIsWrong) {
    struct {
        std::string_view text;
        radix of;
        std::uint32_t width;
        word_fault fault;
    } const cases[] = {
        {"", radix::hex, 8, {fault_kind::empty, 0, 0}},
        {"-", radix::dec, 8, {fault_kind::empty, 1, 0}},
        {"1G", radix::hex, 8, {fault_kind::invalid_digit, 1, 0}},
        {"-1", radix::hex, 8, {fault_kind::invalid_digit, 0, 0}},
        {"--1", radix::dec, 8, {fault_kind::invalid_digit, 1, 0}},
        {"+1", radix::dec, 8, {fault_kind::invalid_digit, 0, 0}},
        {"0102", radix::bin, 8, {fault_kind::invalid_digit, 3, 0}},
        {"00FFF", radix::hex, 8, {fault_kind::too_wide, 2, 12}},
        {"128", radix::dec, 8, {fault_kind::too_wide, 0, 9}},
        {"-129", radix::dec, 8, {fault_kind::too_wide, 1, 9}},
        {"256", radix::uns, 8, {fault_kind::too_wide, 0, 9}},
        {"1X", radix::uns, 8, {fault_kind::dont_care, 1, 0}},
        {"-x", radix::dec, 80, {fault_kind::dont_care, 1, 0}},
        {"99999999999999999999", radix::uns, 64, {fault_kind::too_wide, 0, 67}},
    };
    for (const auto& one : cases) {
        const word_result result = word::parse(one.text, one.of, one.width);
        EXPECT_FALSE(result.value.has_value()) << one.text;
        ASSERT_TRUE(result.fault.has_value()) << one.text;
        EXPECT_EQ(*result.fault, one.fault) << one.text << ": " << static_cast<int>(result.fault->what) << ' '
                                            << result.fault->position << ' ' << result.fault->bits_needed;
    }
}

TEST(Word, BytesStandInTheOrderAskedFor) {
    const word value = word::of(0x1234, 13);
    EXPECT_EQ(value.to_bytes(byte_order::little), "\x34\x12");
    EXPECT_EQ(value.to_bytes(byte_order::big), "\x12\x34");
    EXPECT_EQ(word::of_bytes("\x34\x12", byte_order::little, 13), value);
    EXPECT_EQ(word::of_bytes("\x12\x34", byte_order::big, 13), value);
    EXPECT_EQ(word::of_bytes("\xFF"
                             "abcdefghi",
                             byte_order::big, 80)
                  .to_bytes(byte_order::little),
              "ihgfedcba\xFF");
}

TEST(Word, BytesMustBeThoseOfTheWidth) {
    EXPECT_THROW((void)word::of_bytes("\x34\x32", byte_order::little, 13), std::overflow_error);
    EXPECT_THROW((void)word::of_bytes("\x32\x34", byte_order::big, 13), std::overflow_error);
    EXPECT_THROW((void)word::of_bytes("\x34", byte_order::little, 13), std::invalid_argument);
    EXPECT_THROW((void)word::of_bytes("123", byte_order::little, 13), std::invalid_argument);
    EXPECT_EQ(word_of_bits("1X").to_bytes(byte_order::big), std::nullopt);
}

TEST(Word, BitZeroIsTheLeastSignificantOne) {
    const word value = word_of_bits("X01");
    EXPECT_EQ(value.bit(0), '1');
    EXPECT_EQ(value.bit(1), '0');
    EXPECT_EQ(value.bit(2), 'X');
    EXPECT_THROW((void)value.bit(3), std::out_of_range);
    EXPECT_EQ(parsed_word("1" + std::string(16, '0'), radix::hex, 65).bit(64), '1');
}

TEST(Word, NumbersAreGivenWhereTheyFit) {
    EXPECT_EQ(word_of_bits("1X").to_unsigned(), std::nullopt);
    EXPECT_EQ(word_of_bits("1X").to_signed(), std::nullopt);
    EXPECT_EQ(word::of(7, 100).to_unsigned(), 7U);
    EXPECT_EQ(word::of_signed(-7, 100).to_unsigned(), std::nullopt);
    EXPECT_EQ(word::of(~std::uint64_t{0}, 100).to_signed(), std::nullopt);
    EXPECT_EQ(word::of(~std::uint64_t{0}, 64).to_signed(), -1);
    EXPECT_EQ(word::of(7, 3).to_signed(), -1);
    EXPECT_EQ(word::of(3, 3).to_signed(), 3);
    EXPECT_EQ(parsed_word("X" + std::string(16, '0'), radix::hex, 68).to_unsigned(), std::nullopt);
}

TEST(Word, TextHasAllDigitsOfTheWidth) {
    const word value = word::of(0x2A, 7);
    EXPECT_EQ(value.to_text(radix::bin), "0101010");
    EXPECT_EQ(value.to_text(radix::oct), "052");
    EXPECT_EQ(value.to_text(radix::hex), "2A");
    EXPECT_EQ(value.to_text(radix::dec), "42");
    EXPECT_EQ(word::of(0x7F, 7).to_text(radix::dec), "-1");
    EXPECT_EQ(word::of(0x7F, 7).to_text(radix::uns), "127");
}

TEST(Word, DontCareBitsAreShownWhereTheyFillADigit) {
    EXPECT_EQ(word_of_bits("XXXX0001").to_text(radix::hex), "X1");
    EXPECT_EQ(word_of_bits("XX0001").to_text(radix::hex), "X1");
    EXPECT_EQ(word_of_bits("XXXX0001").to_text(radix::oct), std::nullopt);
    EXPECT_EQ(word_of_bits("XX111").to_text(radix::oct), "X7");
    EXPECT_EQ(word_of_bits("XXXX0001").to_text(radix::uns), std::nullopt);
    EXPECT_EQ(word_of_bits("0X").to_text(radix::hex), std::nullopt);
    EXPECT_EQ(word_of_bits("0X").to_text(radix::bin), "0X");
    EXPECT_EQ(word_of_bits("X").to_text(radix::hex), "X");
    EXPECT_EQ(word_of_bits("X").to_text(radix::bin), "X");
}

TEST(Word, AppendTextKeepsWhatIsThere) {
    std::string text = "a ";
    EXPECT_TRUE(word::of(5, 4).append_text(radix::hex, text));
    EXPECT_FALSE(word_of_bits("0X").append_text(radix::dec, text));
    EXPECT_EQ(text, "a 5");
}

TEST(Word, EqualWordsHaveTheSameWidthAndBits) {
    EXPECT_EQ(word::of(5, 8), parsed_word("05", radix::hex, 8));
    EXPECT_NE(word::of(5, 8), word::of(5, 9));
    EXPECT_NE(word::of(0, 1), word_of_bits("X"));
    EXPECT_NE(word(65), parsed_word("1" + std::string(16, '0'), radix::hex, 65));
}

/// Random words of all relevant widths, with and without don't-care bits.
class random_words {
public:
    std::uint32_t width() {
        constexpr std::uint32_t widths[] = {1,  2,  3,  4,  5,  7,  8,  9,  12,  15,  16,  17,  31,
                                            32, 33, 36, 60, 63, 64, 65, 66, 127, 128, 129, 192, 1000};
        return widths[engine() % std::size(widths)];
    }
    std::string digits(std::uint32_t width, std::string_view of) {
        std::string text(width, '0');
        for (char& digit : text) {
            digit = of[engine() % of.size()];
        }
        return text;
    }
    std::mt19937 engine{1};
};

TEST(Word, RandomWordsAreWhatTheirTextsAre) {
    random_words random;
    for (int round = 0; round < 5000; ++round) {
        const std::uint32_t width = random.width();
        const std::string binary = random.digits(width, round % 2 == 0 ? "01" : "000X1");
        const word value = word_of_bits(binary);
        ASSERT_EQ(value.to_text(radix::bin), binary);
        for (std::uint32_t index = 0; index < width; ++index) {
            ASSERT_EQ(value.bit(index), binary[width - 1 - index]);
        }
        for (const radix of : {radix::bin, radix::oct, radix::dec, radix::uns, radix::hex}) {
            const auto text = value.to_text(of);
            ASSERT_TRUE(text || binary.find('X') != std::string::npos);
            ASSERT_TRUE(!text || parsed_word(*text, of, width) == value) << *text << ' ' << width;
        }
        for (const byte_order order : {byte_order::little, byte_order::big}) {
            const auto bytes = value.to_bytes(order);
            ASSERT_EQ(bytes.has_value(), !value.has_dont_care());
            ASSERT_TRUE(!bytes || word::of_bytes(*bytes, order, width) == value);
        }
    }
}

TEST(Word, HeldTextIsTheOneThatMakeWordMakes) {
    random_words random;
    std::string held;
    for (int round = 0; round < 5000; ++round) {
        const std::uint32_t width = random.width();
        const std::string binary = random.digits(width, round % 2 == 0 ? "01" : "XX1");
        ASSERT_FALSE(make_word(binary, radix::bin, width, held).has_value());
        const word value = word_of_bits(binary);
        ASSERT_EQ(text_of_word(value), held);
        ASSERT_EQ(held_text(value).view(), held);
        ASSERT_EQ(word_of_text(held, width), value);
    }
}

TEST(Word, ParseFindsTheFaultsThatMakeWordFinds) {
    random_words random;
    std::string held;
    for (int round = 0; round < 20000; ++round) {
        const std::uint32_t width = random.width();
        const auto of = static_cast<radix>(round % 5);
        const std::string text = random.digits(static_cast<std::uint32_t>(random.engine() % 20),
                                               round % 3 == 0 ? "01" : "0123456789aF-X");
        auto fault = make_word(text, of, width, held);
        if (fault && fault->what == fault_kind::invalid_digit && text[fault->position] == 'X') {
            fault->what = fault_kind::dont_care;
        }
        const word_result result = word::parse(text, of, width);
        ASSERT_EQ(result.fault, fault) << text << ' ' << width << ' ' << title_of(of);
        ASSERT_TRUE(fault || text_of_word(result.value.value()) == held) << text << ' ' << width;
    }
}

TEST(ReadSmallWord, TakesOneToSixteenHexadecimalDigits) {
    const std::string digits = "fEdCBa9876543210";
    for (std::size_t count = 1; count <= digits.size(); ++count) {
        std::uint64_t value = 0;
        ASSERT_TRUE(read_small_word(std::string_view(digits).substr(0, count), value));
        EXPECT_EQ(value, 0xFEDCBA9876543210U >> (64 - 4 * count)) << count;
        for (std::size_t place = 0; place < count; ++place) {
            std::string wrong = digits.substr(0, count);
            wrong[place] = 'X';
            EXPECT_FALSE(read_small_word(wrong, value)) << wrong;
        }
    }
}

} // namespace
