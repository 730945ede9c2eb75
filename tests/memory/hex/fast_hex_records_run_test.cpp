// The number of records that fast_hex_records reads at once; the other, slower reader reads the rest.

#include "kvr/memory/hex/fast_hex_records.h"
#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/memory_file.h"
#include "tests/memory/hex/hex_record_texts.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace {

using kvr_test::hex_digits;
using kvr_test::hex_record_line;

/// More characters than are read after the records.
const std::string text_after_records(64, '.');

class FastHexRecordsRun : public testing::Test {
protected:
    FastHexRecordsRun() { memory.word_size = 16; }

    [[nodiscard]] std::string records(unsigned first, unsigned count) const {
        std::string text;
        for (unsigned address = first; address < first + count; ++address) {
            text += hex_record_line(0, address, hex_digits(address, memory.word_size / 4)) + line_end;
        }
        return text;
    }

    /// Reports the two records that begin at @p first: addresses are predicted from the second record on.
    void learn_two(kvr::fast_hex_records& fast_records, kvr::fast_hex_words& words, unsigned first) const {
        for (const unsigned address : {first, first + 1}) {
            const std::string line = records(address, 1);
            const std::string_view without_end =
                std::string_view(line).substr(0, line.size() - line_end.size());
            const auto record = std::get<kvr::hex_record>(kvr::split_hex_record(without_end));
            words.take(record, 1, 0);
            fast_records.learn(record, line);
        }
    }

    KVR_MEMORY_FILE owner;
    kvr::hex_memory memory{&owner};
    std::string line_end = "\n";
};

TEST_F(FastHexRecordsRun, GoesUpToTheAddressThatDiffersInMoreThanTheLastDigit) {
    for (const unsigned first : {0x10U, 0x120U, 0x4560U}) {
        kvr::fast_hex_words words(memory);
        kvr::fast_hex_records fast_records(words, memory.word_size);
        learn_two(fast_records, words, first);
        // "9" is followed by "A", which is not the next character.
        const auto up_to_nine = fast_records.read(records(first + 2, 14) + text_after_records, 0);
        EXPECT_EQ(up_to_nine.first, first + 2);
        EXPECT_EQ(up_to_nine.count, 8U);
        EXPECT_EQ(up_to_nine.line_size, records(first, 1).size());
        const auto up_to_f = fast_records.read(records(first + 10, 6) + text_after_records, 0);
        EXPECT_EQ(up_to_f.first, first + 10);
        EXPECT_EQ(up_to_f.count, 6U);
        const kvr::word_store store = words.finish(first + 16);
        for (unsigned address = first; address < first + 16; ++address) {
            EXPECT_EQ(store[address], hex_digits(address, 4));
        }
    }
}

TEST_F(FastHexRecordsRun, TakesLinesThatEndWithCarriageReturn) {
    line_end = "\r\n";
    kvr::fast_hex_words words(memory);
    kvr::fast_hex_records fast_records(words, memory.word_size);
    learn_two(fast_records, words, 0x230);
    EXPECT_EQ(fast_records.read(records(0x232, 3) + text_after_records, 0).count, 3U);
}

TEST_F(FastHexRecordsRun, LooksNoFurtherThanTheText) {
    kvr::fast_hex_words words(memory);
    kvr::fast_hex_records fast_records(words, memory.word_size);
    learn_two(fast_records, words, 0x230);
    const std::string two = records(0x232, 2);
    EXPECT_EQ(fast_records.read(two + std::string(31, '.'), 0).count, 1U);
    EXPECT_EQ(fast_records.read(records(0x233, 1) + std::string(32, '.'), 0).count, 1U);
}

TEST_F(FastHexRecordsRun, TakesWordsOfUpTo64Digits) {
    for (const std::uint32_t word_size : {8U, 256U, 264U}) {
        memory.word_size = word_size;
        kvr::fast_hex_words words(memory);
        kvr::fast_hex_records fast_records(words, word_size);
        learn_two(fast_records, words, 0x20);
        const auto run = fast_records.read(records(0x22, 4) + text_after_records, 0);
        EXPECT_EQ(run.count, word_size <= 256 ? 4U : 0U) << word_size;
    }
}

TEST_F(FastHexRecordsRun, ReadsNothingBeforeItHasLearned) {
    kvr::fast_hex_words words(memory);
    kvr::fast_hex_records fast_records(words, memory.word_size);
    EXPECT_EQ(fast_records.read(records(0, 4) + text_after_records, 0).count, 0U);
}

} // namespace
