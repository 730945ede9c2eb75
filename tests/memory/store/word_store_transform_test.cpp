// The effect of transform() on words, including words that are stored in rows.

#include "kvr/memory/store/word_store.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

bool keep_every_row(const kvr::word_row& /*row*/) {
    return true;
}

bool double_one(std::string_view text, std::string& made) {
    made = text == "1" ? "11" : std::string(text);
    return true;
}

bool refuse_one(std::string_view text, std::string& made) {
    made = text;
    return text != "1";
}

/// A store of @p size words, the first 100 of which differ.
kvr::word_store store_with(std::string_view fill, std::uint32_t size) {
    kvr::word_store words;
    words.resize(size, fill);
    for (std::uint32_t address = 0; address < 100; ++address) {
        words.set(address, std::to_string(100 + address));
    }
    return words;
}

TEST(WordStoreTransform, ConvertsWhatFillsAStoreOfKeptRows) {
    for (const std::uint32_t size : {101U, 200U, 5000U}) {
        kvr::word_store words = store_with("1", size);
        EXPECT_TRUE(words.transform(double_one, keep_every_row));
        EXPECT_EQ(words[99], "199");
        EXPECT_EQ(words[100], "11");
        EXPECT_EQ(words[size - 1], "11");
    }
}

TEST(WordStoreTransform, ConvertsAStoreOfOneText) {
    kvr::word_store words;
    words.resize(5000, "1");
    EXPECT_TRUE(words.transform(double_one, keep_every_row));
    EXPECT_EQ(words[0], "11");
    EXPECT_EQ(words[4999], "11");
}

TEST(WordStoreTransform, FailsForWhatFillsAStoreOfKeptRows) {
    for (const std::uint32_t size : {101U, 200U, 5000U}) {
        kvr::word_store words = store_with("1", size);
        EXPECT_FALSE(words.transform(refuse_one, keep_every_row));
        EXPECT_EQ(words[99], "199");
        EXPECT_EQ(words[size - 1], "1");
    }
}

TEST(WordStoreTransform, FailsForAStoreOfOneText) {
    kvr::word_store words;
    words.resize(5000, "1");
    EXPECT_FALSE(words.transform(refuse_one, keep_every_row));
    EXPECT_EQ(words[4999], "1");
}

TEST(WordStoreTransform, ConvertsThePatternOfARange) {
    kvr::word_store words;
    words.resize(9000, "2");
    words.fill(0, 8999, {"1", "2"});
    EXPECT_TRUE(words.transform(double_one, keep_every_row));
    EXPECT_EQ(words[0], "11");
    EXPECT_EQ(words[1], "2");
    EXPECT_EQ(words[8998], "11");
    EXPECT_FALSE(words.transform(
        [](std::string_view text, std::string& made) {
            made = text;
            return text != "2";
        },
        keep_every_row));
    EXPECT_EQ(words[8999], "2");
}

TEST(WordStoreTransform, KeepsWhatBecomesTheSame) {
    kvr::word_store words = store_with("7", 5000);
    EXPECT_TRUE(words.transform(double_one, keep_every_row));
    EXPECT_EQ(words[0], "100");
    EXPECT_EQ(words[4999], "7");
}

TEST(WordStoreTransform, DoesNotAskForTextsOfWordsThatWereDropped) {
    kvr::word_store words;
    words.resize(100, "0");
    words.fill(0, 99, {"2", "3", "4", "1"});
    words.resize(3, "0");
    EXPECT_TRUE(words.transform(refuse_one));
    EXPECT_EQ(words[2], "4");
    words.resize(5, "5");
    EXPECT_EQ(words[3], "5");
}

/// A store with two texts more than a page has words, over several pages. The last text is "1".
kvr::word_store store_of_many_texts() {
    std::vector<std::string> texts;
    for (std::uint32_t text = 0; text <= kvr::page_words; ++text) {
        texts.push_back(std::to_string(100 + text));
    }
    texts.emplace_back("1");
    kvr::word_store words;
    words.resize(10 * kvr::page_words, "0");
    words.fill(0, 10 * kvr::page_words - 1, {texts.begin(), texts.end()});
    return words;
}

