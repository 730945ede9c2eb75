#include "kvrimage/formats/memheader/memheader_parser.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

/// "word 1f @10" and so on; settings are shown as "setting Name|Value".
std::vector<std::string> memheader_pieces(std::string_view contents) {
    static constexpr std::array names = {"setting",     "data",       "address",     "word",
                                         "bad-address", "stray-word", "late-setting"};
    std::vector<std::string> pieces;
    for_each_memheader_piece(contents, [&](const memheader_piece& piece) {
        const bool is_setting = piece.what == memheader_piece::kind::setting;
        const std::string_view where = piece.where.in(contents);
        pieces.push_back(fmt::format(
            "{} {}{}", names.at(static_cast<std::size_t>(piece.what)),
            is_setting ? fmt::format("{}|{}", piece.name.in(contents), piece.value.in(contents)) : where,
            piece.address ? fmt::format(" @{:x}", *piece.address) : ""));
    });
    return pieces;
}

TEST(MemheaderParser, SplitsHeaderAndWords) {
    EXPECT_THAT(memheader_pieces("#Format=Hex\r\n# Depth = 2 \r\n\r\n#Data\r\n00 1f\r\n 2\t3 \r\n"),
                ElementsAre("setting Format|Hex", "setting Depth|2", "data #Data", "word 00 @0", "word 1f @1",
                            "word 2 @2", "word 3 @3"));
}

TEST(MemheaderParser, RowsWithAddressesBeginWithOne) {
    EXPECT_THAT(memheader_pieces("#Format=addrhex\n#Data\n10:00\n2A : 1 2\n:3\n4\nG:5 6"),
                ElementsAre("setting Format|addrhex", "data #Data", "address 10 @10", "word 00 @10",
                            "address 2A @2a", "word 1 @2a", "word 2 @2b", "bad-address :", "word 3",
                            "bad-address 4", "bad-address G", "word 5", "word 6"));
}

TEST(MemheaderParser, AddressesStopAtTheLargestNumber) {
    EXPECT_THAT(memheader_pieces("#Format=AddrHex\n#Data\n10000000000000000: 1 2\n"),
                ElementsAre("setting Format|AddrHex", "data #Data",
                            "address 10000000000000000 @ffffffffffffffff", "word 1 @ffffffffffffffff",
                            "word 2 @ffffffffffffffff"));
}

TEST(MemheaderParser, WordsPrecedeNoDataAndSettingsFollowNone) {
    EXPECT_THAT(memheader_pieces("00 01\n#Data\n#Format=AddrHex\n2\n"),
                ElementsAre("stray-word 00 01", "data #Data", "late-setting #Format=AddrHex", "word 2 @0"));
}

TEST(MemheaderParser, ASettingMayHaveNoValue) {
    EXPECT_THAT(memheader_pieces("#Format\n#\n#Data=1\n#data\n"),
                ElementsAre("setting Format|", "setting |", "setting Data|1", "data #data"));
}

TEST(MemheaderParser, SkipsAByteOrderMark) {
    EXPECT_THAT(memheader_pieces("\xEF\xBB\xBF#Width=8"), ElementsAre("setting Width|8"));
    EXPECT_THAT(memheader_pieces(" \n"), IsEmpty());
}

} // namespace
