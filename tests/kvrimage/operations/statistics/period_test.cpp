#include "kvrimage/image/image_words.h"
#include "kvrimage/operations/statistics/period.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>
#include <vector>

namespace {

using namespace kvrimage;

using found_period = std::optional<std::uint64_t>;

word period_word(std::uint64_t value) {
    return word::of(value, 8);
}

/// A memory of one word for each character of @p text, set one by one; "." is an unset word.
memory_image memory_with_period_of(std::string_view text) {
    memory_image image(8, text.size() + 4, 50);
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '.') {
            image.set(52 + at, period_word(static_cast<unsigned char>(text[at])));
        }
    }
    return image;
}

TEST(PeriodOf, OneWordOrNoneHasNone) {
    EXPECT_EQ(period_of(memory_image(8, deepest_memory)), std::nullopt);
    EXPECT_EQ(period_of(memory_with_period_of("a")), std::nullopt);
}

TEST(PeriodOf, WordsThatWereSetOneByOne) {
    EXPECT_EQ(period_of(memory_with_period_of("aa")), found_period(1));
    EXPECT_EQ(period_of(memory_with_period_of("ab")), std::nullopt);
    EXPECT_EQ(period_of(memory_with_period_of("abab")), found_period(2));
    EXPECT_EQ(period_of(memory_with_period_of("abaab")), std::nullopt);
    EXPECT_EQ(period_of(memory_with_period_of("aabaaabaaab")), found_period(4));
    EXPECT_EQ(period_of(memory_with_period_of("aabaacaabaac")), found_period(6));
    EXPECT_EQ(period_of(memory_with_period_of("abcabcabcabd")), std::nullopt);
}

TEST(PeriodOf, TheLastTurnMayBeCutOff) {
    EXPECT_EQ(period_of(memory_with_period_of("abcabca")), found_period(3));
    EXPECT_EQ(period_of(memory_with_period_of("abcab")), std::nullopt);
}

TEST(PeriodOf, WordsThatAreNotSetArePartOfIt) {
    EXPECT_EQ(period_of(memory_with_period_of("a.ba.ba")), found_period(3));
    EXPECT_EQ(period_of(memory_with_period_of("a.ba.b.a")), std::nullopt);
}

TEST(PeriodOf, RowsOfWordsBetweenLongGaps) {
    memory_image image(16, 103424);
    for (const std::uint64_t first : {0U, 51200U, 102400U}) {
        set_in_row(image, first, page_of_words(4));
        ASSERT_EQ(image.words().row_at(first).count, 1024U);
    }
    EXPECT_EQ(period_of(image), found_period(51200));
    image.set(103000, word::of(5, 16));
    EXPECT_EQ(period_of(image), std::nullopt);
}

TEST(PeriodOf, APatternOverBillionsHasItsOwn) {
    memory_image image(8, deepest_memory);
    image.fill({0, deepest_memory - 1}, std::array{period_word(1), period_word(2), period_word(1)});
    EXPECT_EQ(period_of(image), found_period(3));
    image.fill({0, deepest_memory - 1},
               std::array{period_word(1), period_word(2), period_word(1), period_word(2)});
    EXPECT_EQ(period_of(image), found_period(2));
    image.fill_unset(period_word(1));
    image.fill({0, deepest_memory - 1}, std::array{period_word(1)});
    EXPECT_EQ(period_of(image), found_period(1));
}

TEST(PeriodOf, OneOtherWordInBillionsIsFound) {
    for (const std::uint64_t other :
         {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{2}, deepest_memory / 2, deepest_memory / 2 + 1,
          deepest_memory - 2, deepest_memory - 1}) {
        memory_image image(8, deepest_memory);
        image.fill({0, deepest_memory - 1}, std::array{period_word(1)});
        image.set(other, period_word(2));
        EXPECT_EQ(period_of(image), std::nullopt) << other;
        image.fill({0, deepest_memory - 1}, std::array{period_word(1), period_word(2), period_word(3)});
        image.set(other, period_word(4));
        EXPECT_EQ(period_of(image), std::nullopt) << other;
    }
}

TEST(PeriodOf, HalvesOfBillionsThatAreAlikeRepeat) {
    constexpr std::uint64_t half = deepest_memory / 2;
    memory_image image(8, deepest_memory);
    image.fill({0, deepest_memory - 1}, std::array{period_word(1), period_word(2)});
    image.set(1000, period_word(9));
    image.set(half + 1000, period_word(9));
    EXPECT_EQ(period_of(image), found_period(half));
    image.set(5000, period_word(9));
    EXPECT_EQ(period_of(image), std::nullopt);
}

TEST(PeriodOf, ARunOfBillionsBetweenWordsRepeats) {
    memory_image image(8, deepest_memory);
    image.fill({0, deepest_memory - 1}, std::array{period_word(0)});
    for (std::uint64_t address = 7; address < deepest_memory; address += std::uint64_t{1} << 28U) {
        image.set(address, period_word(1));
    }
    EXPECT_EQ(period_of(image), found_period(std::uint64_t{1} << 28U));
}

