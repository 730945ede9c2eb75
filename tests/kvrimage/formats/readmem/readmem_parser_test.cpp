#include "kvrimage/formats/readmem/readmem_parser.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

using namespace kvrimage;

constexpr std::array<std::string_view, 10> readmem_piece_names = {
    "mark", "_", "word", "address", "line", "block", "open", "other", "separator", "stray"};
constexpr std::array<std::string_view, 6> readmem_fault_names = {"",       "blanks", "prefix", "underscores",
                                                                 "syntax", "outside"};

/// "word[12] _[ ] ...": the pieces, which must cover @p text; faults and values follow a slash.
std::string readmem_pieces_of(std::string_view text, radix digits_radix = radix::hex) {
    std::string shown;
    std::string all;
    for_each_readmem_piece(text, digits_radix, [&](const readmem_piece& piece) {
        all += piece.where.in(text);
        if (piece.what == readmem_piece::kind::blanks) {
            return;
        }
        shown += shown.empty() ? "" : " ";
        shown += fmt::format("{}[{}]", readmem_piece_names.at(static_cast<std::size_t>(piece.what)),
                             piece.where.in(text));
        if (piece.what == readmem_piece::kind::word) {
            shown += piece.fault.length != 0 ? fmt::format("/{}", piece.fault.in(text)) : "";
            shown += piece.prefix != 0 ? fmt::format("/prefix {}", piece.prefix) : "";
        }
        if (piece.what == readmem_piece::kind::address) {
            const auto fault = readmem_fault_names.at(static_cast<std::size_t>(piece.address_fault));
            shown += fault.empty() ? fmt::format("/{:X}", piece.address) : fmt::format("/{}", fault);
        }
    });
    EXPECT_EQ(all, text);
    return shown;
}

TEST(ReadmemParser, SplitsWordsAtBlanks) {
    EXPECT_EQ(readmem_pieces_of("12\tab\r\nXz \f0_1\n"), "word[12] word[ab] word[Xz] word[0_1]");
    EXPECT_EQ(readmem_pieces_of(""), "");
}

TEST(ReadmemParser, FindsAddresses) {
    EXPECT_EQ(readmem_pieces_of("@1f 12"), "address[@1f]/1F word[12]");
    EXPECT_EQ(readmem_pieces_of("01@4@5"), "word[01] address[@4]/4 address[@5]/5");
    EXPECT_EQ(readmem_pieces_of("@FFFFFFFFFFFFFFFF @0FFFFFFFFFFFFFFFF @10000000000000000"),
              "address[@FFFFFFFFFFFFFFFF]/FFFFFFFFFFFFFFFF address[@0FFFFFFFFFFFFFFFF]/FFFFFFFFFFFFFFFF "
              "address[@10000000000000000]/outside");
}

TEST(ReadmemParser, FindsAddressesThatAreNotWellWritten) {
    EXPECT_EQ(readmem_pieces_of("@ \t2 33"), "address[@ \t2]/blanks word[33]");
    EXPECT_EQ(readmem_pieces_of("@0x2"), "address[@0x2]/prefix");
    EXPECT_EQ(readmem_pieces_of("@0X2_1"), "address[@0X2_1]/prefix");
    EXPECT_EQ(readmem_pieces_of("@1_0"), "address[@1_0]/underscores");
    EXPECT_EQ(readmem_pieces_of("@1_0000000000000000"), "address[@1_0000000000000000]/outside");
}

TEST(ReadmemParser, FindsAddressesWithoutMeaning) {
    EXPECT_EQ(readmem_pieces_of("@"), "address[@]/syntax");
    EXPECT_EQ(readmem_pieces_of("@\n12"), "address[@]/syntax word[12]");
    EXPECT_EQ(readmem_pieces_of("@ zz"), "address[@]/syntax word[zz]");
    EXPECT_EQ(readmem_pieces_of("@ "), "address[@]/syntax");
    EXPECT_EQ(readmem_pieces_of("@ @1"), "address[@]/syntax address[@1]/1");
    EXPECT_EQ(readmem_pieces_of("@x1 @_1 @1g @0x @0x_1"),
              "address[@x1]/syntax address[@_1]/syntax address[@1g]/syntax address[@0x]/syntax "
              "address[@0x_1]/syntax");
}

TEST(ReadmemParser, FindsComments) {
    EXPECT_EQ(readmem_pieces_of("01//a @2\r\n02 // b"), "word[01] line[//a @2] word[02] line[// b]");
    EXPECT_EQ(readmem_pieces_of("01/*a\n*/02 /**/"), "word[01] block[/*a\n*/] word[02] block[/**/]");
    EXPECT_EQ(readmem_pieces_of("/*/ 1 */2"), "block[/*/ 1 */] word[2]");
    EXPECT_EQ(readmem_pieces_of("1 /* 2"), "word[1] open[/* 2]");
    EXPECT_EQ(readmem_pieces_of("1 /*/"), "word[1] open[/*/]");
}

TEST(ReadmemParser, FindsCommentsOfOtherLanguages) {
    EXPECT_EQ(readmem_pieces_of("01#2 3\n4 -- 5\n"), "word[01] other[#2 3] word[4] other[-- 5]");
}

TEST(ReadmemParser, FindsSeparatorsAndStrayCharacters) {
    EXPECT_EQ(readmem_pieces_of("1,2;3"), "word[1] separator[,] word[2] separator[;] word[3]");
    EXPECT_EQ(readmem_pieces_of("! / _ -"), "stray[!] stray[/] stray[_] stray[-]");
}

TEST(ReadmemParser, FindsCharactersThatAreNoDigits) {
    EXPECT_EQ(readmem_pieces_of("1gh2k -1 1\v2"), "word[1gh2k]/gh word[-1]/- word[1\v2]/\v");
    EXPECT_EQ(readmem_pieces_of("102 1x", radix::bin), "word[102]/2 word[1x]");
}

TEST(ReadmemParser, FindsPrefixes) {
    EXPECT_EQ(readmem_pieces_of("0x12 0XaB 0x 0x1x"), "word[0x12]/prefix 2 word[0XaB] word[0x] word[0x1x]");
    EXPECT_EQ(readmem_pieces_of("0b12"), "word[0b12]");
    EXPECT_EQ(readmem_pieces_of("0b10 0B1x 0b12 0x1", radix::bin),
              "word[0b10]/prefix 2 word[0B1x]/prefix 2 word[0b12]/b word[0x1]");
}

TEST(ReadmemParser, FindsAByteOrderMarkAtTheFrontOnly) {
    EXPECT_EQ(readmem_pieces_of("\xEF\xBB\xBF"
                                "12"),
              "mark[\xEF\xBB\xBF] word[12]");
    EXPECT_EQ(readmem_pieces_of("12 \xEF\xBB\xBF"), "word[12] stray[\xEF\xBB\xBF]");
}

TEST(ReadmemParser, APrefixComesBeforeDigitsOnly) {
    const auto prefix_of = [](std::string_view word) {
        std::uint32_t prefix = 0;
        for_each_readmem_piece(word, radix::bin, [&](const readmem_piece& piece) { prefix = piece.prefix; });
        return prefix;
    };
    EXPECT_EQ(prefix_of("0b1_x"), 2U);
    EXPECT_EQ(prefix_of("0B10"), 2U);
    EXPECT_EQ(prefix_of("0b12"), 0U);
    EXPECT_EQ(prefix_of("0c10"), 0U);
    EXPECT_EQ(prefix_of("1b10"), 0U);
    EXPECT_EQ(prefix_of("0b"), 0U);
}

} // namespace
