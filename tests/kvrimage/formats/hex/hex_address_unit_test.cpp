// Files whose records do not show what their addresses count, with the width that the caller gives.

#include "kvrimage/formats/hex/hex_address_unit.h"
#include "kvrimage/formats/hex/hex_format.h"
#include "kvrimage/formats/hex/hex_reader.h"
#include "kvrimage/formats/memory_file.h"
#include "tests/kvrimage/formats/hex/hex_files.h"
#include "tests/kvrimage/rounds.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <string>

namespace kvrimage {

namespace {

using namespace hex_test;

/// The hint of the diagnostic about the address unit; "" if there is none.
std::string doubt_of(const std::string& records, const read_options& options) {
    const auto found = doubt_of_address_unit(records + end_record, options);
    return found ? found->hint : "";
}

std::string doubt_of_32_bits(const std::string& records) {
    return doubt_of(records, of_width(32));
}

TEST(HexAddressUnit, OfALoneRecordAtZeroIsOpenByTheByteOrder) {
    EXPECT_EQ(doubt_of_32_bits(record("0400000013005000")),
              "add --address-unit word (word 0 is 13005000), --address-unit byte --endian little "
              "(word 0 is 00500013) or --address-unit byte --endian big (word 0 is 13005000)");
}

TEST(HexAddressUnit, OfALoneRecordElsewhereIsOpenByItsAddress) {
    EXPECT_EQ(doubt_of_32_bits(record("0400100012345678")),
              "add --address-unit word (word 16 is 12345678), --address-unit byte --endian little "
              "(word 4 is 78563412) or --address-unit byte --endian big (word 4 is 12345678)");
}

TEST(HexAddressUnit, ShowsTheLowestWordThatDiffers) {
    const std::string zeros = record("08000000" + std::string(8, '0') + "12345678");
    EXPECT_EQ(doubt_of_32_bits(record("0400400000000000") + zeros).substr(0, 45),
              "add --address-unit word (word 1 is 12345678),");
    EXPECT_EQ(doubt_of_32_bits(record("0400400000000000") + record("0400000000000000")).substr(0, 45),
              "add --address-unit word (word 64 is 00000000)");
}

TEST(HexAddressUnit, ShowsTheFirstWordOfARecordThatDiffers) {
    EXPECT_EQ(doubt_of_32_bits(record("0C000000000000001234567887654321")).substr(0, 45),
              "add --address-unit word (word 1 is 12345678),");
    EXPECT_EQ(doubt_of_32_bits(record("080010001234567887654321")).substr(0, 46),
              "add --address-unit word (word 16 is 12345678),");
}

TEST(HexAddressUnit, WithAByteOrderShowsTwoReadings) {
    read_options options = of_width(16);
    options.order = byte_order::little;
    EXPECT_EQ(
        doubt_of(record("0200000012ab"), options),
        "add --address-unit word (word 0 is 12AB) or --address-unit byte --endian little (word 0 is AB12)");
    options.order = byte_order::big;
    EXPECT_EQ(doubt_of(record("0200000012AB"), options), "");
    EXPECT_EQ(
        doubt_of(record("0200040012AB"), options),
        "add --address-unit word (word 4 is 12AB) or --address-unit byte --endian big (word 2 is 12AB)");
}

TEST(HexAddressUnit, OfWordsThatAreTheSameEitherWayIsNoQuestion) {
    EXPECT_EQ(doubt_of_32_bits(record("0800000012aBAb1200000000")), "");
    EXPECT_EQ(doubt_of_32_bits(record("00000000")), "");
    EXPECT_EQ(doubt_of_32_bits(""), "");
}

TEST(HexAddressUnit, IsOpenBesideARecordWithoutData) {
    EXPECT_NE(doubt_of_32_bits(record("0400100012345678") + record("00000100")), "");
}

TEST(HexAddressUnit, IsClearWhereARecordBeginsWithinAWordOfBytes) {
    EXPECT_EQ(doubt_of_32_bits(record("0400000012345678") + record("0400060012345678")), "");
    EXPECT_EQ(doubt_of(record("0200010012345678"), of_width(16)), "");
}

TEST(HexAddressUnit, IsClearWhereBytesWouldOverlap) {
    EXPECT_EQ(doubt_of_32_bits(record("080004001234567812345678") + record("080000001234567812345678")), "");
}

TEST(HexAddressUnit, IsOpenForRecordsInAnyOrder) {
    EXPECT_NE(doubt_of_32_bits(record("0400800012345678") + record("0400400012345678")), "");
}

TEST(HexAddressUnit, CountsFromTheBase) {
    read_options options = of_width(32);
    options.base = 2;
    EXPECT_EQ(doubt_of(record("0400020012345678"), options).substr(0, 44),
              "add --address-unit word (word 0 is 12345678)");
    EXPECT_EQ(doubt_of(record("0400040012345678"), options), "");
}

TEST(HexAddressUnit, CountsFromTheOffsetInForce) {
    EXPECT_EQ(doubt_of_32_bits(record("020000040001") + record("0400000012345678")).substr(0, 48),
              "add --address-unit word (word 65536 is 12345678)");
}

TEST(HexAddressUnit, LeavesOutTextAndWhatFollowsTheEnd) {
    EXPECT_EQ(
        doubt_of_32_bits("note\n" + record("040000030001FFFF") + end_record + record("0400000012345678")),
        "");
}

TEST(HexAddressUnit, IsOpenWithoutAnEndRecord) {
    EXPECT_TRUE(doubt_of_address_unit(record("0400100012345678"), of_width(32)));
    EXPECT_FALSE(doubt_of_address_unit(record("0400010012345678"), of_width(32)));
}

TEST(HexAddressUnit, IsAskedForWordsOfSeveralWholeBytesOnly) {
    const std::string lone = record("0400100012345678");
    EXPECT_EQ(doubt_of(lone, of_width(8)), "");
    EXPECT_EQ(doubt_of(lone, of_width(12)), "");
    EXPECT_EQ(doubt_of(lone, {}), "");
    EXPECT_NE(doubt_of(lone, of_width(16)), "");
}

TEST(HexAddressUnit, IsSettledByTheOptions) {
    const std::string lone = record("0400100012345678");
    read_options options = of_width(32);
    options.unit = address_unit::word;
    EXPECT_EQ(doubt_of(lone, options), "");
    options = of_width(32);
    options.as = &hex_format;
    EXPECT_EQ(doubt_of(lone, options), "");
    EXPECT_EQ(words_of(parse(lone + end_record, options)), "16=12345678");
}

TEST(HexAddressUnit, IsOpenInAFileWithComments) {
    EXPECT_EQ(report_of(read_hex("boot\n" + record("0400100012345678") + end_record, of_width(32))),
              "suspect not-a-record 1:1+4 x1\nbroken address-unit-open 0:0+0 x1\n");
}

TEST(HexAddressUnit, InDoubtLeavesNoWord) {
    read_options options = of_width(32);
    options.keep_going = true;
    for (const char* name : {"lone.hex", "lone.ihex", ""}) {
        options.file_name = name;
        const read_result result = parse(record("0400100012345678") + end_record, options);
        EXPECT_EQ(report_of(result), "broken address-unit-open 0:0+0 x1\n");
        EXPECT_FALSE(result.image);
        EXPECT_EQ(result.diagnostics.front().message,
                  "the record addresses may count words of 32 bits, or bytes");
    }
}

TEST(HexAddressUnit, IsNoQuestionWhereSomethingElseIsBroken) {
    EXPECT_EQ(report_of(read_hex(":040010001234567800\n" + end_record, of_width(32))),
              "broken checksum 1:18+2 x1\n");
    read_options options = of_width(32);
    options.depth = 8;
    EXPECT_EQ(report_of(read_hex(record("0400100012345678") + end_record, options)),
              "broken beyond-depth 1:1+19 x1\n");
    options = of_width(32);
    options.keep_going = true;
    const read_result result =
        read_hex(record("0400100012345678") + ":040020001234567800\n" + end_record, options);
    EXPECT_EQ(report_of(result), "broken checksum 2:18+2 x1\n");
    EXPECT_EQ(words_of(result), "16=12345678");
}

/// Reads @p contents as the caller specifies.
read_result read_so(const std::string& contents, std::uint32_t width, address_unit unit, byte_order order) {
    read_options options = of_width(width);
    options.unit = unit;
    options.order = order;
    return read_hex(contents, options);
}

TEST(HexAddressUnit, OfRandomRecordsIsInDoubtExactlyWhereTheWordsDiffer) {
    std::mt19937 random(5);
    int in_doubt = 0;
    for (int round = 0; round < rounds(4000); ++round) {
        const std::uint32_t bytes = 2U << (random() % 2);
        std::string records;
        for (std::uint64_t left = 1 + random() % 3; left != 0; --left) {
            const std::uint64_t words = 1 + random() % 2;
            std::string fields = std::string("0") + std::to_string(words * bytes) + "00";
            fields += std::string("0") + "0246"[random() % 4] + "00";
            const bool is_even = random() % 2 == 0; // the same in both byte orders
            for (std::uint64_t byte = 0; byte < words * bytes; ++byte) {
                fields += fmt::format("{:02X}", is_even ? left : random() % 256);
            }
            records += record(fields);
        }
        records += end_record;
        const read_result words = read_so(records, 8 * bytes, address_unit::word, byte_order::big);
        const read_result little = read_so(records, 8 * bytes, address_unit::byte, byte_order::little);
        const read_result big = read_so(records, 8 * bytes, address_unit::byte, byte_order::big);
        const read_result open = read_hex(records, of_width(8 * bytes));
        const bool can_be_both =
            words.image && big.image && report_of(words).empty() && report_of(big).empty();
        const bool differ = can_be_both && (*words.image != *little.image || *words.image != *big.image);
        if (differ) {
            EXPECT_FALSE(open.image) << records;
            ++in_doubt;
        } else if (open.image) {
            EXPECT_TRUE(*open.image == *words.image) << records;
        } else {
            EXPECT_TRUE(std::ranges::any_of(open.diagnostics, [](const diagnostic& each) {
                return each.id == diagnostic_id::address_unit;
            })) << records;
        }
    }
    EXPECT_GT(in_doubt, rounds(4000) / 20);
}

} // namespace

} // namespace kvrimage
