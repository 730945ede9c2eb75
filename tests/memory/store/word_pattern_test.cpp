#include "kvr/memory/store/word_pattern.h"
#include "tests/allocation.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kvr::pattern_ref;
using kvr::same_texts;
using kvr::word_pattern;

constexpr std::array<std::string_view, 3> three_values = {"1", "", "333"};

TEST(WordPattern, UniformPatternHasOneTextEverywhere) {
    const pattern_ref pattern = word_pattern::uniform("AB");
    EXPECT_TRUE(pattern->is_uniform());
    EXPECT_EQ(pattern->period(), 1U);
    EXPECT_EQ(pattern->text_at(0), "AB");
    EXPECT_EQ(pattern->text_at(4294967295), "AB");
}

TEST(WordPattern, TextsRepeatFromTheFirstAddressOn) {
    const pattern_ref pattern = word_pattern::repeating(10, three_values.data(), three_values.size());
    EXPECT_FALSE(pattern->is_uniform());
    EXPECT_EQ(pattern->period(), 3U);
    EXPECT_EQ(pattern->text_at(10), "1");
    EXPECT_EQ(pattern->text_at(11), "");
    EXPECT_EQ(pattern->text_at(12), "333");
    EXPECT_EQ(pattern->text_at(13), "1");
    EXPECT_EQ(pattern->text_at(4294967294), "");
}

TEST(WordPattern, OneRepeatedTextIsUniform) {
    EXPECT_TRUE(word_pattern::repeating(10, three_values.data(), 1)->is_uniform());
}

TEST(WordPattern, FindsTheFirstAddressWithAnotherText) {
    constexpr std::array<std::string_view, 3> doubled = {"a", "a", "b"};
    const pattern_ref pattern = word_pattern::repeating(0, doubled.data(), doubled.size());
    EXPECT_EQ(pattern->find_other(0, 100, "a"), 2U);
    EXPECT_EQ(pattern->find_other(2, 100, "a"), 2U);
    EXPECT_EQ(pattern->find_other(3, 4, "a"), 5U);
}

TEST(WordPattern, UniformTextHoldsUpToTheHighestAddress) {
    const pattern_ref pattern = word_pattern::uniform("a");
    EXPECT_EQ(pattern->find_other(5, 4294967295, "a"), 4294967296U);
    EXPECT_EQ(pattern->find_other(5, 4294967295, "b"), 5U);
}

TEST(WordPattern, ReferencesKeepAPatternAlive) {
    pattern_ref kept;
    {
        const pattern_ref made = word_pattern::uniform("AB");
        kept = made;
    }
    const pattern_ref copy = kept;
    kept = {};
    EXPECT_FALSE(kept);
    EXPECT_EQ(copy->text_at(0), "AB");
}

TEST(WordPattern, UniformPatternsOfOneTextAreTheSame) {
    EXPECT_TRUE(same_texts(word_pattern::uniform("a"), word_pattern::uniform("a")));
    EXPECT_FALSE(same_texts(word_pattern::uniform("a"), word_pattern::uniform("b")));
    EXPECT_FALSE(same_texts(word_pattern::uniform("a"), pattern_ref()));
    EXPECT_TRUE(same_texts(pattern_ref(), pattern_ref()));
}

TEST(WordPattern, NoPatternCanBeCopied) {
    const pattern_ref none;
    const pattern_ref copy(none); // NOLINT(performance-unnecessary-copy-initialization): the copy is tested
    EXPECT_FALSE(copy);
    EXPECT_FALSE(same_texts(none, word_pattern::uniform("1")));
}

TEST(WordPattern, EqualTextsThatAConversionHasMadeAreOneStretch) {
    const pattern_ref pattern = word_pattern::repeating(10, three_values.data(), three_values.size());
    const pattern_ref equal = pattern->converted([](std::string_view /*text*/, std::string& made) {
        made = "7";
        return true;
    });
    EXPECT_EQ(equal->find_other(10, 4294967295, "7"), 4294967296U);
    EXPECT_EQ(equal->find_other(11, 100, "8"), 11U);
}

TEST(WordPattern, ConversionThatFailsGivesNone) {
    const pattern_ref pattern = word_pattern::repeating(10, three_values.data(), three_values.size());
    EXPECT_FALSE(pattern->converted([](std::string_view text, std::string& made) {
        made = text;
        return text != "333";
    }));
}

TEST(WordPattern, ConversionKeepsTheOrder) {
    for (const std::uint32_t first : {0U, 10U, 4000000000U}) {
        const pattern_ref pattern = word_pattern::repeating(first, three_values.data(), three_values.size());
        const pattern_ref made = pattern->converted([](std::string_view text, std::string& converted) {
            converted.assign("<").append(text).append(">");
            return true;
        });
        EXPECT_EQ(made->period(), 3U);
        EXPECT_EQ(made->text_at(first), "<1>");
        EXPECT_EQ(made->text_at(first + 1), "<>");
        EXPECT_EQ(made->text_at(first + 2), "<333>");
    }
}

TEST(WordPattern, TakesNineBytesForEachTextOfOneCharacter) {
    constexpr std::size_t count = 1025;
    const std::vector<std::string_view> values(count, "1");
    const allocation_meter meter;
    const pattern_ref pattern = word_pattern::repeating(0, values.data(), count);
    EXPECT_LE(allocation_meter::live(), 9 * count + 256);
}

} // namespace
