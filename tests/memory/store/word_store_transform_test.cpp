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

} // namespace
