// A store that shrinks frees the memory of the words that it loses.

#include "kvr/memory/store/word_store.h"
#include "kvr/memory/store/word_tree.h"
#include "tests/allocation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

TEST(WordStoreShrink, GivesBackTheMemoryOfWordsThatAreLost) {
    const allocation_meter meter;
    const std::size_t before = allocation_meter::live();
    kvr::word_store words;
    words.resize(300000, "0");
    for (std::uint32_t address = 0; address < 300000; ++address) {
        words.set(address, std::to_string(100000 + address));
    }
    const std::size_t full = allocation_meter::live() - before;
    words.resize(1000, "0");
    EXPECT_LT((allocation_meter::live() - before) * 10, full);
    EXPECT_EQ(words[999], "100999");
    words.resize(300000, "1");
    EXPECT_EQ(words[1000], "1");
    EXPECT_EQ(words[299999], "1");
}

TEST(WordStoreShrink, FreesTheMemoryOfWordsFarAfterThoseThatStay) {
    constexpr auto far = static_cast<std::uint32_t>(kvr::root_words);
    const allocation_meter meter;
    const std::size_t before = allocation_meter::live();
    kvr::word_store words;
    words.resize(4 * far, "0");
    for (std::uint32_t address = 0; address < 100000; ++address) {
        words.set(far + address, std::to_string(100000 + address));
    }
    const std::size_t full = allocation_meter::live() - before;
    words.resize(1000, "0");
    EXPECT_LT((allocation_meter::live() - before) * 10, full);
    words.resize(far + 1, "1");
    EXPECT_EQ(words[999], "0");
    EXPECT_EQ(words[far], "1");
}

TEST(WordStoreShrink, FreesPagesFromTheNewEndOn) {
    constexpr auto last_root = static_cast<std::uint32_t>(kvr::root_words);
    constexpr std::uint32_t words_of_pages = 3 * kvr::page_words;
    constexpr std::size_t length = 100;
    for (const std::uint32_t first : {0U, last_root, 2 * last_root}) {
        const allocation_meter meter;
        kvr::word_store words;
        words.resize(first + words_of_pages, "0");
        for (std::uint32_t word = 0; word < words_of_pages; ++word) {
            words.set(first + word, std::to_string(100000 + word) + std::string(length - 6, 'x'));
        }
        for (std::uint32_t pages = 3; pages-- > 0;) {
            const std::size_t before = allocation_meter::live();
            words.resize(first + pages * kvr::page_words, "0");
            EXPECT_LE(allocation_meter::live() + kvr::page_words * length, before) << pages;
        }
    }
}

} // namespace
