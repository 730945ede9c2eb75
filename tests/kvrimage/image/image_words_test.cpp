#include "kvrimage/image/image_words.h"
#include "kvrimage/image/store_copy.h"
#include "kvrimage/image/word_runs.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;

constexpr std::uint64_t words_of_half = image_words::half();

bool to_doubled_text(std::string_view text, std::string& made) {
    made = std::string(text) + std::string(text);
    return text != "no";
}

TEST(ImageWords, TransformGoesOverBothHalves) {
    image_words words(words_of_half + 10);
    words.set(words_of_half - 1, "A");
    words.set(words_of_half, "B");
    EXPECT_TRUE(words.transform(to_doubled_text));
    EXPECT_EQ(words[words_of_half - 1], "AA");
    EXPECT_EQ(words[words_of_half], "BB");
}

TEST(ImageWords, TransformThatFailsLeavesBothHalvesAsTheyWere) {
    for (const std::uint64_t wrong : {std::uint64_t{5}, words_of_half + 5}) {
        image_words words(words_of_half + 10);
        words.set(words_of_half - 1, "A");
        words.set(words_of_half, "B");
        words.set(wrong, "no");
        EXPECT_FALSE(words.transform(to_doubled_text));
        EXPECT_EQ(words[words_of_half - 1], "A");
        EXPECT_EQ(words[words_of_half], "B");
        EXPECT_EQ(words[wrong], "no");
    }
}

TEST(ImageWords, TransformOfALowerHalfAloneAsksForRows) {
    image_words words(3000);
    for (std::uint64_t offset = 0; offset < words.size(); ++offset) {
        words.set(offset, std::to_string(1000 + offset));
    }
    std::uint64_t kept = 0;
    EXPECT_TRUE(words.transform(to_doubled_text, [&kept](const kvr::word_row& row) {
        kept += row.count;
        return true;
    }));
    EXPECT_EQ(kept, 3000U);
    EXPECT_EQ(words[7], "1007");
}

TEST(ImageWords, ResizeKeepsTheWordsThatStay) {
    image_words words(10);
    words.set(9, "A");
    words.resize(words_of_half + 1);
    EXPECT_EQ(words.size(), words_of_half + 1);
    EXPECT_EQ(words[9], "A");
    words.set(words_of_half, "B");
    words.resize(10);
    EXPECT_EQ(words.size(), 10U);
    words.resize(words_of_half + 1);
    EXPECT_EQ(words[words_of_half], "");
}

TEST(ImageWords, RunsOfTheLowerHalfGoOnInTheUpperOne) {
    image_words words(words_of_half + 10);
    words.fill(words_of_half - 2, words_of_half + 3, {"A"});
    const text_run run = words.run_at(words_of_half - 1);
    EXPECT_EQ(run.first, words_of_half - 1);
    EXPECT_EQ(run.last, words_of_half + 3);
    EXPECT_EQ(words.run_at(words_of_half + 1).last, words_of_half + 3);
    words.set(words_of_half, "B");
    EXPECT_EQ(words.run_at(words_of_half - 2).last, words_of_half - 1);
}

TEST(ImageWords, RunOfAFullLowerHalfEndsThere) {
    EXPECT_EQ(image_words(words_of_half).run_at(0).last, words_of_half - 1);
}

TEST(ImageWords, CyclesEndWithTheirHalf) {
    image_words words(2 * words_of_half);
    words.fill(0, 2 * words_of_half - 1, {"A", "B"});
    EXPECT_EQ(words.cycle_at(3).last, words_of_half - 1);
    const text_cycle upper = words.cycle_at(words_of_half + 1);
    EXPECT_EQ(upper.first, words_of_half + 1);
    EXPECT_EQ(upper.last, 2 * words_of_half - 1);
    EXPECT_EQ(upper.period, 2U);
    EXPECT_EQ(upper.length(), words_of_half - 1);
}

TEST(ImageWords, RowsAreOfWordsThatAreSet) {
    image_words words(100);
    words.fill(0, 99, {"A"});
    for (std::uint64_t offset = 0; offset < 40; offset += 2) {
        words.set(offset, "");
    }
    EXPECT_EQ(words.row_at(38).count, 0U);
    std::string seen;
    for_each_row_or_run(
        words,
        [&seen](const kvr::word_row& row, std::uint64_t first) {
            seen += std::to_string(first) + "(" + std::string(row.all()) + ")";
            return row.count;
        },
        [&seen](const text_run& run) {
            seen += std::to_string(run.first) + "-" + std::to_string(run.last) + std::string(run.text) + " ";
        });
    EXPECT_EQ(seen, "1-1A 3-3A 5-5A 7-7A 9-9A 11-11A 13-13A 15-15A 17-17A 19-19A 21-21A 23-23A 25-25A 27-27A "
                    "29-29A 31-31A 33-33A 35-35A 37-37A 39-99A ");
}

TEST(ImageWords, TakesAStoreAsItsLowerHalf) {
    kvr::word_store store;
    store.resize(5, "A");
    const image_words words(std::move(store));
    EXPECT_EQ(words.size(), 5U);
    EXPECT_EQ(words[4], "A");
}

