// The form that suits the words of a page.

#include "kvr/memory/store/word_page.h"
#include "tests/allocation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kvr::page_words;
using kvr::word_page;

/// Words of @p length characters for a page, in @p runs runs of equal ones.
std::string words_in_runs(std::size_t runs, std::size_t length) {
    std::string texts;
    for (std::size_t index = 0; index < page_words; ++index) {
        const std::size_t run = std::min(index, runs - 1);
        texts += std::string(length - 1, 'x') + static_cast<char>('A' + run);
    }
    return texts;
}

TEST(WordPageForm, WordsArePackedFromThirteenRunsOn) {
    for (const std::size_t length : {1U, 8U, 256U}) {
        EXPECT_FALSE(word_page::is_best_packed(words_in_runs(1, length).data(), length));
        EXPECT_FALSE(word_page::is_best_packed(words_in_runs(12, length).data(), length));
        EXPECT_TRUE(word_page::is_best_packed(words_in_runs(13, length).data(), length));
        EXPECT_TRUE(word_page::is_best_packed(words_in_runs(50, length).data(), length));
    }
}

TEST(WordPageForm, NoWordsAndLongWordsAreNotPacked) {
    EXPECT_FALSE(word_page::is_best_packed("", 0));
    EXPECT_FALSE(word_page::is_best_packed(words_in_runs(50, 257).data(), 257));
}

TEST(WordPageForm, TheLastWordCounts) {
    std::string texts(page_words, 'a');
    for (std::size_t index = 0; index < 11; ++index) {
        texts[index] = static_cast<char>('A' + index);
    }
    EXPECT_FALSE(word_page::is_best_packed(texts.data(), 1));
    texts.back() = 'z';
    EXPECT_TRUE(word_page::is_best_packed(texts.data(), 1));
}

/// True if the word at @p index is packed and as long as the longest one.
bool is_packed_at(const word_page& page, std::uint32_t index) {
    return page.row_at(index).count != 0;
}

/// Words of @p length characters that differ.
std::string numbered_word(std::uint32_t number, std::size_t length) {
    std::string text = std::to_string(number);
    text.resize(length, 'x');
    return text;
}

TEST(WordPageForm, DifferingWordsOfOneLengthArePackedFromTheThirteenthOn) {
    for (const std::size_t length : {2U, 16U, 17U, 255U, 256U, 257U}) {
        word_page page(0, kvr::word_pattern::uniform("0"));
        for (std::uint32_t word = 0; word < 12; ++word) {
            page.set(2 * word, numbered_word(word, length));
        }
        EXPECT_FALSE(is_packed_at(page, 2));
        page.set(24, numbered_word(12, length));
        EXPECT_EQ(is_packed_at(page, 2), length <= 256) << length;
        EXPECT_EQ(page[2], numbered_word(1, length));
        EXPECT_EQ(page[24], numbered_word(12, length));
    }
}

TEST(WordPageForm, ALongListIsPackedIfTheLengthsSuitIt) {
    struct range_of_lengths {
        std::size_t shortest;
        std::size_t longest;
        bool is_packed;
    };
    constexpr range_of_lengths tested[] = {
        {1, 16, true},    {15, 16, true},    {16, 16, true},    {1, 17, false},
        {16, 17, false},  {17, 17, true},    {20, 20, true},    {255, 255, true},
        {256, 256, true}, {255, 256, false}, {257, 257, false},
    };
    for (const range_of_lengths& lengths : tested) {
        word_page page(0, kvr::word_pattern::uniform("0"));
        page.assign(0, page_words - 1, kvr::word_pattern::uniform(std::string(lengths.longest, 'y')));
        const auto text_of = [&](std::uint32_t word) {
            const std::string text = numbered_word(word, lengths.longest);
            return text.substr(text.size() - (word % 2 == 0 ? lengths.shortest : lengths.longest));
        };
        for (std::uint32_t word = 0; word < 200; ++word) {
            page.set(5 * word, text_of(word));
        }
        EXPECT_EQ(is_packed_at(page, 5), lengths.is_packed) << lengths.shortest << " to " << lengths.longest;
        for (std::uint32_t word = 0; word < 200; ++word) {
            ASSERT_EQ(page[5 * word], text_of(word));
        }
    }
}

TEST(WordPageForm, PackedWordsArePackedWiderForTextsOfUpToSixteenCharacters) {
    for (const std::size_t length : {3U, 15U, 16U, 17U}) {
        word_page page(0, kvr::word_pattern::uniform("0"));
        for (std::uint32_t word = 0; word < 20; ++word) {
            page.set(word, numbered_word(word, 2));
        }
        ASSERT_TRUE(is_packed_at(page, 7));
        page.set(7, std::string(length, 'y'));
        EXPECT_EQ(is_packed_at(page, 7), length <= 16) << length;
        EXPECT_EQ(page[7], std::string(length, 'y'));
        EXPECT_EQ(page[8], numbered_word(8, 2));
    }
}

/// A page of pieces of two characters: the parts of a range that @p cuts words have cut, these, and @p
/// others.
word_page page_of_pieces(std::uint32_t cuts, std::uint32_t others) {
    word_page page(0, kvr::word_pattern::uniform("0"));
    page.assign(100, 200, kvr::word_pattern::uniform("yy"));
    for (std::uint32_t word = 0; word < cuts; ++word) {
        page.set(110 + 10 * word, std::to_string(10 + word));
    }
    for (std::uint32_t word = 0; word < others; ++word) {
        page.set(300 + 10 * word, std::to_string(30 + word));
    }
    return page;
}

