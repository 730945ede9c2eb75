// The form that suits the words of a page.

#include "kvr/memory/store/word_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>

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

} // namespace