TEST(WordStoreTransform, DoesNotAskForTextsOfWordsThatWereSet) {
    kvr::word_store words = store_of_many_texts();
    words.fill(kvr::page_words, 10 * kvr::page_words - 1, {"7"});
    EXPECT_TRUE(words.transform(refuse_one));
    EXPECT_EQ(words[kvr::page_words - 1], std::to_string(100 + kvr::page_words - 1));
    EXPECT_EQ(words[kvr::page_words], "7");
}

TEST(WordStoreTransform, FailsForATextOfAPatternThatOneWordHas) {
    kvr::word_store words = store_of_many_texts();
    words.fill(2 * kvr::page_words, 10 * kvr::page_words - 1, {"7"});
    EXPECT_FALSE(words.transform(refuse_one));
    EXPECT_EQ(words[kvr::page_words + 1], "1");
}

/// A store of @p size words of two digits. The words after its end are "1".
kvr::word_store store_of_numbers(std::uint32_t size) {
    kvr::word_store words;
    words.resize(size, "1");
    for (std::uint32_t address = 0; address < size; ++address) {
        words.set(address, std::to_string(10 + address % 90));
    }
    return words;
}

TEST(WordStoreTransform, LeavesKeptRowsWhereTheyAre) {
    for (const std::uint32_t size : {1024U, 1500U, 2048U, 3000U}) {
        kvr::word_store words = store_of_numbers(size);
        const char* const first = words.row_at(0).texts;
        const char* const last = words.row_at(size - 1).texts;
        EXPECT_TRUE(words.transform(double_one, keep_every_row));
        EXPECT_EQ(words.row_at(0).texts, first) << size;
        EXPECT_EQ(words.row_at(size - 1).texts, last) << size;
    }
}

TEST(WordStoreTransform, ConvertsAWordAtAnyPlaceAmidKeptRows) {
    for (const std::uint32_t size : {1U, 2U, 1024U, 1025U, 1500U, 2049U}) {
        for (const std::uint32_t place : {0U, 1U, size / 2, 1023U, 1024U, size - 1}) {
            kvr::word_store words = store_of_numbers(size);
            if (place >= size) {
                continue;
            }
            words.set(place, "1");
            EXPECT_TRUE(words.transform(double_one, keep_every_row));
            for (std::uint32_t address = 0; address < size; ++address) {
                ASSERT_EQ(words[address], address == place ? "11" : std::to_string(10 + address % 90))
                    << size;
            }
        }
    }
}

TEST(WordStoreTransform, ConvertsRowsThatAreNotKept) {
    kvr::word_store words;
    words.resize(2 * kvr::page_words, "1");
    for (std::uint32_t address = 0; address < words.size(); address += 2) {
        words.set(address, "2");
    }
    EXPECT_TRUE(words.transform(double_one, [](const kvr::word_row& /*row*/) { return false; }));
    EXPECT_EQ(words[0], "2");
    EXPECT_EQ(words[1], "11");
    EXPECT_EQ(words[words.size() - 1], "11");
}

/// A store of 1500 words that had more. The first word after the first page may be shorter than the others.
kvr::word_store store_that_had_more(const std::string& first_of_second_page) {
    kvr::word_store words = store_of_numbers(2 * kvr::page_words);
    words.set(kvr::page_words, first_of_second_page);
    words.resize(1500, "");
    return words;
}

TEST(WordStoreTransform, DoesNotAskForRowsOfWordsThatWereDropped) {
    for (const char* const odd : {"77", "7"}) {
        for (const bool keep : {true, false}) {
            kvr::word_store words = store_that_had_more(odd);
            std::uint32_t asked = 0;
            std::uint32_t converted = 0;
            EXPECT_TRUE(words.transform(
                [&converted](std::string_view text, std::string& made) {
                    ++converted;
                    made = text;
                    return true;
                },
                [&](const kvr::word_row& row) {
                    asked += row.count;
                    return keep;
                }));
            if (keep) {
                EXPECT_EQ(asked + converted, 1500U) << odd;
            } else {
                EXPECT_EQ(converted, 1500U) << odd;
            }
            EXPECT_EQ(words[kvr::page_words], odd);
        }
    }
}

} // namespace
