// A store remembers the page that it found last, sets words side by side in it, and takes over whole pages.

#include "kvr/memory/store/word_store.h"
#include "tests/allocation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace {

using kvr::page_words;

/// The texts of a page of words of four digits from @p first on; after @p differing words, all are equal.
kvr::page_texts texts_from(std::uint32_t first, std::uint32_t differing = page_words) {
    auto texts = std::make_shared<char[]>(page_words * std::size_t{4});
    for (std::uint32_t word = 0; word < page_words; ++word) {
        const std::string text = std::to_string(first + std::min(word, differing));
        std::memcpy(texts.get() + word * std::size_t{4}, text.data(), 4);
    }
    return texts;
}

TEST(WordStoreFoundPage, IsThatOfTheAssignedStore) {
    kvr::word_store one;
    one.resize(4 * page_words, "0");
    one.set(3 * page_words, "A");
    EXPECT_EQ(one[3 * page_words], "A");
    kvr::word_store other;
    other.resize(4 * page_words, "1");
    other.set(0, "B");
    EXPECT_EQ(other[0], "B");
    one = std::move(other);
    EXPECT_EQ(one[3 * page_words], "1");
    EXPECT_EQ(one[0], "B");
}

// The number of the far page is the address of the other word multiplied by the page size instead of divided.
TEST(WordStoreFoundPage, OfAWordThatWasSetHasNoWordsOfAFarPage) {
    kvr::word_store words;
    words.resize(4 * page_words * page_words, "0");
    words.set(1, "A");
    EXPECT_EQ(words[page_words * page_words + 1], "0");
    words.set(1, "B");
    words.set(page_words * page_words + 1, "C");
    EXPECT_EQ(words[1], "B");
}

TEST(WordStoreFoundPage, AfterARunDoesNotEndIt) {
    kvr::word_store words;
    words.resize(2 * page_words, "7");
    words.set(1500, "1");
    words.set(2 * page_words - 1, "2");
    EXPECT_EQ(words[1500], "1");
    for (std::uint32_t address = page_words - 3; address <= page_words; ++address) {
        EXPECT_EQ(words.run_at(address).last, 1499U) << address;
        EXPECT_EQ(words[1500], "1");
    }
}

TEST(WordStoreFoundPage, IsNotMadeForAWordThatHasItsTextAlready) {
    kvr::word_store words;
    words.resize(4 * page_words * page_words, "0");
    const std::size_t before = allocation_count();
    words.set(12345, "0");
    words.resize(words.size(), "9");
    EXPECT_EQ(allocation_count(), before);
}

TEST(WordStoreSideBySide, WordsGoOverTheEndsOfPages) {
    kvr::word_store words;
    words.resize(4 * page_words, "0");
    for (std::uint32_t address = 0; address < words.size(); ++address) {
        words.set(address, std::to_string(1000 + address));
    }
    for (const std::uint32_t first : {0U, 1U, 500U, page_words - 1, page_words}) {
        for (const std::uint32_t count : {1U, page_words - 1, page_words, page_words + 1, 2500U}) {
            std::string texts;
            for (std::uint32_t word = 0; word < count; ++word) {
                texts += std::to_string(1000 + (first + word) * 7 % 9000);
            }
            std::string expected;
            for (std::uint32_t address = 0; address < words.size(); ++address) {
                expected += words[address];
            }
            expected.replace(first * std::size_t{4}, texts.size(), texts);
            words.set_side_by_side(first, texts, 4);
            std::string found;
            for (std::uint32_t address = 0; address < words.size(); ++address) {
                found += words[address];
            }
            ASSERT_EQ(found, expected) << count << " words at " << first;
        }
    }
}

TEST(WordStoreSideBySide, EqualWordsAreOnePattern) {
    kvr::word_store words;
    words.resize(3 * page_words, "0");
    for (std::uint32_t address = 0; address < words.size(); ++address) {
        words.set(address, std::to_string(1000 + address));
    }
    std::string texts;
    for (std::uint32_t address = 0; address < words.size(); ++address) {
        texts += "7777";
    }
    words.set_side_by_side(0, texts, 4);
    for (std::uint32_t address = 0; address < words.size(); address += page_words) {
        EXPECT_EQ(words.cycle_at(address).period, 1U) << address;
    }
}

TEST(WordStorePage, OfDifferingWordsIsTakenOver) {
    kvr::word_store words;
    words.resize(2 * page_words, "0");
    kvr::page_texts texts = texts_from(1000);
    const char* const place = texts.get();
    words.set_page(page_words, texts, 4);
    EXPECT_EQ(texts, nullptr);
    EXPECT_EQ(words.row_at(page_words).texts, place);
    EXPECT_EQ(words.row_at(page_words).count, page_words);
}

TEST(WordStorePage, OfFewRunsIsNotTakenOver) {
    for (const std::uint32_t differing : {0U, 1U, 10U}) {
        kvr::word_store words;
        words.resize(2 * page_words, "0");
        kvr::page_texts texts = texts_from(1000, differing);
        words.set_page(page_words, texts, 4);
        EXPECT_NE(texts, nullptr);
        EXPECT_EQ(words.row_at(page_words).count, 0U);
        EXPECT_EQ(words[page_words], "1000");
        EXPECT_EQ(words[2 * page_words - 1], std::to_string(1000 + differing));
    }
}

} // namespace
