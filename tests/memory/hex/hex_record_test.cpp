#include "kvr/memory/hex/fast_hex_record.h"
#include "kvr/memory/hex/hex_record.h"
#include "tests/memory/hex/hex_record_texts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <variant>

namespace kvr {
namespace {

struct number_case {
    std::string_view text;
    std::uint32_t value;
};

/// Without this, googletest would show the bytes, including the padding between the fields.
// NOLINTNEXTLINE(readability-identifier-naming): given
void PrintTo(const number_case& number, std::ostream* stream) {
    *stream << number.value;
}

class HexNumber : public testing::TestWithParam<number_case> {};

TEST_P(HexNumber, IsReadAsTheCLibraryDoesIn32Bits) {
    EXPECT_EQ(hex_number(GetParam().text), GetParam().value) << '"' << GetParam().text << '"';
}

INSTANTIATE_TEST_SUITE_P(Digits, HexNumber,
                         testing::Values(number_case{"", 0}, number_case{"0", 0}, number_case{"7", 7},
                                         number_case{"1F", 0x1F}, number_case{"aB", 0xAB},
                                         number_case{"00000000001", 1}, number_case{"FFFFFFFF", 0xFFFFFFFF},
                                         number_case{"DEADBEEF", 0xDEADBEEF}));
INSTANTIATE_TEST_SUITE_P(EndAtFirstOtherCharacter, HexNumber,
                         testing::Values(number_case{"1G", 1}, number_case{"G1", 0},
                                         number_case{"12 3", 0x12}, number_case{"4-1", 4},
                                         number_case{".5", 0}, number_case{std::string_view("1\0002", 3), 1},
                                         number_case{"\xFF", 0}));
INSTANTIATE_TEST_SUITE_P(WhiteSpaceInFront, HexNumber,
                         testing::Values(number_case{" \t\n\v\f\r12", 0x12}, number_case{"\v", 0},
                                         number_case{"\2051", 0}, number_case{"\2401", 0}));
INSTANTIATE_TEST_SUITE_P(Signs, HexNumber,
                         testing::Values(number_case{"+1A", 0x1A}, number_case{"-1", 0xFFFFFFFF},
                                         number_case{"-0", 0}, number_case{"-FFFFFFFF", 1},
                                         number_case{"\v-10", 0xFFFFFFF0}, number_case{"--1", 0},
                                         number_case{"+-1", 0}, number_case{"- 1", 0}));
INSTANTIATE_TEST_SUITE_P(Prefixes, HexNumber,
                         testing::Values(number_case{"0x1F", 0x1F}, number_case{"0X1f", 0x1F},
                                         number_case{"-0x2", 0xFFFFFFFE}, number_case{"0x", 0},
                                         number_case{"0xG", 0}, number_case{"x1", 0}, number_case{"00x1", 0},
                                         number_case{"0x0x1", 0}));
INSTANTIATE_TEST_SUITE_P(TooLarge, HexNumber,
                         testing::Values(number_case{"100000000", 0xFFFFFFFF},
                                         number_case{"FFFFFFFFF", 0xFFFFFFFF},
                                         number_case{"-100000000", 0xFFFFFFFF},
                                         number_case{"123456789ABCDEF0123456789", 0xFFFFFFFF},
                                         number_case{"000000000FFFFFFFF", 0xFFFFFFFF},
                                         number_case{"00000000012345678", 0x12345678}));

TEST(HexNumber, AgreesWithTheCLibraryOnTextsOfUpTo8Characters) {
    std::mt19937 numbers(1);
    const std::string characters = "0123456789abcdefABCDEFxX+-gG .\v\f";
    for (int i = 0; i < 200000; ++i) {
        std::string text;
        for (std::size_t size = numbers() % 9; text.size() < size;) {
            text += characters[numbers() % characters.size()];
        }
        const unsigned long expected = std::strtoul(text.c_str(), nullptr, 16);
        ASSERT_EQ(hex_number(text), static_cast<std::uint32_t>(expected)) << '"' << text << '"';
    }
}

TEST(SumOfBytes, AddsTheBytesOfPiecesOf8Digits) {
    EXPECT_EQ(sum_of_bytes(""), 0U);
    EXPECT_EQ(sum_of_bytes("12345678"), 0x12U + 0x34U + 0x56U + 0x78U);
    EXPECT_EQ(sum_of_bytes("FFFFFFFFFFFFFFFF"), 8 * 0xFFU);
    EXPECT_EQ(sum_of_bytes("0100000012ED"), 0x100U);
}

TEST(SumOfBytes, OddLastPieceBeginsWithAByteOfOneDigit) {
    EXPECT_EQ(sum_of_bytes("123"), 0x1U + 0x23U);
    EXPECT_EQ(sum_of_bytes("12345678A"), 0x12U + 0x34U + 0x56U + 0x78U + 0xAU);
    EXPECT_EQ(sum_of_bytes("12345678ABC"), 0x12U + 0x34U + 0x56U + 0x78U + 0xAU + 0xBCU);
}

TEST(SumOfBytes, PieceEndsAtItsFirstOtherCharacterAndTheNextOneIsReadAgain) {
    EXPECT_EQ(sum_of_bytes("12G4567890"), 0x12U + 0x90U);
    EXPECT_EQ(sum_of_bytes("1234567G12"), 0x01U + 0x23U + 0x45U + 0x67U + 0x12U);
    EXPECT_EQ(sum_of_bytes("-000000112"), 4 * 0xFFU + 0x12U);
    EXPECT_EQ(sum_of_bytes("0x000012"), 0x12U);
}

TEST(WithoutBlanks, LineWithoutBlanksIsHandedOutAsItIs) {
    const std::string line = ":00000001FF";
    std::string buffer;
    EXPECT_EQ(without_blanks(line, buffer).data(), line.data());
    EXPECT_EQ(without_blanks("", buffer), "");
}

TEST(WithoutBlanks, SpaceTabNewlineAndReturnAreRemovedAnywhere) {
    std::string buffer = "left over";
    EXPECT_EQ(without_blanks(" \t:00 00\n00\r01\tFF \r", buffer), ":00000001FF");
    EXPECT_EQ(without_blanks(" \t\r\n", buffer), "");
}

TEST(WithoutBlanks, OtherWhiteSpaceStays) {
    std::string buffer;
    EXPECT_EQ(without_blanks(" :\v0\f ", buffer), ":\v0\f");
}

TEST(SplitHexRecord, FieldsAreViewsOfTheLine) {
    const std::string line = ":04A5c700123456780e";
    const auto split = split_hex_record(line);
    ASSERT_TRUE(std::holds_alternative<hex_record>(split));
    const auto& record = std::get<hex_record>(split);
    EXPECT_EQ(record.length(), "04");
    EXPECT_EQ(record.address(), "A5c7");
    EXPECT_EQ(record.type(), "00");
    EXPECT_EQ(record.data(), "12345678");
    EXPECT_EQ(record.checksum(), "0e");
    EXPECT_EQ(record.text.data(), line.data() + 1);
    EXPECT_EQ(record.data_bytes, 4U);
    EXPECT_EQ(record.word_address, 0xA5C7U);
    EXPECT_EQ(record.kind, hex_record_type::data);
}

TEST(SplitHexRecord, RecordWithoutDataHasAnEmptyDataField) {
    const auto split = split_hex_record(":00000001FF");
    ASSERT_TRUE(std::holds_alternative<hex_record>(split));
    EXPECT_EQ(std::get<hex_record>(split).data(), "");
    EXPECT_EQ(std::get<hex_record>(split).checksum(), "FF");
    EXPECT_EQ(std::get<hex_record>(split).kind, hex_record_type::end_of_file);
}

TEST(SplitHexRecord, TypesAreComparedAsTexts) {
    const auto kind_of = [](const std::string& type) {
        return std::get<hex_record>(split_hex_record(":000000" + type + "00")).kind;
    };
    EXPECT_EQ(kind_of("00"), hex_record_type::data);
    EXPECT_EQ(kind_of("01"), hex_record_type::end_of_file);
    EXPECT_EQ(kind_of("02"), hex_record_type::extended_segment_address);
    EXPECT_EQ(kind_of("03"), hex_record_type::start_segment_address);
    EXPECT_EQ(kind_of("04"), hex_record_type::extended_linear_address);
    EXPECT_EQ(kind_of("05"), hex_record_type::start_linear_address);
    for (const char* type : {"06", "0/", "10", "1A", "+1", "0x", "\v1", "FF"}) {
        EXPECT_EQ(kind_of(type), hex_record_type::unknown) << type;
    }
}

TEST(SplitHexRecord, LengthIsReadAsANumberNotAsDigits) {
    const auto bytes_of = [](const std::string& line) {
        const auto split = split_hex_record(line);
        return std::holds_alternative<hex_record>(split)
                   ? std::optional(std::get<hex_record>(split).data_bytes)
                   : std::nullopt;
    };
    EXPECT_EQ(bytes_of(":+100000012EC"), 1U);
    EXPECT_EQ(bytes_of(":1G00000012EC"), 1U);
    EXPECT_EQ(bytes_of(":\v100000012EC"), 1U);
    EXPECT_EQ(bytes_of(":GG000000EC"), 0U);
}

struct bad_split_case {
    std::string_view line;
    fault_code code;
    std::size_t first;
    std::size_t length;
};

class SplitHexRecordRefuses : public testing::TestWithParam<bad_split_case> {};

TEST_P(SplitHexRecordRefuses, Line) {
    const auto split = split_hex_record(GetParam().line);
    ASSERT_TRUE(std::holds_alternative<hex_record_fault>(split)) << GetParam().line;
    const auto& fault = std::get<hex_record_fault>(split);
    EXPECT_EQ(fault.code, GetParam().code) << GetParam().line;
    EXPECT_EQ(fault.first, GetParam().first) << GetParam().line;
    EXPECT_EQ(fault.length, GetParam().length) << GetParam().line;
}

INSTANTIATE_TEST_SUITE_P(FieldsThatEndEarly, SplitHexRecordRefuses,
                         testing::Values(bad_split_case{":", fault_code::record_too_short, 0, 1},
                                         bad_split_case{":0", fault_code::record_too_short, 0, 2},
                                         bad_split_case{":00", fault_code::record_too_short, 0, 3},
                                         bad_split_case{":000", fault_code::record_too_short, 0, 4},
                                         bad_split_case{":000000", fault_code::record_too_short, 0, 7},
                                         bad_split_case{":0000000", fault_code::record_too_short, 0, 8}));
INSTANTIATE_TEST_SUITE_P(OtherLengthThanTheRecordSays, SplitHexRecordRefuses,
                         testing::Values(bad_split_case{":00000001", fault_code::record_length, 1, 2},
                                         bad_split_case{":00000001F", fault_code::record_length, 1, 2},
                                         bad_split_case{":00000001FF0", fault_code::record_length, 1, 2},
                                         bad_split_case{":0200000012ED", fault_code::record_length, 1, 2},
                                         bad_split_case{":0100000012EDED", fault_code::record_length, 1, 2}));
// 2 times (2^32 - 1) plus 2 is 0 in 32 bits.
INSTANTIATE_TEST_SUITE_P(LengthBeyond32Bits, SplitHexRecordRefuses,
                         testing::Values(bad_split_case{":-1000000", fault_code::record_length, 1, 2},
                                         bad_split_case{":-100000000", fault_code::record_length, 1, 2}));

TEST(CheckHexRecord, BytesThatAddUpTo0Modulo256Pass) {
    const auto split = split_hex_record(":0400000012345678E8");
    EXPECT_TRUE(has_valid_checksum(std::get<hex_record>(split)));
    EXPECT_FALSE(check_hex_record(std::get<hex_record>(split)));
}

TEST(CheckHexRecord, ChecksumOffByOneIsAtFault) {
    const auto split = split_hex_record(":0400000012345678E9");
    const auto fault = check_hex_record(std::get<hex_record>(split));
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->code, fault_code::checksum);
    EXPECT_EQ(fault->first, 17U);
    EXPECT_EQ(fault->length, 2U);
}

TEST(CheckHexRecord, Type06IsAtFault) {
    const auto split = split_hex_record(":0100000600F9");
    const auto fault = check_hex_record(std::get<hex_record>(split));
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->code, fault_code::record_type);
    EXPECT_EQ(fault->first, 7U);
    EXPECT_EQ(fault->length, 2U);
}

