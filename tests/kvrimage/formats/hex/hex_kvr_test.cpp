#include "kvrimage/formats/hex/hex_kvr.h"
#include "kvrimage/formats/hex/hex_reader.h"
#include "tests/kvrimage/formats/hex/hex_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace kvrimage;
using namespace kvrimage::hex_test;

std::string kvr_check_of(const std::string& text, const read_options& options) {
    const read_result ours = read_hex(text, options);
    EXPECT_TRUE(ours.image) << report_of(ours);
    read_result found;
    found.diagnostics = check_hex_for_kvr(text, options, ours);
    return found.diagnostics.empty()
               ? "nothing"
               : std::string(about(found.diagnostics[0].id).code) + ": " + found.diagnostics[0].message;
}

TEST(HexForKvr, ReadsTheSameWords) {
    EXPECT_EQ(kvr_check_of(record("0100000012") + record("01000100ab") + end_record, of_width(8)), "nothing");
    EXPECT_EQ(kvr_check_of(record("0400000012345678") + record("020005009ABC") + end_record, of_width(16)),
              "nothing");
    EXPECT_EQ(
        kvr_check_of(record("02000000abcd") + record("020000040001") + record("020003000001") + end_record,
                     of_width(16)),
        "nothing");
    EXPECT_EQ(kvr_check_of(record("020000000ABC") + record("020001000DEF") + end_record, of_width(12)),
              "nothing");
}

TEST(HexForKvr, SeveralWordsOfAnOddWidthInARecordLoseDigits) {
    EXPECT_THAT(kvr_check_of(record("040000000ABC0DEF") + end_record, of_width(12)),
                testing::StartsWith("kvr-reads-other-words: "));
}

TEST(HexForKvr, BytesAreReadAsWords) {
    read_options options = of_width(32);
    options.unit = address_unit::byte;
    options.order = byte_order::little;
    EXPECT_THAT(kvr_check_of(record("080000000102030405060708") + end_record, options),
                testing::StartsWith("kvr-reads-other-words: the library kvr reads 01020304 at address 0"));
}

TEST(HexForKvr, TheHighestAddressIsDropped) {
    EXPECT_NE(kvr_check_of(record("02000004FFFF") + record("01FFFF0001") + end_record, of_width(8)),
              "nothing");
}

TEST(HexForKvr, AFileWithoutDataIsRefused) {
    read_options options = of_width(8);
    options.depth = 4;
    EXPECT_EQ(kvr_check_of(end_record, options),
              "kvr-refuses: the library kvr refuses the file: it has no data");
}

TEST(HexForKvr, WhatIsKnownIsNotRepeated) {
    EXPECT_EQ(
        kvr_check_of("\xEF\xBB\xBF" + record("0100000012") + record("0100010012") + end_record, of_width(8)),
        "nothing");
    EXPECT_EQ(kvr_check_of(":01" + std::string(600, ' ') + "00000001FE\n" + end_record, of_width(8)),
              "nothing");
}

TEST(HexForKvr, AFileThatIsNotReadIsNotCompared) {
    EXPECT_TRUE(check_hex_for_kvr("x", {}, read_hex("x", {})).empty());
}

TEST(HexForKvr, ReportsTheLineThatIsNoRecord) {
    const std::string text = record("0100000012") + "\n:01000100G0\n" + end_record;
    read_options options = of_width(8);
    options.keep_going = true;
    read_result ours = read_hex(text, options);
    ASSERT_TRUE(ours.image);
    ours.diagnostics.clear(); // as if the reader had not found it
    const std::vector<diagnostic> found = check_hex_for_kvr(text, options, ours);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().message, "the library kvr refuses the file: line 3 is not a record");
    EXPECT_EQ(found.front().where, (place{3, 2, 16, 2}));
}

TEST(HexForKvr, ReportsTheLineThatIsNoRecordWhereverItIs) {
    read_options options = of_width(8);
    options.keep_going = true;
    for (std::uint64_t blank_lines = 0; blank_lines < 5; ++blank_lines) {
        const std::string text = std::string(blank_lines, '\n') + ":01000100G0\n" + record("0100000012");
        read_result ours = read_hex(text + end_record, options);
        ours.diagnostics.clear(); // as if the reader had not found it
        const std::vector<diagnostic> found = check_hex_for_kvr(text + end_record, options, ours);
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found.front().where, (place{blank_lines + 1, 2, blank_lines + 1, 2}));
    }
}

TEST(HexForKvr, WithoutAnImageThereIsNothingToCompare) {
    EXPECT_TRUE(check_hex_for_kvr(end_record, {}, {}).empty());
}

} // namespace