TEST(WordPageForm, TwelvePiecesArePackedIfTheyHaveElevenTexts) {
    for (const std::uint32_t cuts : {0U, 1U, 2U, 3U, 4U, 5U}) {
        word_page page = page_of_pieces(cuts, 11 - 2 * cuts);
        EXPECT_FALSE(is_packed_at(page, 100));
        page.set(900, "zz");
        EXPECT_EQ(is_packed_at(page, 100), 12 - cuts >= 11) << cuts;
    }
}

TEST(WordPageForm, TextsOfARangeThatItsWordsDoNotUseDoNotCount) {
    const std::string_view values[] = {"aa", "bb", "cc", "dd", "ee", "ff", "gg", "hh"};
    for (const std::uint32_t used : {1U, 2U, 3U, 4U}) {
        for (std::uint32_t cuts = 0; cuts <= 5; ++cuts) {
            word_page page = page_of_pieces(cuts, 10 - 2 * cuts);
            page.assign(800, 800 + used - 1, kvr::word_pattern::repeating(800, values, 8));
            EXPECT_FALSE(is_packed_at(page, 100));
            page.set(900, "zz");
            EXPECT_EQ(is_packed_at(page, 100), 11 - cuts + used >= 11)
                << used << " used, " << cuts << " cuts";
        }
    }
}

/// A page of fourteen words of @p length characters, which are packed.
word_page packed_page(std::size_t length) {
    word_page page(page_words, kvr::word_pattern::uniform("0"));
    for (std::uint32_t word = 0; word < 14; ++word) {
        page.set(word, numbered_word(word, length));
    }
    return page;
}

TEST(WordPageForm, TextsOfARangeThatItsWordsDoNotUseLeaveAPagePacked) {
    const std::string too_long(300, 'x');
    for (const std::uint32_t begin : {0U, 1U, 2U, 100U, page_words - 4}) {
        for (const std::uint32_t used : {1U, 2U, 3U, 4U}) {
            std::vector<std::string_view> values(used, "AA");
            values.resize(7, too_long);
            word_page page = packed_page(2);
            page.assign(begin, begin + used - 1,
                        kvr::word_pattern::repeating(page_words + begin, values.data(), values.size()));
            EXPECT_TRUE(is_packed_at(page, 12)) << used << " words from " << begin;
            EXPECT_EQ(page[begin], "AA");
            EXPECT_EQ(page[begin + used - 1], "AA");
        }
    }
}

/// Texts of 256 characters are packed; one of 257, or of so few that a byte cannot say how many are missing,
/// is not packed with them.
TEST(WordPageForm, AnyTextOfARangeMayNotSuitThePackedOnes) {
    for (const std::size_t length : {1U, 257U}) {
        for (std::size_t place = 0; place < 5; ++place) {
            std::vector<std::string> texts(5, numbered_word(0, 256));
            texts[place] = std::string(length, 'y');
            const std::vector<std::string_view> values(texts.begin(), texts.end());
            word_page page = packed_page(256);
            ASSERT_TRUE(is_packed_at(page, 1));
            page.assign(100, 104,
                        kvr::word_pattern::repeating(page_words + 100, values.data(), values.size()));
            EXPECT_FALSE(is_packed_at(page, 1)) << place;
            for (std::uint32_t word = 0; word < 5; ++word) {
                EXPECT_EQ(page[100 + word], texts[word]);
            }
        }
    }
}

// A pattern may take the place of the page then.
TEST(WordPageForm, SetSaysWhenAllWordsMayHaveBecomeEqual) {
    word_page pieces(0, kvr::word_pattern::uniform("0"));
    EXPECT_TRUE(pieces.set(500, "A"));
    for (std::uint32_t index = 501; index < page_words; ++index) {
        EXPECT_EQ(pieces.set(index, "A"), index == page_words - 1) << "the piece grows by a word";
    }

    word_page packed = packed_page(2);
    for (std::uint32_t index = 0; index < page_words; ++index) {
        if (index != 500) {
            EXPECT_EQ(packed.set(index, "AA"), index == 0 || index == page_words - 1) << index;
        }
    }
    EXPECT_TRUE(packed.set(500, "AA")) << "the last one that was missing";

    word_page list(0, kvr::word_pattern::uniform("0"));
    for (std::uint32_t index = 0; index < page_words; ++index) {
        list.set(index, numbered_word(index, 1 + index % 40));
    }
    EXPECT_TRUE(list.set(0, "A"));
    EXPECT_FALSE(list.set(1, "A"));
    EXPECT_FALSE(list.set(page_words - 2, "A"));
    EXPECT_TRUE(list.set(page_words - 1, "A"));
}

TEST(WordPageForm, AWordEqualToItsNeighborCostsNothing) {
    word_page page(0, kvr::word_pattern::uniform("0"));
    for (std::uint32_t index = 1000; index > 900; --index) {
        page.set(index, "A");
    }
    const std::size_t before = allocation_count();
    for (std::uint32_t index = 900; index > 0; --index) {
        page.set(index, "A");
    }
    EXPECT_EQ(allocation_count(), before);
}

} // namespace