TEST(CheckHexRecord, ChecksumIsTestedBeforeTheType) {
    const auto split = split_hex_record(":0100000600F8");
    EXPECT_EQ(check_hex_record(std::get<hex_record>(split))->code, fault_code::checksum);
    EXPECT_EQ(check_hex_record_type(std::get<hex_record>(split))->code, fault_code::record_type);
}

TEST(ParseFastHexRecord, TakesTheFirstLineAndNothingAfterIt) {
    hex_record record;
    const std::string_view lines = ":01000100Ab53\n:00000001FF\n";
    EXPECT_EQ(parse_fast_hex_record(lines, record), 14U);
    EXPECT_EQ(record.text, "01000100Ab53");
    EXPECT_EQ(record.text.data(), lines.data() + 1);
    EXPECT_EQ(record.data(), "Ab");
    EXPECT_EQ(record.data_bytes, 1U);
    EXPECT_EQ(record.word_address, 1U);
    EXPECT_EQ(record.kind, hex_record_type::data);
}

TEST(ParseFastHexRecord, CarriageReturnBeforeTheNewlineIsPartOfTheLineEnd) {
    hex_record record;
    EXPECT_EQ(parse_fast_hex_record(":01000100AB53\r\n", record), 15U);
    EXPECT_EQ(record.text, "01000100AB53");
}

