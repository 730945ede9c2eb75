#include "kvrimage/bytes/image_bytes.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/word_search.h"
#include "kvrimage/image/word_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kvrimage;

constexpr std::uint32_t bits_of_unshown = 8;

image_words searched_words(const std::vector<std::string_view>& texts) {
    image_words words(texts.size());
    for (std::size_t offset = 0; offset < texts.size(); ++offset) {
        words.set(offset, texts[offset]);
    }
    return words;
}

std::optional<std::uint64_t> first_unshown(const image_words& words, radix digits_radix) {
    return find_unshown_word(words, bits_of_unshown, digits_radix, 0, words.size());
}

TEST(UnshownWord, IsOneWithADontCareBitBesideAPlainOne) {
    const image_words words = searched_words({"00", "", "1X", "000000X0", "0000000X"});
    EXPECT_EQ(first_unshown(words, radix::hex), 3U);
    EXPECT_EQ(first_unshown(words, radix::oct), 2U);
    EXPECT_EQ(first_unshown(words, radix::uns), 2U);
    EXPECT_EQ(first_unshown(words, radix::bin), std::nullopt);
}

TEST(UnshownWord, IsNoneWhereTheWordsAreBytes) {
    const memory_image bytes = image_of_bytes("ab");
    ASSERT_NE(bytes.words().bytes(), nullptr);
    EXPECT_EQ(first_unshown(bytes.words(), radix::hex), std::nullopt);
}

TEST(UnshownWord, IsLookedForInARange) {
    const image_words words = searched_words({"000000X0", "00", "00", "000000X0"});
    EXPECT_EQ(find_unshown_word(words, bits_of_unshown, radix::hex, 1, 3), std::nullopt);
    EXPECT_EQ(find_unshown_word(words, bits_of_unshown, radix::hex, 1, 4), 3U);
    EXPECT_EQ(find_unshown_word(words, bits_of_unshown, radix::hex, 0, 0), std::nullopt);
}

TEST(UnshownWord, IsFoundInRowsRunsAndCyclesOfBillions) {
    image_words words(std::uint64_t{1} << 32U);
    words.fill(0, 0x0FFFFFFF, {"00", "11"});
    words.fill(0x10000000, 0x7FFFFFFF, {"22"});
    words.fill(0x80000000, 0xFFFFFFFE, {"33", "000000X0"});
    EXPECT_EQ(first_unshown(words, radix::hex), 0x80000001U);
    words.fill(0x80000000, 0xFFFFFFFE, {"33", "44"});
    EXPECT_EQ(first_unshown(words, radix::hex), std::nullopt);
    words.fill(0x70000000, 0x70000007, {"0000000X"});
    EXPECT_EQ(first_unshown(words, radix::hex), 0x70000000U);
}

/// Filled and single words in any order, compared with a check of each word.
TEST(UnshownWord, IsTheFirstOfALookAtEachWord) {
    std::mt19937 engine(7);
    const std::vector<std::string_view> texts = {"", "00", "A5", "XX", "1X", "0000000X", "X0000000"};
    for (int round = 0; round < 300; ++round) {
        image_words words(200);
        for (int change = 0; change < 6; ++change) {
            const std::uint64_t first = engine() % 200;
            const std::string_view one = texts[1 + engine() % (round % 2 == 0 ? 4 : 6)];
            const std::string_view other = texts[1 + engine() % (round % 2 == 0 ? 4 : 6)];
            if (engine() % 2 == 0) {
                words.set(first, one);
            } else {
                words.fill(first, std::min<std::uint64_t>(first + engine() % 50, 199), {one, other});
            }
        }
        for (const radix each : {radix::hex, radix::oct, radix::dec, radix::bin}) {
            const std::uint64_t begin = engine() % 200;
            const std::uint64_t end = begin + engine() % (201 - begin);
            std::optional<std::uint64_t> expected;
            std::string shown;
            for (std::uint64_t offset = begin; offset < end && !expected; ++offset) {
                if (!words[offset].empty() && !show_word(words[offset], each, bits_of_unshown, shown)) {
                    expected = offset;
                }
            }
            ASSERT_EQ(find_unshown_word(words, bits_of_unshown, each, begin, end), expected);
        }
    }
}

word searched_word(std::string_view text) {
    return word::parse(text, radix::hex, 8).value.value();
}

TEST(DontCareWord, IsFoundAmongSingleWords) {
    memory_image image(8, 100);
    for (std::uint64_t address = 0; address < 100; ++address) {
        image.set(address, word::of(address, 8));
    }
    EXPECT_FALSE(find_dont_care_word(image.words()));
    image.set(70, searched_word("4X"));
    image.set(90, searched_word("XX"));
    EXPECT_EQ(find_dont_care_word(image.words()), 70U);
}

TEST(DontCareWord, IsFoundInCyclesAndRuns) {
    memory_image image(8, 1000000);
    image.fill({0, 399999}, std::vector{searched_word("01"), searched_word("02"), searched_word("03")});
    EXPECT_FALSE(find_dont_care_word(image.words()));
    image.fill({700000, 799999}, std::vector{searched_word("XX")});
    EXPECT_EQ(find_dont_care_word(image.words()), 700000U);
    image.fill({500000, 599999}, std::vector{searched_word("01"), searched_word("0X"), searched_word("XX")});
    EXPECT_EQ(find_dont_care_word(image.words()), 500001U);
}

} // namespace
