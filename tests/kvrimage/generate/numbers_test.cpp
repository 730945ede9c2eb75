#include "kvrimage/generate/numbers.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using number_list = std::vector<generated_number>;

std::vector<std::string> words_of_numbers(const number_list& values, std::uint32_t width,
                                          const number_rules& rules = {}) {
    const memory_image image = number_words(values, width, rules);
    std::vector<std::string> words;
    for (std::uint64_t address = 0; address < image.depth(); ++address) {
        words.push_back(image[address].value().to_text(radix::hex).value());
    }
    return words;
}

/// The message of the refusal of @p values.
std::string refusal_of_numbers(const number_list& values, std::uint32_t width,
                               const number_rules& rules = {}) {
    try {
        static_cast<void>(number_words(values, width, rules));
    } catch (const std::runtime_error& error) {
        return error.what();
    } catch (const std::domain_error& error) {
        return error.what();
    }
    return "";
}

using number_texts = std::vector<std::string>;

TEST(NumberWords, HoldWholeNumbers) {
    EXPECT_EQ(words_of_numbers({0, 255}, 8), (number_texts{"00", "FF"}));
    EXPECT_EQ(words_of_numbers({-128, -1, 127}, 8), (number_texts{"80", "FF", "7F"}));
    EXPECT_EQ(words_of_numbers({std::numeric_limits<std::int64_t>::min()}, 64),
              (number_texts{"8000000000000000"}));
    EXPECT_EQ(words_of_numbers({-1, 1}, 68), (number_texts{"FFFFFFFFFFFFFFFFF", "00000000000000001"}));
    EXPECT_EQ(words_of_numbers({-1, 0}, 1), (number_texts{"1", "0"}));
}

TEST(NumberWords, RoundFractions) {
    const number_list values = {0.5, 1.5, 2.5, 2.25, 2.75, 3.0};
    EXPECT_EQ(words_of_numbers(values, 4), (number_texts{"1", "2", "3", "2", "3", "3"}));
    EXPECT_EQ(words_of_numbers(values, 4, {.how = rounding::even}),
              (number_texts{"0", "2", "2", "2", "3", "3"}));
    EXPECT_EQ(words_of_numbers(values, 4, {.how = rounding::down}),
              (number_texts{"0", "1", "2", "2", "2", "3"}));
    const number_list below = {-0.5, -1.5, -2.5, -2.25};
    EXPECT_EQ(words_of_numbers(below, 4), (number_texts{"F", "E", "D", "E"}));
    EXPECT_EQ(words_of_numbers(below, 4, {.how = rounding::even}), (number_texts{"0", "E", "E", "E"}));
    EXPECT_EQ(words_of_numbers(below, 4, {.how = rounding::down}), (number_texts{"F", "E", "D", "D"}));
}

TEST(NumberWords, AreUnsignedWhereOnlyRoundingWouldMakeThemSigned) {
    EXPECT_EQ(words_of_numbers({-0.25, 255}, 8), (number_texts{"00", "FF"}));
}

TEST(NumberWords, RefuseWhatDoesNotFit) {
    EXPECT_EQ(refusal_of_numbers({0, 256}, 8),
              "the value 256 at address 0x1 does not fit words of 8 bits (0..255)");
    EXPECT_EQ(refusal_of_numbers({-1, 128}, 8),
              "the value 128 at address 0x1 does not fit signed words of 8 bits (-128..127)");
    EXPECT_EQ(refusal_of_numbers({-129}, 8),
              "the value -129 at address 0x0 does not fit signed words of 8 bits (-128..127)");
    EXPECT_EQ(refusal_of_numbers({128}, 8, {.is_signed = true}),
              "the value 128 at address 0x0 does not fit signed words of 8 bits (-128..127)");
    EXPECT_EQ(refusal_of_numbers({0x1p64}, 64),
              "the value 1.8446744073709552e+19 at address 0x0 does not fit words of 64 bits (0..2^64-1)");
    EXPECT_EQ(refusal_of_numbers({-0x1.8p64}, 65),
              "the value -2.7670116110564327e+19 at address 0x0 does not fit signed words of 65 bits "
              "(-2^64..2^64-1)");
    EXPECT_EQ(refusal_of_numbers({255.5}, 8),
              "the value 256 at address 0x0 does not fit words of 8 bits (0..255)");
}