TEST(ParseFastHexRecord, LongestRecordIsTaken) {
    const std::string line = kvr_test::hex_record_line(0, 0xFFFF, std::string(510, 'a')) + "\n";
    hex_record record;
    EXPECT_EQ(parse_fast_hex_record(line, record), 522U);
    EXPECT_EQ(record.data_bytes, 255U);
}

TEST(ParseFastHexRecord, CharacterAfterTheTextIsNotPartOfTheRecord) {
    const std::string line = kvr_test::hex_record_line(0, 0, "AA");
    hex_record record;
    EXPECT_EQ(parse_fast_hex_record(std::string_view(line).substr(0, line.size() - 1), record), 0U);
}

TEST(ParseFastHexRecord, EveryOtherLineIsLeftToTheExactPath) {
    hex_record record;
    for (const std::string_view lines : {
             "",
             "\n",
             ":\n",
             ":0\n",
             ":00000001FF",
             ":00000001FF\r",
             ":00000001F\n",
             ":00000001FF0\n",
             ":00000001FF \n",
             ":00000001FF\r\r\n",
             " :00000001FF\n",
             ": 00000001FF\n",
             ":0000 0001FF\n",
             "x:00000001FF\n",
             ":00000001FE\n",
             ":0100000600F9\n",
             ":0G000000100\n",
             ":G0000001FF\n",
             ":0400000012345678\n",
             ":0400000012\n:0000000\n1FF\n",
             ":00000001FG\n",
             ":FF000000AB56\n",
         }) {
        EXPECT_EQ(parse_fast_hex_record(lines, record), 0U) << lines;
    }
    EXPECT_EQ(record.text, "");
}

