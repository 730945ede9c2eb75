#include "kvr/memory/store/word_batch.h"
#include "tests/memory/hex/hex_record_texts.h"
#include "tests/memory/io/failing_read.h"
#include "tests/sanitized.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <random>
#include <string>
#include <string_view>

namespace {

using kvr::word_batch;
using kvr::word_store;

TEST(WordBatch, WordsAreThereAfterTheFlush) {
    word_store words;
    words.resize(4, "0");
    word_batch batch(words);
    batch.set(1, "AB");
    batch.set(2, "CD");
    batch.flush();
    EXPECT_EQ(words[0], "0");
    EXPECT_EQ(words[1], "AB");
    EXPECT_EQ(words[2], "CD");
    EXPECT_EQ(words[3], "0");
}

TEST(WordBatch, TheLastOfTwoWordsForOneAddressStays) {
    word_store words;
    words.resize(2, "0");
    word_batch batch(words);
    batch.set(0, "11");
    batch.set(1, "22");
    batch.set(0, "33");
    batch.flush();
    EXPECT_EQ(words[0], "33");
    EXPECT_EQ(words[1], "22");
}

TEST(WordBatch, APageOfTheSameWordsIsOneRun) {
    word_store words;
    words.resize(3 * 1024, "0");
    word_batch batch(words);
    for (std::uint32_t address = 0; address < 2 * 1024; ++address) {
        batch.set(address, "5A");
    }
    batch.flush();
    EXPECT_EQ(words.run_at(0).last, 2047U);
    EXPECT_EQ(words.run_at(2048).text, "0");
}

TEST(WordBatch, WordsThatAreDroppedAreNotSet) {
    word_store words;
    words.resize(2, "0");
    word_batch batch(words);
    batch.set(0, "11");
    batch.drop();
    batch.set(1, "22");
    batch.flush();
    EXPECT_EQ(words[0], "0");
    EXPECT_EQ(words[1], "22");
}

TEST(WordBatch, WordsBeforeAnExceptionAreThere) {
    std::size_t failure = 1;
    for (bool thrown = true; thrown; ++failure) {
        word_store words;
        words.resize(3000, "0");
        std::uint32_t set = 0;
        thrown = kvr_test::throws_without_allocation(failure, [&] {
            word_batch batch(words);
            for (; set < words.size(); ++set) {
                batch.set(set, kvr_test::hex_digits(set, 4));
            }
            batch.flush();
        });
        for (std::uint32_t address = 0; address < words.size(); ++address) {
            ASSERT_EQ(words[address], address < set ? kvr_test::hex_digits(address, 4) : "0") << failure;
        }
    }
    EXPECT_GT(failure, 6U); // capacity for three pages, and the pages
}

/// Runs of all kinds.
TEST(WordBatch, LeavesTheWordsThatWereSetLast) {
    std::mt19937 random(1);
    for (int round = 0; round < kvr_test::fewer(kvr_test::is_sanitized ? 10 : 30); ++round) {
        constexpr std::uint32_t size = 5000;
        word_store batched;
        batched.resize(size, "0");
        std::deque<std::string> plain(size, "0");
        word_batch batch(batched);
        for (int runs = 0; runs < 30; ++runs) {
            const std::size_t length = std::array<std::size_t, 8>{0, 1, 2, 8, 31, 64, 256, 257}[random() % 8];
            const auto first =
                static_cast<std::uint32_t>(random() % 3 == 0 ? 1024 * (random() % 4) : random() % size);
            const std::uint32_t count = std::min(static_cast<std::uint32_t>(random() % 2500), size - first);
            const bool side_by_side = length != 0 && random() % 2 == 0;
            const bool few_values = random() % 3 == 0;
            std::string all;
            for (std::uint32_t address = first; address < first + count; ++address) {
                const std::string text(length, static_cast<char>('A' + random() % (few_values ? 1 : 26)));
                plain[address] = text;
                all += text;
                if (!side_by_side) {
                    batch.set(address, text);
                }
            }
            if (side_by_side) {
                batch.set_side_by_side(first, all, length);
            }
        }
        batch.flush();
        for (std::uint32_t address = 0; address < size; ++address) {
            ASSERT_EQ(batched[address], plain[address]) << address;
        }
    }
}

/// How many of the next words of @p length at @p address must be set apart.
std::uint32_t words_set_apart(word_batch& batch, std::uint32_t address, std::size_t length) {
    std::uint32_t apart = 0;
    while (apart < 100 && batch.room_for(address, length) == nullptr) {
        ++apart;
    }
    batch.drop();
    return apart;
}

TEST(WordBatch, SetsSomeWordsApartAfterItHasCollectedLessThanEight) {
    for (const std::size_t length : {1U, 4U, 64U}) {
        for (const std::uint32_t collected : {1U, 7U, 8U, 9U}) {
            word_store words;
            words.resize(10000, "0");
            word_batch batch(words);
            for (std::uint32_t address = 0; address < collected; ++address) {
                std::fill_n(batch.room_for(address, length), length, 'A');
            }
            EXPECT_EQ(words_set_apart(batch, 5000, length), collected < 8 ? 32U : 0U) << collected;
        }
    }
}

TEST(WordBatch, CollectsWordsThatCanBePacked) {
    word_store words;
    words.resize(10, "0");
    for (const std::size_t length : {0U, 1U, 255U, 256U, 257U}) {
        word_batch batch(words);
        EXPECT_EQ(batch.room_for(0, length) != nullptr, length >= 1 && length <= 256) << length;
        batch.drop();
    }
}

TEST(WordBatch, UsesItsRoomAgainUnlessAPageMayTakeItOver) {
    word_store words;
    words.resize(10 * kvr::page_words, "0");
    word_batch batch(words);
    const auto room_at = [&](std::uint32_t address, std::size_t length) {
        const char* const room = batch.room_for(address, length);
        batch.drop();
        return room;
    };
    const char* const room = room_at(100, 4);
    EXPECT_EQ(room_at(200, 4), room);
    EXPECT_EQ(room_at(kvr::page_words, 4), room);
    EXPECT_EQ(room_at(300, 3), room) << "shorter words within a page";
    const char* const room_of_page = room_at(2 * kvr::page_words, 2);
    EXPECT_NE(room_of_page, room) << "shorter words from the first of a page on";
    EXPECT_EQ(room_at(3 * kvr::page_words, 2), room_of_page);
    EXPECT_EQ(room_at(300, 2), room_of_page);
    EXPECT_EQ(room_at(300, 1), room_of_page);
    EXPECT_NE(room_at(300, 3), room_of_page) << "longer words";
}

} // namespace
