#include "kvrimage/formats/rif/rif_parser.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

/// "word(1F)=5": kind, text and value of a piece.
std::string shown(const rif_piece& piece, std::string_view text) {
    constexpr std::string_view names[] = {"mark", "blanks",  "tabs",    "end",  "cr",
                                          "word", "address", "comment", "stray"};
    std::string result =
        fmt::format("{}({})", names[static_cast<std::size_t>(piece.what)], piece.where.in(text));
    if (piece.address != no_rif_address) {
        result += fmt::format("={}", piece.address);
    }
    if (piece.fault.length != 0) {
        result += fmt::format(" fault({})", piece.fault.in(text));
    }
    constexpr std::string_view faults[] = {"", " spelling", " syntax", " outside"};
    return result + std::string(faults[static_cast<std::size_t>(piece.address_fault)]);
}

/// The pieces without blanks and line ends.
std::vector<std::string> rif_pieces_of(std::string_view text) {
    std::vector<std::string> result;
    for_each_rif_piece(text, [&](const rif_piece& piece) {
        if (piece.what != rif_piece::kind::blanks && piece.what != rif_piece::kind::line_end) {
            result.push_back(shown(piece, text));
        }
    });
    return result;
}

TEST(RifParser, NumbersTheWordsOfALine) {
    EXPECT_THAT(rif_pieces_of("@a\n1F 20\n\n3"),
                ElementsAre("address(@a)=10", "word(1F)=10", "word(20)=11", "word(3)=12"));
}

TEST(RifParser, BeginsAtAddressZero) {
    EXPECT_THAT(rif_pieces_of("1"), ElementsAre("word(1)=0"));
}

TEST(RifParser, FindsNothingInNothing) {
    EXPECT_THAT(rif_pieces_of(""), IsEmpty());
}

TEST(RifParser, KeepsEveryKindOfPieceApart) {
    std::vector<std::string> all;
    const std::string_view text = "\xEF\xBB\xBF@0 \t1\r\n, 2\r3 // x\n";
    for_each_rif_piece(text, [&](const rif_piece& piece) { all.push_back(shown(piece, text)); });
    EXPECT_THAT(all, ElementsAre("mark(\xEF\xBB\xBF)", "address(@0)=0", "blanks( )", "tabs(\t)", "word(1)=0",
                                 "end(\r\n)", "stray(,)", "blanks( )", "word(2)=1", "cr(\r)", "word(3)=2",
                                 "blanks( )", "comment(// x)", "end(\n)"));
}

TEST(RifParser, FindsTheFirstCharactersThatAreNoDigits) {
    EXPECT_THAT(rif_pieces_of("1XxF"), ElementsAre("word(1XxF)=0"));
    EXPECT_THAT(rif_pieces_of("7GH8"), ElementsAre("word(7GH8)=0 fault(GH)"));
    EXPECT_THAT(rif_pieces_of("0uU"), ElementsAre("word(0uU)=0 fault(u)"));
    EXPECT_THAT(rif_pieces_of("Z;U"), ElementsAre("word(Z;U)=0 fault(Z;)"));
}

TEST(RifParser, TakesNoWordFromCharactersWithoutADigitOrLetter) {
    EXPECT_THAT(rif_pieces_of("1 ;- 2"), ElementsAre("word(1)=0", "stray(;-)", "word(2)=1"));
}

TEST(RifParser, EndsAWordWhereACommentOrAnAddressBegins) {
    EXPECT_THAT(rif_pieces_of("12//3"), ElementsAre("word(12)=0", "comment(//3)"));
    EXPECT_THAT(rif_pieces_of("12#3"), ElementsAre("word(12)=0", "comment(#3)"));
    EXPECT_THAT(rif_pieces_of("12--3"), ElementsAre("word(12)=0", "comment(--3)"));
    EXPECT_THAT(rif_pieces_of("12@3"), ElementsAre("word(12)=0", "address(@3)=3"));
    EXPECT_THAT(rif_pieces_of("1/2-"), ElementsAre("word(1/2-)=0 fault(/)"));
}

TEST(RifParser, EndsACommentWithItsLine) {
    EXPECT_THAT(rif_pieces_of("# a\r\n1"), ElementsAre("comment(# a)", "word(1)=0"));
    EXPECT_THAT(rif_pieces_of("# a"), ElementsAre("comment(# a)"));
}

TEST(RifParser, JudgesAddresses) {
    EXPECT_THAT(rif_pieces_of("@fFfFfFfF"), ElementsAre("address(@fFfFfFfF)=4294967295"));
    EXPECT_THAT(rif_pieces_of("@000000000000000001"), ElementsAre("address(@000000000000000001)=1"));
    EXPECT_THAT(rif_pieces_of("@100000000"), ElementsAre("address(@100000000) outside"));
    EXPECT_THAT(rif_pieces_of("@1Z"), ElementsAre("address(@1Z) syntax"));
    EXPECT_THAT(rif_pieces_of("@-1"), ElementsAre("address(@-1) syntax"));
    EXPECT_THAT(rif_pieces_of("@"), ElementsAre("address(@) syntax"));
    EXPECT_THAT(rif_pieces_of("@0x"), ElementsAre("address(@0x) syntax"));
    EXPECT_THAT(rif_pieces_of("@0x1F"), ElementsAre("address(@0x1F)=31 spelling"));
    EXPECT_THAT(rif_pieces_of("@ \t0X1F "), ElementsAre("address(@ \t0X1F)=31 spelling"));
    EXPECT_THAT(rif_pieces_of("@ 1F # c"), ElementsAre("address(@ 1F)=31 spelling", "comment(# c)"));
}

TEST(RifParser, TakesNoAddressFromOneOfSeveralWords) {
    EXPECT_THAT(rif_pieces_of("@ 1 2"), ElementsAre("address(@) syntax", "word(1)", "word(2)"));
}

TEST(RifParser, LeavesWordsAfterABadAddressWithoutOne) {
    EXPECT_THAT(rif_pieces_of("1\n@G\n2\n@3\n4"),
                ElementsAre("word(1)=0", "address(@G) syntax", "word(2)", "address(@3)=3", "word(4)=3"));
}

TEST(RifParser, GoesOnAfterTheLastAddress) {
    EXPECT_THAT(rif_pieces_of("@FFFFFFFF\n1 2"),
                ElementsAre("address(@FFFFFFFF)=4294967295", "word(1)=4294967295", "word(2)=4294967296"));
}

TEST(RifParser, CoversEveryByteOfAnyText) {
    constexpr std::string_view characters = "0019aFxXuZ@@  \t\n\n\r//--#,;\xEF\xBB\xBF";
    std::mt19937 random(5);
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (std::size_t left = random() % 40; left > 0; --left) {
            text += characters[random() % characters.size()];
        }
        std::uint64_t next = 0;
        for_each_rif_piece(text, [&next](const rif_piece& piece) {
            ASSERT_EQ(piece.where.offset, next);
            ASSERT_GT(piece.where.length, 0U);
            next = piece.where.end();
        });
        ASSERT_EQ(next, text.size()) << text;
    }
}

} // namespace
