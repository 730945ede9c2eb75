#include "kvrimage/formats/hex/hex_edit.h"
#include "kvrimage/formats/hex/hex_format.h"
#include "kvrimage/formats/hex/hex_reader.h"
#include "kvrimage/formats/hex/hexbytes_writer.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/image/hex_text.h"
#include "tests/kvrimage/bytes/byte_images.h"
#include "tests/kvrimage/formats/hex/hex_files.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kvrimage {

namespace {

using namespace kvrimage_tests;
using namespace hex_test;

std::string report_of_hexbytes(const std::string& text) {
    return shown_report(read_hexbytes(text, {}));
}

std::string written_hexbytes(const memory_image& image, const std::string& length = "") {
    write_options options;
    options.as = &hexbytes_format;
    options.order = byte_order::little;
    if (!length.empty()) {
        options.choices = {{"record-length", length}};
    }
    return to_text(image, options);
}

TEST(Hexbytes, AddressesCountBytesWithoutAWidth) {
    const read_result result = read_hexbytes(record("0200100012"
                                                    "34") +
                                                 record("01001200"
                                                        "56") +
                                                 end_record,
                                             {});
    EXPECT_EQ(set_words_of(result), "16=12 17=34 18=56");
    EXPECT_EQ(shown_report(result), "");
    EXPECT_EQ(result.facts.unit, address_unit::byte);
    EXPECT_EQ(result.facts.width_source, "");
}

TEST(Hexbytes, WordsMayHaveAnyWidth) {
    const std::string text = record("040000000ABC0DEF") + end_record;
    EXPECT_EQ(set_words_of(read_hexbytes(text, bytes_as(12, byte_order::big))), "0=ABC 1=DEF");
    EXPECT_EQ(shown_report(read_hexbytes(text, bytes_as(11, byte_order::big))),
              "broken surplus-bits 1:10+2 x2\n");
}

TEST(Hexbytes, StartAddressesAreFacts) {
    const read_result result = read_hexbytes(
        record("0100000012") + record("0400000512345678") + record("0400000300003800") + end_record, {});
    EXPECT_EQ(shown_report(result), "");
    ASSERT_EQ(result.facts.more.size(), 2U);
    EXPECT_EQ(result.facts.more[0].name, "start address");
    EXPECT_EQ(result.facts.more[0].value, "12345678");
    EXPECT_EQ(result.facts.more[1].value, "0000:3800");
    EXPECT_EQ(result.facts.start_address, 0x3800U);
}

TEST(Hexbytes, AStartAddressThatLacksDigitsIsShownAsItIs) {
    const read_result result = read_hexbytes(record("0100000012") + record("020000031234") + end_record, {});
    ASSERT_EQ(result.facts.more.size(), 1U);
    EXPECT_EQ(result.facts.more[0].value, "1234");
    EXPECT_EQ(result.facts.start_address, std::nullopt);
}

TEST(Hexbytes, RecordsBeyondAllAddressesAreOneDiagnostic) {
    const read_result result = read_hexbytes(
        record("02000004FFFF") + record("02FFFF001122") + record("03FFFF00334455") + end_record, {});
    EXPECT_EQ(shown_report(result), "broken address-outside 2:1+15 x2\n"
                                    "suspect overwritten-byte 3:10+2 x1\n"
                                    "broken base-needed 3:10+2 x1\n");
}

TEST(Hexbytes, ARecordInDoubtBelowTheBaseConcernsNoWord) {
    read_options options;
    options.base = 0x10;
    options.keep_going = true;
    const read_result result = read_hexbytes(":01000000120F\n" + record("0100100034") + end_record, options);
    EXPECT_EQ(set_words_of(result), "0=34");
    EXPECT_TRUE(result.unreadable.empty());
}

TEST(Hexbytes, TheStartAddressIsLinear) {
    const auto start_in = [](const std::string& start) {
        return read_hexbytes(record("0100000012") + start + end_record, {}).facts.start_address;
    };
    EXPECT_EQ(start_in(record("0400000512345678")), 0x12345678U);
    EXPECT_EQ(start_in(record("0400000312340010")), 0x12350U);
    EXPECT_EQ(start_in(""), std::nullopt);
}

TEST(Hexbytes, TheStartAddressIsWrittenBeforeTheEnd) {
    memory_image image(8, 1);
    image.set(0, word::of(0x12, 8));
    const write_options options{.as = &hexbytes_format, .start_address = 0x12345678};
    EXPECT_EQ(to_text(image, options), record("0100000012") + record("0400000512345678") + end_record);
    EXPECT_EQ(size_of_hexbytes(image, options) - size_of_hexbytes(image, {.as = &hexbytes_format}), 20U);
}

TEST(Hexbytes, BothKindsOfOffsetMoveTheAddresses) {
    EXPECT_EQ(set_words_of(read_hexbytes(record("020000021000") + record("0100010011") +
                                             record("020000040002") + record("0100010022") + end_record,
                                         {})),
              "65537=11 131073=22");
}

TEST(Hexbytes, ARecordWrapsWithinItsSegment) {
    const std::string text = record("020000021000") + record("04FFFE00AABBCCDD") + end_record;
    const read_result result = read_hexbytes(text, {});
    EXPECT_EQ(set_words_of(result), "65536=CC 65537=DD 131070=AA 131071=BB");
    EXPECT_EQ(shown_report(result), "suspect address-wrapped 2:1+19 x1\n");
    EXPECT_EQ(result.diagnostics[0].message,
              "the record continues at address 10000, the start of its segment");
    EXPECT_EQ(find_hexbytes_word(text, {}, 65536)->column, 14U);
    EXPECT_EQ(find_hexbytes_word(text, {}, 131071)->column, 12U);
    EXPECT_FALSE(find_hexbytes_word(text, {}, 131072));
}

TEST(Hexbytes, RecordsThatWrapAreOneDiagnosticWithTheFirstAddress) {
    const std::string text = record("020000021000") + record("04FFFE00AABBCCDD") + record("020000022000") +
                             record("02FFFF001122") + end_record;
    const read_result result = read_hexbytes(text, {});
    EXPECT_EQ(set_words_of(result), "65536=CC 65537=DD 131070=AA 131071=BB 131072=22 196607=11");
    EXPECT_EQ(shown_report(result), "suspect address-wrapped 2:1+19 x2\n");
    EXPECT_EQ(result.diagnostics[0].message,
              "the record continues at address 10000, the start of its segment");
}

TEST(Hexbytes, FindsBytesOfRecordsThatWrap) {
    const std::string text = record("020000021000") + record("04FFFE00AABBCCDD") + end_record;
    EXPECT_EQ(find_hexbytes_word(text, {}, 131070)->column, 10U);
    EXPECT_EQ(find_hexbytes_word(text, {}, 65537)->column, 16U);
    EXPECT_FALSE(find_hexbytes_word(text, {}, 65538));
}

TEST(Hexbytes, FindsNoByteInARecordWithAWrongChecksum) {
    const std::string text = record("0100000012") + ":010000001300\n" + end_record;
    EXPECT_EQ(find_hexbytes_word(text, {}, 0)->line, 1U);
}

TEST(Hexbytes, RecordsWithBlanksMayReachTheEndOfTheirSegment) {
    const auto in_segment = [](const std::string& spaced) {
        return read_hexbytes(record("020000021000") + spaced + end_record, {});
    };
    EXPECT_EQ(set_words_of(in_segment(":02 FFFC 00 AABB 9E\n")), "131068=AA 131069=BB");
    const read_result last = in_segment(":02 FFFE 00 AABB 9C\n");
    EXPECT_EQ(set_words_of(last), "131070=AA 131071=BB");
    EXPECT_EQ(shown_report(last), "");
    EXPECT_EQ(shown_report(in_segment(":02 FFFF 00 AABB 9B\n")), "suspect address-wrapped 2:1+19 x1\n");
}

TEST(Hexbytes, RecordsWithBlanksMayReachTheLargestAddress) {
    read_options options;
    options.base = 0xFFFF0000;
    const auto in_last_page = [&options](const std::string& spaced) {
        return shown_report(read_hexbytes(record("02000004FFFF") + spaced + end_record, options));
    };
    EXPECT_EQ(in_last_page(":02 FFFD 00 AABB 9D\n"), "");
    EXPECT_EQ(in_last_page(":02 FFFE 00 AABB 9C\n"), "");
    EXPECT_EQ(in_last_page(":02 FFFF 00 AABB 9B\n"), "broken address-outside 2:1+19 x1\n");
}

TEST(Hexbytes, ARecordWithoutDataSetsNoByte) {
    EXPECT_EQ(shown_report(read_hexbytes(":00 0000 00 00\n" + record("0100010011") + end_record, {})), "");
}

TEST(Hexbytes, AnAddressOutsideIsThatOfTheFirstRecord) {
    const read_result result = read_hexbytes(
        record("02000004FFFF") + record("02FFFF001122") + record("03FFFF00334455") + end_record, {});
    EXPECT_EQ(result.diagnostics.at(0).message, "address 100000000 is beyond the largest, FFFFFFFF");
}

TEST(Hexbytes, ARecordGoesOnAfterAPageOfLinearAddresses) {
    EXPECT_EQ(set_words_of(read_hexbytes(record("02FFFF00AABB") + end_record, {})), "65535=AA 65536=BB");
    read_options options;
    options.base = 0xFFFF0000;
    const std::string text = record("02000004FFFF") + record("02FFFF00AABB") + end_record;
    EXPECT_EQ(shown_report(read_hexbytes(text, options)), "broken address-outside 2:1+15 x1\n");
}

TEST(Hexbytes, OverlapIsSuspect) {
    EXPECT_EQ(report_of_hexbytes(record("0200000011"
                                        "22") +
                                 record("0200010033"
                                        "44") +
                                 end_record),
              "suspect overwritten-byte 2:10+2 x1\n");
}

TEST(Hexbytes, AHighFirstAddressNeedsABase) {
    const std::string text = record("020000048000") + record("0100000012") + end_record;
    EXPECT_EQ(report_of_hexbytes(text), "broken base-needed 2:10+2 x1\n");
    read_options options;
    options.base = 0x80000000;
    EXPECT_EQ(set_words_of(read_hexbytes(text, options)), "0=12");
    EXPECT_EQ(find_hexbytes_word(text, options, 0)->line, 2U);
}

TEST(Hexbytes, RecordsAreJudgedAsThoseOfWordAddresses) {
    EXPECT_EQ(report_of_hexbytes(":0100000001FF\n" + end_record), "broken checksum 1:12+2 x1\n");
    EXPECT_EQ(report_of_hexbytes(record("0100000001")), "broken missing-end-record 1:14+0 x1\n");
    EXPECT_EQ(report_of_hexbytes(end_record), "broken no-data 1:1+11 x1\n");
    EXPECT_EQ(report_of_hexbytes("text\n"), "broken not-hex 0:0+0 x1\n");
}

TEST(Hexbytes, ContentsAreJudgedByTheOtherFormat) {
    const std::string text = record("0200000011"
                                    "22") +
                             record("0200020033"
                                    "44") +
                             end_record;
    read_options options;
    options.file_name = "boot.hex";
    EXPECT_EQ(parse(text, options).facts.as, &hex_format);
    options.as = &hexbytes_format;
    const read_result result = parse(text, options);
    EXPECT_EQ(set_words_of(result), "0=11 1=22 2=33 3=44");
    EXPECT_EQ(shown_report(result), "");
    EXPECT_EQ(format_of_path("boot.ihx"), &hexbytes_format);
}

TEST(Hexbytes, EditChangesBytesInPlace) {
    const std::string text = record("0400000012345678") + end_record;
    const read_result ours = read_hexbytes(text, bytes_as(12, byte_order::little));
    EXPECT_EQ(shown_report(ours), "broken surplus-bits 1:10+2 x2\n");
    const std::string narrow = record("0400000012045608") + end_record;
    const read_result read = read_hexbytes(narrow, bytes_as(12, byte_order::little));
    const edit_result edit =
        hexbytes_format.edit(narrow, {}, read, std::vector{assignment{{1, 1}, {word::of(0xABC, 12)}}});
    EXPECT_EQ(with_edits(narrow, edit.edits), record("040000001204BC0A") + end_record);
}

TEST(Hexbytes, EditRefusesRecordsThatWrap) {
    const std::string text = record("020000021000") + record("04FFFE00AABBCCDD") + end_record;
    const edit_result edit = hexbytes_format.edit(text, {}, read_hexbytes(text, {}),
                                                  std::vector{assignment{{65536, 65536}, {word::of(1, 8)}}});
    EXPECT_TRUE(edit.edits.empty());
    EXPECT_EQ(edit.diagnostics.at(0).message,
              "the record goes beyond the end of its segment at address 131071");
}

TEST(Hexbytes, WritesRecordsOf16BytesInPages) {
    memory_image image(16, 0x8002);
    image.fill({0x7FFF, 0x8001}, std::vector{word::of(0x1234, 16)});
    EXPECT_EQ(written_hexbytes(image),
              record("02FFFE003412") + record("020000040001") + record("0400000034123412") + end_record);
    memory_image low(8, 20);
    low.fill({0, 19}, std::vector{word::of(7, 8)});
    EXPECT_EQ(written_hexbytes(low),
              record("1000000007070707070707070707070707070707") + record("0400100007070707") + end_record);
    EXPECT_EQ(written_hexbytes(low, "255"),
              record("140000000707070707070707070707070707070707070707") + end_record);
}

TEST(Hexbytes, TheSizeCountsEveryPage) {
    memory_image image(8, 0x40000, 0x10000); // page 0 needs no record
    image.set(0x10005, word::of(1, 8));
    const write_options options{.as = &hexbytes_format};
    for (std::uint64_t page = 1; page < 5; ++page) {
        image.set(page * 0x10000 + 7, word::of(2, 8));
        EXPECT_EQ(size_of_hexbytes(image, options), to_text(image, options).size()) << page;
    }
}

TEST(Hexbytes, WritingRefusesHighAddressesAndImpossibleLengths) {
    memory_image image(8, 1, 0x100000000);
    image.set(0x100000000, word(8));
    write_options options;
    options.as = &hexbytes_format;
    EXPECT_EQ(can_write(image, options).at(0).message,
              "byte address 100000000 is beyond FFFFFFFF, the largest of Intel HEX");
    options.choices = {{"record-length", "256"}};
    EXPECT_EQ(can_write(memory_image(8, 1), options).at(0).hint, "use one of: 1 to 255");
}

TEST(Hexbytes, WhatIsWrittenIsRead) {
    EXPECT_EQ(fault_of_round_trips(hexbytes_format, true), "");
}

TEST(Hexbytes, TheFastPathReadsWhatTheParserReads) {
    const auto data_record = [](std::uint64_t address, const std::string& data) {
        const std::string bytes = {static_cast<char>(data.size()), static_cast<char>(address >> 8U),
                                   static_cast<char>(address), '\0'};
        std::string fields(2 * (bytes.size() + data.size()), '0');
        encode_hex(bytes + data, fields.data());
        std::string line = record(fields);
        line.pop_back();
        return line;
    };
    EXPECT_EQ(fault_of_fast_records(hexbytes_format, data_record, end_record), "");
}

TEST(Hexbytes, DamagedFilesAreBrokenOrHaveAnImage) {
    EXPECT_EQ(fault_of_damaged(hexbytes_format, record("020000021000") + record("04FFFE00AABBCCDD") +
                                                    record("0400000512345678") + record("020000040000") +
                                                    record("0100000012") + end_record),
              "");
}

} // namespace

} // namespace kvrimage
