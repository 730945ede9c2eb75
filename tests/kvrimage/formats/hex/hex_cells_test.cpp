#include "kvrimage/formats/hex/hex_cells.h"
#include "tests/kvrimage/formats/hex/hex_files.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace kvrimage;
using namespace kvrimage::hex_test;

/// Adds records by the fast path until it leaves one to take(). Returns the number of records added and the
/// words.
std::string added_plain(std::uint32_t width, const std::string& records,
                        std::optional<std::uint64_t> depth = std::nullopt, std::uint64_t offset = 0) {
    read_options options = of_width(width);
    options.depth = depth;
    const hex_layout layout{.width = width};
    hex_cells cells(records, layout, options);
    int added = 0;
    kvr::hex_record plain;
    for (std::string_view rest = records; !rest.empty(); ++added) {
        rest.remove_prefix(kvr::parse_fast_hex_record(rest, plain));
        if (!cells.add_plain(plain, offset + plain.word_address)) {
            break;
        }
    }
    read_result result;
    result.image = cells.finish();
    return std::to_string(added) + ": " + words_of(result);
}

TEST(HexCells, TheFastPathTakesRecordsOfWholeWordsInAscendingOrder) {
    EXPECT_EQ(added_plain(8, record("0100000001") + record("0300010002ab0C") + record("0100090005")),
              "3: 0=01 1=02 2=AB 3=0C 9=05");
    EXPECT_EQ(added_plain(16, record("0200010000ab") + record("040002001234ABCD")),
              "2: 1=00AB 2=1234 3=ABCD");
    EXPECT_EQ(added_plain(8, record("0200000001AB") + record("0100010002")), "1: 0=01 1=AB");
    EXPECT_EQ(added_plain(8, record("0100050001") + record("0100040002")), "1: 5=01");
}

TEST(HexCells, TheFastPathTakesWordsWithSurplusDigitsOfZero) {
    EXPECT_EQ(added_plain(12, record("020000000ABC") + record("040001000DEF0001")), "2: 0=ABC 1=DEF 2=001");
    EXPECT_EQ(added_plain(13, record("0400000012341FFF")), "1: 0=1234 1=1FFF");
    EXPECT_EQ(added_plain(9, record("0200000001FF")), "1: 0=1FF");
    EXPECT_EQ(added_plain(1, record("020000000100")), "1: 0=1 1=0");
}

TEST(HexCells, TheFastPathLeavesWordsThatAreTooWide) {
    EXPECT_EQ(added_plain(12, record("020000001ABC")), "0: none");
    EXPECT_EQ(added_plain(13, record("020000002000")), "0: none");
    EXPECT_EQ(added_plain(9, record("020000000200")), "0: none");
    EXPECT_EQ(added_plain(1, record("0100000010")), "0: none");
}

TEST(HexCells, TheFastPathLeavesPartsOfWords) {
    EXPECT_EQ(added_plain(16, record("03000000010203")), "0: none");
    EXPECT_EQ(added_plain(16, record("0100000001")), "0: none");
    EXPECT_EQ(added_plain(16, record("00000000")), "0: none");
}

TEST(HexCells, TheFastPathFillsTheMemoryToItsLastWord) {
    EXPECT_EQ(added_plain(8, record("020000000102"), 2), "1: 0=01 1=02");
    EXPECT_EQ(added_plain(8, record("03000000010203"), 2), "0: ");
    EXPECT_EQ(added_plain(8, record("0100020001"), 2), "0: ");
}

TEST(HexCells, TheFastPathEndsAtHalfOfTheAddresses) {
    const std::uint64_t half = image_words::half();
    EXPECT_EQ(added_plain(8, record("0100000001"), {}, half - 1), "1: 2147483647=01");
    EXPECT_EQ(added_plain(8, record("020000000102"), {}, half - 1), "0: none");
    EXPECT_EQ(added_plain(8, record("0100000001"), {}, half), "0: none");
}

} // namespace