TEST(NumberWords, SaturateOnRequest) {
    const number_rules rules = {.saturate = true};
    EXPECT_EQ(words_of_numbers({300, 1e30, 3}, 8, rules), (number_texts{"FF", "FF", "03"}));
    EXPECT_EQ(words_of_numbers({300, -300, -1e30}, 9, rules), (number_texts{"0FF", "100", "100"}));
    EXPECT_EQ(words_of_numbers({1, 0}, 1, {.saturate = true, .is_signed = true}), (number_texts{"0", "0"}));
}

TEST(NumberWords, HoldLargeDoublesExactly) {
    EXPECT_EQ(words_of_numbers({0x1p63}, 64), (number_texts{"8000000000000000"}));
    EXPECT_EQ(words_of_numbers({0x1.8p66}, 68), (number_texts{"60000000000000000"}));
    EXPECT_EQ(words_of_numbers({-0x1p64}, 68), (number_texts{"F0000000000000000"}));
    EXPECT_EQ(words_of_numbers({0x1.0000000000001p100}, 104), (number_texts{"10000000000001000000000000"}));
}

TEST(NumberWords, RefuseWhatIsNoNumber) {
    EXPECT_EQ(refusal_of_numbers({1, std::nan("")}, 8), "the value at address 0x1 is not a number");
    EXPECT_EQ(refusal_of_numbers({-HUGE_VAL}, 8), "the value at address 0x0 is infinite");
    EXPECT_EQ(refusal_of_numbers({HUGE_VAL}, 8, {.saturate = true}), "the value at address 0x0 is infinite");
}

TEST(NumberWords, RefuseNoNumbers) {
    EXPECT_THROW(static_cast<void>(number_words({}, 8)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(number_words(number_list{1}, 0)), std::invalid_argument);
}

/// @p value as a word of @p width bits holds it; the width is at most 32.
std::int64_t rounded_by_model(double value, std::uint32_t width, bool has_sign, rounding how) {
    const std::int64_t low = has_sign ? -(std::int64_t{1} << (width - 1)) : 0;
    const std::int64_t high = (std::int64_t{1} << (has_sign ? width - 1 : width)) - 1;
    double whole = std::floor(value);
    const double rest = value - whole;
    const bool is_odd = std::fmod(whole, 2) != 0;
    const bool ties_up = how == rounding::nearest ? value >= 0 : is_odd;
    if (how != rounding::down && (rest > 0.5 || (rest == 0.5 && ties_up))) {
        ++whole;
    }
    return std::clamp(static_cast<std::int64_t>(whole), low, high);
}

TEST(NumberWords, AgreeWithAPlainModel) {
    std::mt19937_64 random(11);
    for (int round = 0; round < rounds(2000); ++round) {
        const auto width = static_cast<std::uint32_t>(1 + random() % 32);
        const auto how = static_cast<rounding>(random() % 3);
        number_list values;
        for (int count = 0; count < 6; ++count) {
            const double scale = std::ldexp(1, static_cast<int>(random() % (width + 2)));
            values.emplace_back(std::round((static_cast<double>(random() % 4096) / 2048 - 1) * scale * 4) /
                                4);
        }
        const memory_image made = number_words(values, width, {how, true, true});
        for (std::size_t index = 0; index < values.size(); ++index) {
            ASSERT_EQ(made[index].value().to_signed(),
                      rounded_by_model(std::get<double>(values[index]), width, true, how))
                << std::get<double>(values[index]) << " in " << width << " bits";
        }
    }
}

} // namespace
