#include "kvr/util/letter_case.h"
#include "kvrimage/formats/hex/hex_edit.h"
#include "kvrimage/formats/hex/hex_reader.h"
#include "tests/kvrimage/formats/hex/hex_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

using namespace kvrimage;
using namespace kvrimage::hex_test;

/// Records of few words do not show what their addresses count.
read_options words_of_width(std::uint32_t width) {
    read_options options = of_width(width);
    options.unit = address_unit::word;
    return options;
}

assignment assign(std::uint64_t first, std::uint64_t last, std::vector<std::uint64_t> values,
                  std::uint32_t width) {
    assignment made{{first, last}, {}};
    for (const std::uint64_t value : values) {
        made.words.push_back(word::of(value, width));
    }
    return made;
}

std::string edited(const std::string& text, const read_options& options,
                   const std::vector<assignment>& assignments) {
    const read_result ours = read_hex(text, options);
    const edit_result result = edit_hex(text, options, ours, assignments);
    return result.diagnostics.empty() ? with_edits_of(text, result.edits)
                                      : result.diagnostics.front().message;
}

std::string edited16(const std::string& text, std::uint64_t first, std::uint64_t last,
                     const std::vector<std::uint64_t>& values) {
    return edited(text, words_of_width(16), {assign(first, last, values, 16)});
}

TEST(HexEdit, ReplacesTheDigitsAndTheChecksum) {
    EXPECT_EQ(edited16(":020000000001FD\n:020001000002FB\n" + end_record, 0, 0, {0xABCD}),
              ":02000000ABCD86\n:020001000002FB\n" + end_record);
}

TEST(HexEdit, AWordThatIsThereAlreadyChangesNothing) {
    const std::string text = ":020000000001FD\n" + end_record;
    EXPECT_TRUE(edit_hex(text, words_of_width(16), read_hex(text, words_of_width(16)),
                         std::vector{assign(0, 0, {1}, 16)})
                    .edits.empty());
}

TEST(HexEdit, OfTwoRecordsTheLastOneChanges) {
    EXPECT_EQ(edited16(":020000000001FD\n:020000000000FE\n" + end_record, 0, 0, {5}),
              ":020000000001FD\n:020000000005F9\n" + end_record);
}

TEST(HexEdit, BlanksAndLineEndsAndSmallLettersStay) {
    EXPECT_EQ(edited16("; x\r\n :02 0000 00 00 01 fd\r\n:00000001ff\r\n", 0, 0, {0xAB}),
              "; x\r\n :02 0000 00 00 ab 53\r\n:00000001ff\r\n");
}

TEST(HexEdit, NewWordsGoBeforeTheEndRecord) {
    EXPECT_EQ(edited16(":020000000001FD\n" + end_record, 5, 6, {7}),
              ":020000000001FD\n:020005000007F2\n:020006000007F1\n" + end_record);
    EXPECT_EQ(edited16(":0400000000010002F9\r\n:00000001FF\r\n", 5, 7, {7}),
              ":0400000000010002F9\r\n:0400050000070007E9\r\n:020007000007F0\r\n:00000001FF\r\n");
}

TEST(HexEdit, ARecordWithoutDataStays) {
    EXPECT_EQ(edited16(":020000000001FD\n:00000500FB\n" + end_record, 5, 5, {7}),
              ":020000000001FD\n:00000500FB\n:020005000007F2\n" + end_record);
}

TEST(HexEdit, AFileWithoutDataGetsRecordsOfSixteenBytes) {
    read_options options = words_of_width(8);
    options.depth = 20;
    EXPECT_EQ(edited(end_record, options, {assign(0, 16, {1}, 8)}),
              record("1000000001010101010101010101010101010101") + record("0100100001") + end_record);
}

TEST(HexEdit, NewWordsOfAFileThatIsCutOffBeginALine) {
    read_options options = words_of_width(8);
    options.keep_going = true;
    options.depth = 4;
    EXPECT_EQ(edited(":0100000001FE", options, {assign(1, 1, {2}, 8)}), ":0100000001FE\n:0100010002FC\n");
}

TEST(HexEdit, NewRecordsHaveTheLetterCaseOfTheOthers) {
    const std::string upper = record("0200000000AB");
    const std::string added = record("02000500ABCD");
    EXPECT_EQ(edited16(kvr::to_lower_case(upper + end_record), 5, 5, {0xABCD}),
              kvr::to_lower_case(upper + added + end_record));
    EXPECT_EQ(edited16(kvr::to_lower_case(upper) + record("0200010000CD") + end_record, 5, 5, {0xABCD}),
              kvr::to_lower_case(upper) + record("0200010000CD") + added + end_record);
}

