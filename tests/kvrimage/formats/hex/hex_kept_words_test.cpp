// The words that are left of files with faults, if the caller asks to continue.

#include "kvrimage/formats/hex/hex_reader.h"
#include "tests/kvrimage/formats/hex/hex_files.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using namespace kvrimage::hex_test;

struct kept_words_case {
    const char* name;
    std::string records; ///< without the end record
    std::uint32_t width;
    std::optional<std::uint64_t> base;
    std::optional<std::uint64_t> depth;
    std::string expected; ///< the words, the depth and the words in doubt
};

std::string kept_words(const kept_words_case& given, address_unit unit) {
    read_options options = of_width(given.width);
    options.unit = unit;
    options.order = byte_order::big;
    options.base = given.base;
    options.depth = given.depth;
    options.keep_going = true;
    const read_result result = read_hex(given.records + end_record, options);
    std::string text = words_of(result);
    text += result.image ? " of " + std::to_string(result.image->depth()) : "";
    for (const address_range& each : result.unreadable) {
        text += " ?" + std::to_string(each.first) + ".." + std::to_string(each.last);
    }
    return text;
}

const std::vector<kept_words_case>& cases_of_word_addresses() {
    static const std::vector<kept_words_case> cases = {
        {"ARecordBeyondItsSegment",
         record("020000021000") + record("02FFFF000102") + record("0100000003"),
         8,
         {},
         {},
         "65536=03 of 131073 ?131071..131072"},
        {"WordsUpToTheEndOfTheSegment",
         record("020000021000") + record("04FFFE0001020304"),
         16,
         {},
         {},
         "131070=0102 131071=0304 of 131072"},
        {"AWordThatIsTooWide",
         record("020000000123") + record("040001000456F789"),
         12,
         {},
         {},
         "0=123 1=456 of 3 ?2..2"},
        {"AWordThatIsTooWideBeforeAnother",
         record("020000000123") + record("04000100F4560789"),
         12,
         {},
         {},
         "0=123 2=789 of 3 ?1..1"},
        {"AWordThatIsTooWideAfterAnother",
         record("020000000123") + record("02000000F456"),
         12,
         {},
         {},
         "0=123 of 1 ?0..0"},
        {"AGoodRecordWithoutData", record("0100000001") + record("00000700"), 8, {}, {}, "0=01 of 1"},
        {"TheLastWords", record("0100000001") + ":020005000102FF\n", 8, {}, {}, "0=01 of 7 ?5..6"},
        {"TheLastWordOfTheDepth", record("0100000001") + ":010003000102FF\n", 8, {}, 4, "0=01 of 4 ?3..3"},
        {"WordsAcrossTheDepth", record("0100000001") + ":020003000102FF\n", 8, {}, 4, "0=01 of 4 ?3..3"},
        {"WordsAtTheDepth", record("0100000001") + ":020004000102FF\n", 8, {}, 4, "0=01 of 4"},
        {"ARecordWithoutData", record("0100000001") + ":0000020000\n", 8, {}, {}, "0=01 of 3 ?2..2"},
        {"HalfAWord", record("020000000001") + record("03000200000203"), 16, {}, {}, "0=0001 of 4 ?2..3"},
    };
    return cases;
}

const std::vector<kept_words_case>& cases_of_byte_addresses() {
    static const std::string last = record("0100100022");
    static const std::vector<kept_words_case> cases = {
        {"Bytes", ":02000400AABBFF\n" + last, 8, {}, {}, "16=22 of 17 ?4..5"},
        {"OneByte", ":01000400AAFF\n" + last, 8, {}, {}, "16=22 of 17 ?4..4"},
        {"NoByte", ":0000040000\n" + last, 8, {}, {}, "16=22 of 17 ?4..4"},
        {"TheFirstByte", ":01000000AAFF\n" + last, 8, {}, {}, "16=22 of 17 ?0..0"},
        {"TheByteBeforeTheLast", ":01000F00AAFF\n" + last, 8, {}, {}, "16=22 of 17 ?15..15"},
        {"TheLastByte",
         record("0100000011") + ":01001000AAFF\n" + last,
         8,
         {},
         {},
         "0=11 16=22 of 17 ?16..16"},
        {"BytesThatOverlap",
         ":02000600AABBFF\n:02000200AABBFF\n:02000300AABBFF\n" + last,
         8,
         {},
         {},
         "16=22 of 17 ?2..4 ?6..7"},
        {"BytesAcrossTheEnd", ":02000F00AABBFF\n" + last, 8, {}, {}, "16=22 of 17 ?15..16"},
        {"BytesFarAcrossTheEnd", ":04000F00AABBCCDDFF\n" + last, 8, {}, {}, "16=22 of 17 ?15..16"},
        {"BytesAfterTheEnd", ":02001100AABBFF\n" + last, 8, {}, {}, "16=22 of 17"},
        {"BytesAfterTheDepth", record("0100000011") + ":02000400AABBFF\n", 8, {}, 4, "0=11 of 4"},
        {"BytesAcrossTheDepth", record("0100000011") + ":02000300AABBFF\n", 8, {}, 4, "0=11 of 4 ?3..3"},
        {"WordsOfBytes", record("020000001234") + ":03000300AABBCCFF\n", 16, {}, 8, "0=1234 of 8 ?1..2"},
        {"BytesAtTheBase", ":02000600AABBFF\n" + record("020008001234"), 16, 6, {}, "1=1234 of 2 ?0..0"},
        {"BytesAboveTheBase",
         ":04000C00AABBCCDDFF\n" + record("020010001234"),
         16,
         6,
         {},
         "5=1234 of 6 ?3..4"},
        {"BytesBelowTheBase", ":02000400AABBFF\n" + record("020008001234"), 16, 6, {}, "1=1234 of 2"},
    };
    return cases;
}

class HexKeptWords : public testing::TestWithParam<kept_words_case> {};
class HexKeptBytes : public testing::TestWithParam<kept_words_case> {};

TEST_P(HexKeptWords, AreThoseOfGoodRecords) {
    EXPECT_EQ(kept_words(GetParam(), address_unit::word), GetParam().expected);
}

TEST_P(HexKeptBytes, AreThoseOfGoodRecords) {
    EXPECT_EQ(kept_words(GetParam(), address_unit::byte), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(HexReader, HexKeptWords, testing::ValuesIn(cases_of_word_addresses()),
                         [](const auto& each) { return each.param.name; });
INSTANTIATE_TEST_SUITE_P(HexReader, HexKeptBytes, testing::ValuesIn(cases_of_byte_addresses()),
                         [](const auto& each) { return each.param.name; });

TEST(HexReader, BytesInDoubtWithoutAnImageConcernNoWord) {
    read_options options = of_width(16);
    options.unit = address_unit::byte;
    options.keep_going = true;
    const read_result result = read_hex(":02000000AABBFF\n" + record("020002001234") + end_record, options);
    EXPECT_FALSE(result.image); // the byte order is unknown
    EXPECT_TRUE(result.unreadable.empty());
}

TEST(HexReader, AWordThatIsTooWideIsAtItsDigitsInTheRecord) {
    const read_result result = read_hex(record("060000000123F4560789") + end_record, of_width(12));
    EXPECT_EQ(report_of(result), "broken too-wide 1:14+4 x1\n");
}

} // namespace