/// Fills with a pattern of two words, of the lengths @p lengths, with another word after each fill.
memory_image memory_of_turns(const std::vector<std::uint64_t>& lengths) {
    memory_image image(8, deepest_memory);
    std::uint64_t at = 0;
    for (const std::uint64_t length : lengths) {
        image.fill({at, at + length - 1}, std::array{period_word(1), period_word(2)});
        image.set(at + length, period_word(3 + length % 2));
        at += length + 1;
    }
    return image;
}

TEST(PeriodOf, TurnsThatEndWithAnotherWordThanTheFirstOnesRepeat) {
    EXPECT_EQ(period_of(memory_of_turns({100000, 100000, 100000})), found_period(100001));
    EXPECT_EQ(period_of(memory_of_turns({100000, 120000, 100000, 120000})), found_period(220002));
    EXPECT_EQ(period_of(memory_of_turns({100000, 120000, 100000, 120002})), std::nullopt);
    memory_image image = memory_of_turns({100000, 100000, 100000, 100000});
    for (const std::uint64_t at : {200001U, 400003U}) { // after the second and the fourth
        image.set(at, period_word(9));
    }
    EXPECT_EQ(period_of(image), found_period(200002));
}

TEST(PeriodOf, ThousandsOfFillsThatRepeatButOneAreTriedAtOnce) {
    memory_image image(8, 10000000);
    for (std::uint64_t address = 0; address < image.depth(); address += 1000) {
        image.fill({address, address + 998}, std::array{period_word(0)});
        image.set(address + 999, period_word(1));
    }
    EXPECT_EQ(period_of(image), found_period(1000));
    image.set(image.depth() - 1, period_word(2));
    EXPECT_EQ(period_of(image), std::nullopt);
}

TEST(PeriodOf, WordsThatDifferInsideOfAPatternOverBillionsDoNotSlowItDown) {
    memory_image image(8, deepest_memory);
    image.fill({0, deepest_memory - 1}, std::array{period_word(1), period_word(2)});
    for (std::uint64_t address = 1000; address < deepest_memory; address += (std::uint64_t{1} << 26U) + 1) {
        image.set(address, period_word(9));
    }
    EXPECT_EQ(period_of(image), found_period((std::uint64_t{1} << 27U) + 2));
    image.set(deepest_memory - 1, period_word(9));
    EXPECT_EQ(period_of(image), std::nullopt);
}

found_period plain_period(const plain_words& all) {
    plain_words words = all;
    while (!words.empty() && !words.back()) {
        words.pop_back();
    }
    while (!words.empty() && !words.front()) {
        words.erase(words.begin());
    }
    for (std::size_t period = 1; period <= words.size() / 2; ++period) {
        bool repeats = true;
        for (std::size_t at = period; at < words.size() && repeats; ++at) {
            repeats = words[at] == words[at - period];
        }
        if (repeats) {
            return period;
        }
    }
    return std::nullopt;
}

/// A memory that repeats a few random stretches and may contain a word that breaks the repetition.
memory_image repeating_memory(memory_maker& maker, std::uint64_t most_length) {
    memory_image image(2, 900, 17);
    const std::uint64_t turns = 1 + maker.below(5);
    const std::uint64_t stretches = 1 + maker.below(4);
    std::vector<std::vector<word>> patterns;
    std::vector<std::uint64_t> lengths;
    for (std::uint64_t index = 0; index < stretches; ++index) {
        lengths.push_back(1 + maker.below(most_length));
        patterns.emplace_back();
        for (std::uint64_t count = maker.below(4); count > 0; --count) {
            patterns.back().push_back(word_of_digits(maker.bits(2, 6)));
        }
    }
    std::uint64_t address = image.base() + maker.below(3);
    for (std::uint64_t index = 0; index < turns * stretches; ++index) {
        const std::vector<word>& pattern = patterns[index % stretches];
        const std::uint64_t end = address + lengths[index % stretches];
        if (!pattern.empty() && maker.below(3) != 0) {
            image.fill({address, end - 1}, pattern);
        } else if (!pattern.empty()) {
            for (std::uint64_t each = address; each < end; ++each) {
                image.set(each, pattern[(each - address) % pattern.size()]);
            }
        }
        address = end;
    }
    if (maker.below(4) == 0) {
        image.set(image.base() + maker.below(address - image.base()), word_of_digits(maker.bits(2)));
    }
    return image;
}

TEST(PeriodOf, RandomMemoriesHaveThatOfAPlainSearch) {
    memory_maker maker(25);
    for (int round = 0; round < rounds(500); ++round) {
        const memory_image image = repeating_memory(maker, round % 2 == 0 ? 40 : 6);
        ASSERT_EQ(period_of(image), plain_period(plain_words_of(image))) << round;
    }
    for (int round = 0; round < rounds(300); ++round) {
        const memory_image image = maker.memory(1, 1 + maker.below(200), 0, 5);
        ASSERT_EQ(period_of(image), plain_period(plain_words_of(image))) << round;
    }
}

} // namespace