TEST(HexEdit, NewRecordsOfThePageInForceNeedNoExtendedAddress) {
    const std::string page = record("020000040001") + record("020000000001");
    EXPECT_EQ(edited16(page + end_record, 0x10005, 0x10005, {7}), page + record("020005000007") + end_record);
    EXPECT_EQ(edited16(page + end_record, 0x1FFFF, 0x1FFFF, {7}), page + record("02FFFF000007") + end_record);
    EXPECT_EQ(edited16(page + end_record, 0x20000, 0x20000, {7}),
              page + record("020000040002") + record("020000000007") + end_record);
}

TEST(HexEdit, TheLargestRecordHoldsAWord) {
    read_options options = words_of_width(2040);
    options.depth = 1;
    std::string digits;
    for (int index = 0; index < 255; ++index) {
        digits += "A5";
    }
    const assignment given{{0, 0}, {*word::parse(digits, radix::hex, 2040).value}};
    EXPECT_EQ(edited(end_record, options, {given}), record("FF000000" + digits) + end_record);
}

TEST(HexEdit, ARecordOfBytesMayEndWithItsSegment) {
    read_options options = words_of_width(8);
    options.unit = address_unit::byte;
    const std::string segment = record("020000021000");
    EXPECT_EQ(
        edited(segment + record("02FFFE001122") + end_record, options, {assign(131071, 131071, {7}, 8)}),
        segment + record("02FFFE001107") + end_record);
}

TEST(HexEdit, NewPagesGetExtendedAddresses) {
    EXPECT_EQ(edited(":020000040001F9\n:020000000001FD\n" + end_record, words_of_width(16),
                     {assign(6, 6, {1}, 16), assign(0x10006, 0x10006, {1}, 16)}),
              ":020000040001F9\n:020000000001FD\n:020000040000FA\n:020006000001F7\n:020000040001F9\n:"
              "020006000001F7\n" +
                  end_record);
}

TEST(HexEdit, ARecordDoesNotCrossItsPage) {
    EXPECT_EQ(
        edited(record("020000000001") + end_record, words_of_width(8), {assign(0xFFFF, 0x10000, {1}, 8)}),
        record("020000000001") + record("01FFFF0001") + record("020000040001") + record("0100000001") +
            end_record);
}

TEST(HexEdit, OfTwoAssignmentsTheLaterCounts) {
    EXPECT_EQ(edited(":020000000001FD\n" + end_record, words_of_width(16),
                     {assign(0, 0, {2}, 16), assign(0, 0, {3}, 16)}),
              ":020000000003FB\n" + end_record);
}

TEST(HexEdit, SaysWhatARecordCannotHold) {
    const std::string text = ":020000000001FD\n" + end_record;
    assignment dont_care{{0, 0}, {*word::parse("000X", radix::hex, 16).value}};
    EXPECT_EQ(edited(text, words_of_width(16), {dont_care}),
              "word 000X at address 0 has a don't-care bit, which Intel HEX cannot hold");
    dont_care = {{5, 6}, {word::of(1, 16), *word::parse("000X", radix::hex, 16).value}};
    EXPECT_EQ(edited(text, words_of_width(16), {dont_care}),
              "word 000X at address 6 has a don't-care bit, which Intel HEX cannot hold");
    EXPECT_EQ(edited16(text, deepest_memory, deepest_memory, {1}),
              "address 4294967296 is beyond 4294967295, the largest of Intel HEX");
    read_options wide = words_of_width(4096);
    wide.depth = 1;
    EXPECT_EQ(edited(end_record, wide, {assign(0, 0, {1}, 4096)}),
              "words of 4096 bits do not fit an Intel HEX record, which holds 2040 bits");
}

TEST(HexEdit, SaysWhichWordsHaveNoByteAddresses) {
    read_options options = words_of_width(16);
    options.unit = address_unit::byte;
    options.order = byte_order::big;
    const std::string text = record("020000000001") + end_record;
    EXPECT_EQ(edited(text, options, {assign(0x80000000, 0x80000000, {1}, 16)}),
              "address 2147483648 is beyond 2147483647, the largest of Intel HEX");
    EXPECT_EQ(edited(text, options, {assign(0x7FFFFFFF, 0x7FFFFFFF, {1}, 16)}),
              record("020000000001") + record("02000004FFFF") + record("02FFFE000001") + end_record);
    options.base = 0xFFFFFFFF;
    options.depth = 1;
    EXPECT_EQ(edited(end_record, options, {assign(0, 0, {1}, 16)}),
              "address 4294967296 is beyond 4294967295, the largest of Intel HEX");
}

