// Reads an Intel HEX file in one pass and compares with the two passes that read a text in memory.

#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/hex/hex_reader.h"
#include "kvr/memory/hex/hex_record_walk.h"
#include "kvr/memory/io/line_source.h"
#include "kvr/memory/memory_file.h"
#include "tests/memory/error_messages.h"
#include "tests/memory/hex/hex_record_texts.h"
#include "tests/memory/io/failing_read.h"
#include "tests/memory/mutated_text.h"
#include "tests/memory/temporary_directory.h"
#include "tests/sanitized.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace kvr {
namespace {

using namespace std::string_view_literals;
using kvr_test::hex_digits;
using kvr_test::hex_record_line;

struct hex_reading {
    bool complete = false;
    bool error_occurred = false;
    KVR_ERROR_STATES error_state = ERROR_STATE_NONE;
    int invalid_line = 0;
    std::uint32_t lowest = 0;
    std::uint32_t highest = 0;
    std::uint32_t offset = 0;
    std::uint32_t depth = 0;
    std::vector<std::string> messages;
    std::vector<std::string> runs; ///< with their lengths

    friend bool operator==(const hex_reading&, const hex_reading&) = default;
};

class FastHexRecords : public testing::Test {
protected:
    /// Reads @p text twice, once as a file, and expects equal results.
    void expect_same(const std::string& text, std::uint32_t word_size, std::uint32_t address_offset) {
        const hex_reading in_one_pass = read(text, word_size, address_offset, true);
        const hex_reading in_two = read(text, word_size, address_offset, false);
        ASSERT_TRUE(in_one_pass == in_two) << word_size << " bits\n" << text.substr(0, 4000);
    }

    hex_reading read(const std::string& text, std::uint32_t word_size, std::uint32_t address_offset,
                     bool as_file) {
        KVR_MEMORY_FILE owner;
        hex_memory memory(&owner);
        memory.word_size = word_size;
        memory.address_offset = address_offset;
        hex_reading result;
        if (as_file) {
            result.complete = read_hex_file(memory, folder.file("data.hex", text));
        } else {
            line_source source(text, hex_record_walk::longest_line);
            result.complete = read_hex_lines(memory, source);
        }
        result.error_occurred = memory.error_occurred;
        result.error_state = memory.error_state;
        result.invalid_line = memory.invalid_line_number;
        result.lowest = memory.lowest_address;
        result.highest = memory.highest_address;
        result.offset = memory.address_offset;
        result.depth = memory.number_of_words;
        result.messages = kvr_test::error_messages(owner);
        for (std::uint64_t address = 0; address < memory.data_words.size();) {
            const word_run run = memory.data_words.run_at(static_cast<std::uint32_t>(address));
            result.runs.push_back(std::string(run.text) + " " + std::to_string(run.last));
            address = std::uint64_t{run.last} + 1;
        }
        return result;
    }

    /// Records of the same length at mostly ascending addresses.
    std::string regular_file(std::uint32_t word_size, std::mt19937& random) {
        const std::size_t word_bytes = (word_size + 7) / 8;
        const std::size_t words = random() % 2 == 0 ? 1 : 1 + random() % 8;
        const std::size_t records = random() % 8 == 0 ? 3000 : 1 + random() % 100;
        const std::string line_end = random() % 4 == 0 ? "\r\n" : "\n";
        unsigned address = std::array<unsigned, 4>{0, 7, 65500, 1024}[random() % 4];
        std::string text;
        for (std::size_t i = 0; i < records; ++i) {
            if (address > 0xFFFF) {
                address %= 0x10000;
                text +=
                    hex_record_line(random() % 2 == 0 ? 4 : 2, 0, hex_digits(1 + random() % 3, 4)) + line_end;
            }
            std::string data;
            while (data.size() < 2 * words * word_bytes) {
                data += hex_digits(random() % (random() % 8 == 0 ? 2 : 256), 2);
            }
            text += hex_record_line(0, address, data) + line_end;
            address += static_cast<unsigned>(random() % 500 == 0 ? random() % 100 : words);
        }
        return text + ":00000001FF" + line_end;
    }

