#include "kvrimage/operations/statistics/toggles.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace kvrimage;

void expect_toggles(const toggle_statistics& found, const toggle_statistics& expected) {
    EXPECT_EQ(found.pairs, expected.pairs);
    EXPECT_EQ(found.compared, expected.compared);
    EXPECT_EQ(found.toggled, expected.toggled);
}

TEST(TogglesOf, WithoutNeighboursNothingIsCompared) {
    memory_image image(8, 5);
    expect_toggles(toggles_of(image), {0, 0, 0});
    EXPECT_EQ(toggles_of(image).rate(), 0.0);
    image.set(1, word::of(1, 8));
    image.set(3, word::of(2, 8));
    expect_toggles(toggles_of(image), {0, 0, 0});
}

TEST(TogglesOf, EachBitThatChangesCounts) {
    memory_image image(8, 5);
    image.fill({1, 3}, std::array{word::of(0x0F, 8), word::of(0xF0, 8), word::of(0xF1, 8)});
    expect_toggles(toggles_of(image), {2, 16, 9});
    EXPECT_EQ(toggles_of(image).rate(), 9.0 / 16);
}

TEST(TogglesOf, BitsThatAreDontCareAreNotCompared) {
    memory_image image(4, 4);
    image.fill({0, 3}, std::array{word_of_digits("XX01"), word_of_digits("0X11"), word_of_digits("XXXX"),
                                  word_of_digits("0000")});
    expect_toggles(toggles_of(image), {3, 2, 1});
}

TEST(TogglesOf, EqualWordsWithDontCareBitsCompareTheOthers) {
    memory_image image(4, 4);
    image.fill({0, 3}, std::array{word_of_digits("XX01")});
    expect_toggles(toggles_of(image), {3, 6, 0});
}

TEST(TogglesOf, WideWordsCountEachDigit) {
    memory_image image(100, 2);
    image.set(0, word_of_digits(std::string(100, '1')));
    image.set(1, word_of_digits('1' + std::string(98, '0') + '1'));
    expect_toggles(toggles_of(image), {1, 100, 98});
}

TEST(TogglesOf, FillsOfBillionsAreTakenAtOnce) {
    memory_image image(8, deepest_memory);
    image.fill_unset(word::of(0x55, 8));
    expect_toggles(toggles_of(image), {deepest_memory - 1, 8 * (deepest_memory - 1), 0});
    image.fill({0, deepest_memory - 1}, std::array{word::of(0, 8), word::of(1, 8)});
    expect_toggles(toggles_of(image), {deepest_memory - 1, 8 * (deepest_memory - 1), deepest_memory - 1});
}

TEST(TogglesOf, RandomMemoriesHaveThoseOfAPlainComparison) {
    memory_maker maker(23);
    for (int round = 0; round < rounds(200); ++round) {
        const auto width = static_cast<std::uint32_t>(1 + maker.below(70));
        const memory_image image = maker.memory(width, 1 + maker.below(300), round % 3 == 0 ? 9 : 0, 5);
        const plain_words words = plain_words_of(image);
        toggle_statistics expected;
        for (std::size_t at = 1; at < words.size(); ++at) {
            if (!words[at - 1] || !words[at]) {
                continue;
            }
            ++expected.pairs;
            for (std::size_t bit = 0; bit < width; ++bit) {
                const char before = (*words[at - 1])[bit];
                const char after = (*words[at])[bit];
                const bool is_compared = before != 'X' && after != 'X';
                expected.compared += is_compared ? 1U : 0U;
                expected.toggled += is_compared && before != after ? 1U : 0U;
            }
        }
        ASSERT_EQ(toggles_of(image), expected) << round;
    }
}

} // namespace