/// The record of @p line by the exact path.
std::optional<hex_record> exact_record(std::string_view line, std::string& buffer) {
    const std::string_view text = without_blanks(line, buffer);
    if (!text.starts_with(':')) {
        return std::nullopt;
    }
    const auto split = split_hex_record(text);
    if (std::holds_alternative<hex_record_fault>(split) || check_hex_record(std::get<hex_record>(split))) {
        return std::nullopt;
    }
    return std::get<hex_record>(split);
}

void expect_same_record(const hex_record& plain, const std::optional<hex_record>& exact,
                        const std::string& line) {
    ASSERT_TRUE(exact) << line;
    EXPECT_EQ(plain.text, exact->text) << line;
    EXPECT_EQ(plain.data_bytes, exact->data_bytes) << line;
    EXPECT_EQ(plain.word_address, exact->word_address) << line;
    EXPECT_EQ(plain.kind, exact->kind) << line;
}

TEST(ParseFastHexRecord, TakesEveryGoodRecordAsTheExactPathDoes) {
    kvr_test::random_record_lines lines(2);
    for (int i = 0; i < 20000; ++i) {
        const std::string line = lines.good();
        const std::string ended = line + "\n";
        std::string buffer;
        hex_record record;
        ASSERT_EQ(parse_fast_hex_record(ended, record), ended.size()) << line;
        expect_same_record(record, exact_record(line, buffer), line);
    }
}

TEST(ParseFastHexRecord, TakesNoBrokenRecordThatTheExactPathRefuses) {
    kvr_test::random_record_lines lines(3);
    int taken = 0;
    int left_to_the_exact_way = 0;
    for (int i = 0; i < 100000; ++i) {
        const std::string line = lines.broken();
        const std::string ended = line + "\n";
        std::string buffer;
        hex_record record;
        const std::size_t size = parse_fast_hex_record(ended, record);
        if (size == 0) {
            ++left_to_the_exact_way;
            continue;
        }
        ++taken;
        ASSERT_EQ(size, ended.size()) << line;
        expect_same_record(record, exact_record(line, buffer), line);
    }
    EXPECT_GT(taken, 1000);
    EXPECT_GT(left_to_the_exact_way, 50000);
}

} // namespace
} // namespace kvr
