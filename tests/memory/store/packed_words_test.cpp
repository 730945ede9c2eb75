#include "kvr/memory/store/packed_words.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace {

using kvr::packed_words;
using kvr::page_words;

/// Room for words of two characters; the first @p count are set.
packed_words packed_pairs(std::uint32_t count) {
    packed_words words(2);
    if (count != 0) {
        words.assign(0, count - 1, [](std::uint32_t /*index*/) { return std::string_view("AB"); });
    }
    return words;
}

std::string of_pairs(std::uint32_t count) {
    std::string texts;
    for (std::uint32_t pair = 0; pair < count; ++pair) {
        texts += static_cast<char>('a' + pair % 26);
        texts += static_cast<char>('0' + pair % 10);
    }
    return texts;
}

TEST(PackedWords, OfACompletePageAreCopiedSideBySide) {
    packed_words words = packed_pairs(page_words);
    ASSERT_TRUE(words.is_complete());
    const std::string texts = of_pairs(10);
    EXPECT_TRUE(words.copy_in_side_by_side(5, texts.data(), 2, 10));
    EXPECT_EQ(words[4], "AB");
    EXPECT_EQ(words[5], "a0");
    EXPECT_EQ(words[14], "j9");
    EXPECT_EQ(words[15], "AB");
    EXPECT_FALSE(words.copy_in_side_by_side(5, texts.data(), 1, 10)) << "words of another length";
}

TEST(PackedWords, AreCountedWhenTheyAreCopiedSideBySide) {
    const std::string texts = of_pairs(page_words);
    for (const std::uint32_t first : {0U, 1U, 5U, 9U, 10U, 11U, 500U}) {
        packed_words words = packed_pairs(10);
        words.assign(7, 7, [](std::uint32_t /*index*/) { return std::string_view("x"); });
        ASSERT_TRUE(words.copy_in_side_by_side(first, texts.data(), 2, 10));
        std::uint32_t missing = 0;
        for (std::uint32_t index = 0; index < page_words; ++index) {
            if (!words.has(index) || words[index].size() != 2) {
                ++missing;
            }
        }
        EXPECT_FALSE(words.copy_in_side_by_side(0, texts.data(), 2, missing))
            << "would perhaps complete the page";
        EXPECT_TRUE(words.copy_in_side_by_side(0, texts.data(), 2, missing - 1));
        for (std::uint32_t index = 0; index < page_words; ++index) {
            EXPECT_FALSE(words.is_complete());
            words.assign(index, index, [](std::uint32_t /*index*/) { return std::string_view("CD"); });
        }
        EXPECT_TRUE(words.is_complete());
    }
}

TEST(PackedWords, AreUniformIfNoneDiffers) {
    packed_words words = packed_pairs(page_words);
    EXPECT_TRUE(words.is_uniform());
    for (const std::uint32_t index : {0U, 1U, 2U, 500U, page_words - 3, page_words - 2, page_words - 1}) {
        EXPECT_TRUE(words.copy_in(index, "AC"));
        EXPECT_FALSE(words.is_uniform()) << index;
        EXPECT_TRUE(words.copy_in(index, "AB"));
        EXPECT_TRUE(words.is_uniform()) << index;
    }
}

} // namespace