TEST(HexEdit, ARefusedEditChangesNothing) {
    read_options options = words_of_width(16);
    options.keep_going = true;
    const std::string text = record("020005000001") + ":0400000000010002F0\n" + end_record;
    const edit_result result = edit_hex(text, options, read_hex(text, options),
                                        std::vector{assign(0, 0, {7}, 16), assign(5, 9, {7}, 16)});
    EXPECT_EQ(result.diagnostics.size(), 1U);
    EXPECT_TRUE(result.edits.empty());
}

TEST(HexEdit, BytesOfAWordAreReplacedWhereTheyAre) {
    read_options options = words_of_width(32);
    options.unit = address_unit::byte;
    options.order = byte_order::little;
    const std::string text = record("0300000001"
                                    "0203") +
                             record("0100030004") + end_record;
    EXPECT_EQ(edited(text, options, {assign(0, 1, {0x44332211, 0x88776655}, 32)}),
              record("0300000011"
                     "2233") +
                  record("0100030044") + record("0400040055667788") + end_record);
}

TEST(HexEdit, AWordThatIsBadIsReplaced) {
    read_options options = words_of_width(16);
    options.keep_going = true;
    const std::string bad_digit = ":02000000GG01FD\n";
    EXPECT_EQ(edited(bad_digit + end_record, options, {assign(0, 0, {1}, 16)}),
              ":020000000001FD\n" + end_record);
    const std::string bad_checksum = ":0400000000010002F0\n";
    EXPECT_EQ(edited(bad_checksum + end_record, options, {assign(0, 1, {1, 2}, 16)}),
              ":0400000000010002F9\n" + end_record);
    EXPECT_EQ(edited(bad_checksum + end_record, options, {assign(0, 0, {1}, 16)}),
              "checksum is F0, the record adds up to F9");
}

TEST(HexEdit, AFileWithoutEndRecordGetsWordsAtItsEnd) {
    read_options options = words_of_width(16);
    options.keep_going = true;
    EXPECT_EQ(edited(":020000000001FD", options, {assign(1, 1, {1}, 16)}),
              ":020000000001FD\n:020001000001FC\n");
    EXPECT_EQ(edited(":020000000001FD\n", options, {assign(1, 1, {1}, 16)}),
              ":020000000001FD\n:020001000001FC\n");
}

std::string random_file(std::mt19937& numbers, std::uint64_t bytes_of_cell) {
    std::string text;
    for (std::uint64_t count = numbers() % 6; count > 0; --count) {
        const std::uint64_t cells = 1 + numbers() % 4;
        std::string fields =
            "0" + std::to_string(cells * bytes_of_cell) + "000" + std::to_string(numbers() % 8) + "00";
        for (std::uint64_t digit = 0; digit < 2 * cells * bytes_of_cell; ++digit) {
            fields += "0123456789abcdefABCDEF"[numbers() % 22];
        }
        text += (numbers() % 9 == 0 ? record("020000020001") : "") + record(fields);
    }
    return text + record("01FF000001") + record("01FF010001") + record("01FF020001") + record("01FF030001") +
           end_record;
}

TEST(HexEdit, RandomEditsAreReadAgain) {
    std::mt19937 numbers(3);
    for (int round = 0; round < 2000; ++round) {
        const bool counts_bytes = round % 2 == 0;
        read_options options = words_of_width(counts_bytes ? 16 : 8);
        options.unit = counts_bytes ? address_unit::byte : address_unit::word;
        options.order = numbers() % 2 == 0 ? byte_order::big : byte_order::little;
        options.keep_going = true;
        const std::string text = random_file(numbers, 1);
        const read_result before = read_hex(text, options);
        memory_image expected = *before.image;
        std::vector<assignment> edits;
        // Words with a missing byte get values, because they cannot be read.
        for (const address_range& range : before.unreadable) {
            edits.push_back(assign(range.first, range.last, {numbers() % 256}, expected.width()));
        }
        for (std::uint64_t count = 1 + numbers() % 4; count > 0; --count) {
            const std::uint64_t first = numbers() % 20;
            edits.push_back(
                assign(first, first + numbers() % 5, {numbers() % 256, numbers() % 256}, expected.width()));
        }
        for (const assignment& edit : edits) {
            expected.fill(edit.addresses, edit.words);
        }
        const std::string after = edited(text, options, edits);
        options.depth = expected.depth();
        options.keep_going = false;
        const read_result again = read_hex(after, options);
        ASSERT_TRUE(again.image) << text << after << report_of(again);
        ASSERT_TRUE(*again.image == expected) << text << after;
    }
}

} // namespace