/// The number of parts that a walk over runs and cycles finds, which is the cost of a copy.
std::uint64_t count_walked_parts(const image_words& words) {
    std::uint64_t parts = 0;
    for_each_cycle_or_run(
        words,
        [&parts](const text_cycle& cycle) {
            ++parts;
            return length_of(cycle);
        },
        [&parts](const text_run&) { ++parts; });
    return parts;
}

TEST(ImageWords, CopyKeepsFillsThatOtherWordsCut) {
    std::vector<std::string> texts;
    for (int i = 0; i < 3000; ++i) {
        texts.push_back(std::to_string(1000 + i));
    }
    image_words words(2 * words_of_half);
    words.fill(7, 2 * words_of_half - 3, {texts.begin(), texts.end()});
    for (std::uint64_t offset = 5000; offset < 2 * words_of_half; offset += words_of_half / 8) {
        words.set(offset, "cut");
    }
    const image_words copy(words);
    EXPECT_EQ(count_walked_parts(copy), count_walked_parts(words));
    for (std::uint64_t offset = 0; offset < 2 * words_of_half; offset += 4093 * 1021) {
        ASSERT_EQ(copy[offset], words[offset]) << offset;
    }
    EXPECT_EQ(copy[5000], "cut");
    EXPECT_EQ(copy[5001], words[5001]);
    EXPECT_EQ(copy[2 * words_of_half - 2], "");
}

TEST(StoreCopy, TakesPiecesOfAFillThatAreShorterThanItsPattern) {
    KVR_NOT_IN_A_SLOW_PROGRAM();
    std::vector<std::string> texts;
    for (int i = 0; i < 5000; ++i) {
        texts.push_back("w" + std::to_string(i));
    }
    kvr::word_store store;
    store.resize(1 << 16, "");
    store.fill(0, (1 << 16) - 1, {texts.begin(), texts.end()});
    for (std::uint32_t offset = 0; offset < store.size(); offset += 4000) {
        store.set(offset, "");
    }
    store.fill(30000, 60000, {"other"});
    const kvr::word_store copy = copy_of(store);
    ASSERT_EQ(copy.size(), store.size());
    for (std::uint32_t offset = 0; offset < store.size(); ++offset) {
        ASSERT_EQ(copy[offset], store[offset]) << offset;
    }
}

TEST(StoreCopy, TakesWordsThatWereUnsetOneByOneWithinAFill) {
    kvr::word_store store;
    store.resize(100, "A");
    for (std::uint32_t address = 0; address < 40; address += 2) {
        store.set(address, "");
    }
    const kvr::word_store copy = copy_of(store);
    EXPECT_EQ(copy[38], "");
    EXPECT_EQ(copy[39], "A");
    EXPECT_EQ(copy[99], "A");
}

TEST(StoreCopy, TakesAFillOfAsManyWordsAfterAnother) {
    kvr::word_store store;
    store.resize(1 << 16, "");
    store.fill(0, 9999, {"A", "B"});
    store.fill(10000, 40000, {"A", "C"});
    store.fill(40001, (1 << 16) - 1, {"A", "C"});
    const kvr::word_store copy = copy_of(store);
    EXPECT_EQ(copy[9999], "B");
    EXPECT_EQ(copy[20000], "A");
    EXPECT_EQ(copy[20001], "C");
    EXPECT_EQ(copy[60001], "A");
    EXPECT_EQ(copy[60002], "C");
    EXPECT_EQ(copy.cycle_at(50000).period, 2U);
}

TEST(StoreCopy, TakesARunThatBeginsLikeTheFillBeforeIt) {
    kvr::word_store store;
    store.resize(1 << 16, "");
    store.fill(0, 9999, {"A", "B"});
    store.fill(10000, 30000, {"A"});
    const kvr::word_store copy = copy_of(store);
    EXPECT_EQ(copy[9999], "B");
    EXPECT_EQ(copy.run_at(10000).last, 30000U);
    EXPECT_EQ(copy[30001], "");
}

TEST(StoreCopy, OfNothingIsNothing) {
    EXPECT_EQ(copy_of(kvr::word_store()).size(), 0U);
}

TEST(ForEachRun, CutsTheRunsToTheRange) {
    image_words words(100);
    words.fill(10, 20, {"A"});
    std::string seen;
    for_each_run(words, 15, 100, [&seen](const text_run& run) {
        seen += std::to_string(run.first) + '-' + std::to_string(run.last) + std::string(run.text) + ' ';
    });
    EXPECT_EQ(seen, "15-20A 21-99 ");
    seen.clear();
    for_each_set_run(words, [&seen](const text_run& run) { seen += std::to_string(length_of(run)); });
    EXPECT_EQ(seen, "11");
}

TEST(ForEachRowOrRun, GivesRowsAndRuns) {
    image_words words(5000);
    for (std::uint64_t offset = 0; offset < 2000; ++offset) {
        words.set(offset, std::to_string(1000 + offset));
    }
    words.fill(3000, 3999, {"A"});
    std::uint64_t in_rows = 0;
    std::uint64_t in_runs = 0;
    for_each_row_or_run(
        words,
        [&in_rows](const kvr::word_row& row, std::uint64_t) {
            in_rows += row.count;
            return row.count;
        },
        [&in_runs](const text_run& run) { in_runs += length_of(run); });
    EXPECT_GE(in_rows, 1024U);
    EXPECT_EQ(in_rows + in_runs, 3000U);
}

} // namespace