    kvr_test::temporary_directory folder;
};

constexpr std::array<std::uint32_t, 8> word_sizes = {8, 16, 32, 128, 1, 12, 256, 264};

TEST_F(FastHexRecords, RegularFilesGiveTheWordsThatTwoPassesGive) {
    std::mt19937 random(1);
    for (std::size_t i = 0; i < kvr_test::fewer(400U); ++i) {
        const std::uint32_t word_size = word_sizes[i % word_sizes.size()];
        expect_same(regular_file(word_size, random), word_size,
                    i % 5 == 0 ? 16 * static_cast<std::uint32_t>(i) : 0);
    }
}

TEST_F(FastHexRecords, MutatedFilesLeaveWhatTwoPassesLeave) {
    std::mt19937 random(2);
    kvr_test::text_mutator mutator(random, "0123456789ABCDEFabcdefG: \t\r\n\0\x80\xFF"sv);
    for (std::size_t i = 0; i < kvr_test::fewer(700U); ++i) {
        const std::uint32_t word_size = word_sizes[i % word_sizes.size()];
        std::string text = regular_file(word_size, random);
        mutator.mutate(text, 1 + mutator.below(3));
        expect_same(text, word_size, 0);
    }
}

TEST_F(FastHexRecords, AWrongChecksumIsSeenWhereverItStandsInARun) {
    for (std::size_t wrong = 0; wrong < 40; ++wrong) {
        std::string text;
        for (unsigned address = 0; address < 40; ++address) {
            std::string line = hex_record_line(0, address, "5A");
            if (address == wrong) {
                line.back() = line.back() == '0' ? '1' : '0';
            }
            text += line + "\n";
        }
        text += ":00000001FF\n";
        expect_same(text, 8, 0);
        EXPECT_EQ(read(text, 8, 0, true).invalid_line, static_cast<int>(wrong + 1));
    }
}

TEST_F(FastHexRecords, RecordsThatDescendAreReadInTwoPasses) {
    std::string text;
    for (unsigned address = 100; address-- > 0;) {
        text += hex_record_line(0, address, hex_digits(address, 2)) + "\n";
    }
    text += ":00000001FF\n";
    expect_same(text, 8, 0);
    const hex_reading result = read(text, 8, 0, true);
    EXPECT_TRUE(result.complete);
    EXPECT_EQ(result.runs.size(), 100U);
    EXPECT_EQ(result.runs.front(), "00 0");
}

TEST_F(FastHexRecords, WordsBeforeAnExceptionAreStored) {
    constexpr std::uint32_t count = 2500;
    std::string text;
    for (std::uint32_t address = 0; address < count; ++address) {
        text += hex_record_line(0, address, hex_digits(address, 4)) + "\n";
    }
    text += ":00000001FF\n";
    std::uint32_t most_stored = 0;
    bool thrown = true;
    for (std::size_t failure = 1; thrown; ++failure) {
        KVR_MEMORY_FILE owner;
        hex_memory memory(&owner);
        memory.word_size = 16;
        line_source source(text, hex_record_walk::longest_line);
        thrown = kvr_test::throws_without_allocation(
            failure, [&] { static_cast<void>(read_hex_lines(memory, source)); });
        std::uint32_t stored = 0;
        while (stored < memory.data_words.size() && memory.data_words[stored] == hex_digits(stored, 4)) {
            ++stored;
        }
        most_stored = thrown ? std::max(most_stored, stored) : most_stored;
    }
    // The last allocation is for the last page, after all words were read.
    EXPECT_EQ(most_stored, count);
}

TEST_F(FastHexRecords, RecordsUpToTheLastAddressOfAllLeaveWhatTwoPassesLeave) {
    std::string text = ":02000004FFFFFC\n";
    for (std::uint32_t address = 0xFFE0; address < 0x10000; ++address) {
        text += hex_record_line(0, address, "AB") + "\n";
    }
    // No reader reads past the end record, but the fast path needs lines after the records.
    expect_same(text + ":00000001FF\n" + std::string(1000, '\n'), 8, 0);
}

} // namespace
} // namespace kvr
