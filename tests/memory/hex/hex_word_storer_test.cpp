#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/hex/hex_word_storer.h"
#include "tests/memory/hex/hex_record_texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using kvr::fast_hex_words;
using kvr::hex_word_storer;
using kvr::word_store;

/// The part of a record that determines its stored words.
struct data_record {
    data_record(std::uint32_t address, std::string_view data)
        : line(kvr_test::hex_record_line(0, address, std::string(data))) {
        record.text = std::string_view(line).substr(1);
        record.data_bytes = static_cast<std::uint32_t>(data.size() / 2);
        record.word_address = address;
        record.kind = kvr::hex_record_type::data;
    }

    std::string line;
    kvr::hex_record record;
};

class EarlyHexWords : public testing::Test {
protected:
    EarlyHexWords() { memory.word_size = 16; }

    static void take(fast_hex_words& words, std::uint32_t address, std::string_view data,
                     std::uint32_t address_offset = 0) {
        const data_record taken(address, data);
        words.take(taken.record, static_cast<std::uint32_t>(data.size() / 4), address_offset);
    }

    kvr::hex_memory memory{nullptr};
};

TEST_F(EarlyHexWords, TakeRecordsThatAscend) {
    fast_hex_words words(memory);
    take(words, 0, "11112222");
    take(words, 2, "3333");
    take(words, 5, "4444", 0x10000);
    EXPECT_TRUE(words.complete());
    const word_store store = words.finish(0x10006);
    ASSERT_EQ(store.size(), 0x10006U);
    EXPECT_EQ(store[0], "1111");
    EXPECT_EQ(store[1], "2222");
    EXPECT_EQ(store[2], "3333");
    EXPECT_EQ(store[3], "0");
    EXPECT_EQ(store[0x10004], "0");
    EXPECT_EQ(store[0x10005], "4444");
}

TEST_F(EarlyHexWords, AreGivenUpWhenARecordGoesBack) {
    fast_hex_words words(memory);
    take(words, 4, "11112222");
    take(words, 6, "3333");
    EXPECT_TRUE(words.complete());
    take(words, 6, "4444");
    EXPECT_FALSE(words.complete());
    take(words, 9, "5555");
    EXPECT_FALSE(words.complete());
    EXPECT_EQ(words.room_for_some(20, 4).count, 0U);
}

TEST_F(EarlyHexWords, AreGivenUpBeyondTheLargestStore) {
    fast_hex_words words(memory);
    take(words, 0xFFFE, "1111", 0xFFFF0000);
    EXPECT_TRUE(words.complete());
    take(words, 0xFFFF, "2222", 0xFFFF0000);
    EXPECT_FALSE(words.complete());
}

TEST_F(EarlyHexWords, HaveRoomAfterTheLastWordOnly) {
    fast_hex_words words(memory);
    EXPECT_EQ(words.room_for_some(0, 4).count, 0U);
    take(words, 8, "1111");
    EXPECT_EQ(words.room_for_some(8, 4).count, 0U);
    const auto room = words.room_for_some(9, 4);
    ASSERT_GE(room.count, 2U);
    std::copy_n("AAAABBBB", 8, room.place);
    words.take(9, 2);
    EXPECT_EQ(words.room_for_some(10, 4).count, 0U);
    take(words, 11, "CCCC");
    EXPECT_TRUE(words.complete());
    const word_store store = words.finish(12);
    EXPECT_EQ(store[8], "1111");
    EXPECT_EQ(store[9], "AAAA");
    EXPECT_EQ(store[10], "BBBB");
    EXPECT_EQ(store[11], "CCCC");
}

TEST_F(EarlyHexWords, HaveNoRoomBeyondTheLargestStore) {
    fast_hex_words words(memory);
    take(words, 0xFFF0, "1111", 0xFFFF0000);
    EXPECT_EQ(words.room_for_some(0xFFFFFFF1, 4).count, 14U);
    EXPECT_EQ(words.room_for_some(0xFFFFFFFF, 4).count, 0U);
}

TEST_F(EarlyHexWords, BeyondTheSizeAreDropped) {
    fast_hex_words words(memory);
    take(words, 0, "111122223333");
    const word_store store = words.finish(2);
    EXPECT_EQ(store.size(), 2U);
    EXPECT_EQ(store[1], "2222");
}

/// The words of a store of four; "." for unset ones.
std::string stored(std::uint32_t word_size, std::uint32_t first, std::string_view data,
                   std::uint32_t record_bytes, std::uint32_t expected_count) {
    word_store store;
    store.resize(4, ".");
    hex_word_storer storer(store, word_size);
    EXPECT_EQ(storer.store(first, data, record_bytes), expected_count);
    storer.flush();
    std::string words;
    for (std::uint32_t address = 0; address < store.size(); ++address) {
        words.append(store[address]).append(" ");
    }
    return words;
}

TEST(HexWordStorer, StoresWholeWords) {
    EXPECT_EQ(stored(8, 1, "AB", 1, 1), ". AB . . ");
    EXPECT_EQ(stored(8, 1, "ABCDEF", 3, 3), ". AB CD EF ");
    EXPECT_EQ(stored(16, 0, "12345678", 4, 2), "1234 5678 . . ");
    EXPECT_EQ(stored(24, 3, "123456", 3, 1), ". . . 123456 ");
}

TEST(HexWordStorer, CutsWordsThatAreNoWholeBytes) {
    EXPECT_EQ(stored(4, 0, "1A2B", 2, 2), "A B . . ");
    EXPECT_EQ(stored(12, 0, "0123", 2, 1), "123 . . . ");
}

TEST(HexWordStorer, DropsWordsBeyondTheStoreButCountsThem) {
    EXPECT_EQ(stored(8, 2, "ABCDEF", 3, 3), ". . AB CD ");
    EXPECT_EQ(stored(8, 4, "AB", 1, 1), ". . . . ");
}

TEST(HexWordStorer, StoresNothingOfWordsWithoutBits) {
    EXPECT_EQ(stored(0, 0, "ABCD", 2, 0), ". . . . ");
}

TEST(HexWordStorer, DropForgetsWhatIsNotFlushed) {
    word_store store;
    store.resize(4, ".");
    hex_word_storer storer(store, 8);
    storer.store(0, "AB", 1);
    storer.drop();
    storer.flush();
    EXPECT_EQ(store[0], ".");
}

TEST(HexWordStorer, TakesRecordsOfChangingLength) {
    word_store store;
    store.resize(8, ".");
    hex_word_storer storer(store, 16);
    EXPECT_EQ(storer.store(0, "1111", 2), 1U);
    EXPECT_EQ(storer.store(1, "22223333", 4), 2U);
    EXPECT_EQ(storer.store(3, "4444", 2), 1U);
    storer.flush();
    EXPECT_EQ(store[0], "1111");
    EXPECT_EQ(store[1], "2222");
    EXPECT_EQ(store[2], "3333");
    EXPECT_EQ(store[3], "4444");
    EXPECT_EQ(store[4], ".");
}

} // namespace
