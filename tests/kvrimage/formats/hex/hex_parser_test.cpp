#include "kvrimage/formats/hex/hex_parser.h"
#include "kvrimage/formats/hex/hex_reader.h"
#include "tests/kvrimage/formats/hex/hex_files.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace kvrimage;
using namespace kvrimage::hex_test;

TEST(HexParser, HandsOutEveryByteOfTheFileOnce) {
    const std::string text = "\n x\r\n:0100000001FE\n: 01 00\n\n:00000001FF";
    hex_parser parser(text);
    std::string all;
    while (parser.next()) {
        all += std::string(parser.line().whole.in(text)) + "\n";
    }
    EXPECT_EQ(all, text + "\n");
}

TEST(HexParser, KnowsTheFieldsOfARecord) {
    const std::string text = "  :02 A1B2 00 C3d4 E5 \r\n";
    hex_parser parser(text);
    ASSERT_TRUE(parser.next());
    const hex_line& line = parser.line();
    EXPECT_EQ(line.what, hex_line::kind::record);
    EXPECT_EQ(line.content.in(text), ":02 A1B2 00 C3d4 E5");
    EXPECT_EQ(line.record.where.in(text), ":02 A1B2 00 C3d4 E5");
    EXPECT_EQ(line.record.digits, "02A1B200C3d4E5");
    EXPECT_EQ(line.record.data_bytes, 2U);
    EXPECT_EQ(line.record.address, 0xA1B2U);
    EXPECT_EQ(line.record.type, hex_record_type::data);
    EXPECT_EQ(line.record.data(), "C3d4");
    EXPECT_EQ(line.record.span_of(text, 0, 2).in(text), "02");
    EXPECT_EQ(line.record.span_of(text, 8, 4).in(text), "C3d4");
    EXPECT_EQ(line.record.span_of(text, 6, 4).in(text), "00 C3");
    EXPECT_EQ(line.fault, hex_fault::checksum);
    EXPECT_EQ(line.fault_place.in(text), "E5");
    EXPECT_FALSE(parser.next());
}

TEST(HexParser, KnowsTheFieldsOfARecordWithoutColon) {
    const std::string text = "02 A1B2 00 C3d4 14\n";
    hex_parser parser(text);
    ASSERT_TRUE(parser.next());
    const hex_line& line = parser.line();
    EXPECT_EQ(line.what, hex_line::kind::text);
    EXPECT_TRUE(line.lacks_colon);
    EXPECT_EQ(line.record.data_bytes, 2U);
    EXPECT_EQ(line.record.address, 0xA1B2U);
    EXPECT_EQ(line.record.type, hex_record_type::data);
    EXPECT_EQ(line.record.data(), "C3d4");
}

TEST(HexParser, TellsTextsFromRecords) {
    const auto kind_of = [](const std::string& text) {
        hex_parser parser(text);
        EXPECT_TRUE(parser.next());
        return parser.line().what;
    };
    EXPECT_EQ(kind_of(" \t\r\n"), hex_line::kind::blank);
    EXPECT_EQ(kind_of("note: one"), hex_line::kind::text);
    EXPECT_EQ(kind_of("note:"), hex_line::kind::text);
    EXPECT_EQ(kind_of("a:00"), hex_line::kind::text);
    EXPECT_EQ(kind_of("a:0100000"), hex_line::kind::text);
    EXPECT_EQ(kind_of("a:01000000"), hex_line::kind::record);
    EXPECT_EQ(kind_of("a:0100000001"), hex_line::kind::record);
    EXPECT_EQ(kind_of("see: the second table"), hex_line::kind::text);
    EXPECT_EQ(kind_of("#:0100000001FE"), hex_line::kind::text);
    EXPECT_EQ(kind_of("DEADBEEF"), hex_line::kind::text);
    EXPECT_EQ(kind_of(":"), hex_line::kind::record);
}

/// A record with blanks bypasses the fast path, but must give the same result.
std::string with_trailing_blanks(const std::string& text) {
    std::string result;
    for (const char character : text) {
        result += character == '\n' ? std::string(" \n") : std::string(1, character);
    }
    return result;
}

std::string random_records(std::mt19937& numbers) {
    static const std::string characters = "0123456789abcdefABCDEFG: \n";
    std::string text;
    for (std::uint64_t count = 1 + numbers() % 8; count > 0; --count) {
        const std::uint64_t bytes = numbers() % 5;
        std::string fields = "0" + std::to_string(bytes) + "000" + std::to_string(numbers() % 10) + "00";
        for (std::uint64_t digit = 0; digit < 2 * bytes; ++digit) {
            fields += characters[numbers() % 22];
        }
        std::string line = record(fields);
        if (numbers() % 12 == 0) {
            line[numbers() % line.size()] = characters[numbers() % characters.size()];
        }
        text += numbers() % 10 == 0 ? record("0"
                                             "20000040001")
                                    : "";
        text += line;
    }
    return text + (numbers() % 10 != 0 ? ":00000001FF\n" : "");
}

TEST(HexParser, TheFastPathMakesNoDifference) {
    std::mt19937 numbers(11);
    for (int round = 0; round < rounds(4000); ++round) {
        const std::string text = random_records(numbers);
        read_options options;
        options.keep_going = true;
        options.width = static_cast<std::uint32_t>(1 + numbers() % 17);
        options.unit = address_unit::word;
        const read_result fast = read_hex(text, options);
        const read_result slow = read_hex(with_trailing_blanks(text), options);
        ASSERT_EQ(words_of(fast), words_of(slow)) << text << *options.width;
        ASSERT_EQ(fast.unreadable, slow.unreadable) << text << *options.width;
        ASSERT_EQ(report_of(fast), report_of(slow)) << text << *options.width;
    }
}

} // namespace
