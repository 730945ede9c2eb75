#include "kvrimage/formats/logisim/logisim_parser.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;

/// "word 1f @10 x4" and so on.
std::vector<std::string> logisim_pieces(std::string_view contents) {
    static constexpr std::array names = {"header", "comment", "address", "word", "bad-run", "bad-address"};
    std::vector<std::string> pieces;
    for_each_logisim_piece(contents, [&](const logisim_piece& piece) {
        const bool is_word = piece.what == logisim_piece::kind::word;
        pieces.push_back(fmt::format("{} {}{}{}", names.at(static_cast<std::size_t>(piece.what)),
                                     (is_word ? piece.digits : piece.where).in(contents),
                                     piece.address ? fmt::format(" @{:x}", *piece.address) : "",
                                     piece.count != 1 ? fmt::format(" x{}", piece.count) : ""));
    });
    return pieces;
}

TEST(LogisimParser, SplitsRowsWithAddresses) {
    EXPECT_THAT(logisim_pieces("v3.0 hex words addressed\r\n10: 00 1f\r\n\r\n2A:7 # seven\n"),
                ElementsAre("header v3.0 hex words addressed", "address 10 @10", "word 00 @10", "word 1f @11",
                            "address 2A @2a", "word 7 @2a", "comment # seven"));
}

TEST(LogisimParser, CountsWordsWithoutAddresses) {
    EXPECT_THAT(logisim_pieces("v2.0 raw\n# all\n3*0 1\n\t2"),
                ElementsAre("header v2.0 raw", "comment # all", "word 0 @0 x3", "word 1 @3", "word 2 @4"));
}

TEST(LogisimParser, NothingFollowsAFirstLineThatIsNotKnown) {
    EXPECT_THAT(logisim_pieces("v2.1 raw\n0\n"), ElementsAre("header v2.1 raw"));
    EXPECT_THAT(logisim_pieces(""), ElementsAre("header "));
}

TEST(LogisimParser, ARunNeedsACountAndAWord) {
    EXPECT_THAT(
        logisim_pieces("v2.0 raw\n0*1 a*1 *1 4*"),
        ElementsAre("header v2.0 raw", "bad-run 0*1 @0", "bad-run a*1 @1", "bad-run *1 @2", "bad-run 4* @3"));
}

TEST(LogisimParser, WordsAfterABadAddressHaveNone) {
    EXPECT_THAT(logisim_pieces("v3.0 hex words plain\n1"),
                ElementsAre("header v3.0 hex words plain", "word 1 @0"));
    EXPECT_THAT(logisim_pieces("v3.0 hex words addressed\n1 2\n:3\nx: 4\n5: 6"),
                ElementsAre("header v3.0 hex words addressed", "bad-address 1", "word 2", "bad-address :",
                            "word 3", "bad-address x", "word 4", "address 5 @5", "word 6 @5"));
}

TEST(LogisimParser, AddressesStopAtTheLargestNumber) {
    EXPECT_THAT(logisim_pieces("v3.0 hex words addressed\nFFFFFFFFFFFFFFFFF: 1 2\n"),
                ElementsAre("header v3.0 hex words addressed", "address FFFFFFFFFFFFFFFFF @ffffffffffffffff",
                            "word 1 @ffffffffffffffff", "word 2 @ffffffffffffffff"));
    EXPECT_THAT(logisim_pieces("v2.0 raw\n18446744073709551615*0 99999999999999999999*1 2\n"),
                ElementsAre("header v2.0 raw", "word 0 @0 x18446744073709551615",
                            "word 1 @ffffffffffffffff x18446744073709551615", "word 2 @ffffffffffffffff"));
}

TEST(LogisimParser, SkipsAByteOrderMark) {
    EXPECT_THAT(logisim_pieces("\xEF\xBB\xBFv2.0 raw\n1"), ElementsAre("header v2.0 raw", "word 1 @0"));
}

} // namespace
