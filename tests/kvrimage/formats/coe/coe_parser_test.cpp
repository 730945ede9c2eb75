#include "kvrimage/formats/coe/coe_parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

/// "radix 16", "word 00" and so on.
std::vector<std::string> coe_pieces(std::string_view contents) {
    static constexpr std::array names = {"comment", "radix-name", "radix",        "vector", "word",
                                         "comma",   "end",        "no-semicolon", "stray",  "after-end"};
    std::vector<std::string> pieces;
    for_each_coe_piece(contents, [&](const coe_piece& piece) {
        pieces.push_back(names.at(static_cast<std::size_t>(piece.what)) + std::string(" ") +
                         std::string(piece.where.in(contents)));
    });
    return pieces;
}

TEST(CoeParser, SplitsStatementsAndWords) {
    EXPECT_THAT(
        coe_pieces("memory_initialization_radix = 16 ;\nmemory_initialization_vector =\n00, 1f\nA;\n"),
        ElementsAre("radix-name memory_initialization_radix", "radix 16",
                    "vector memory_initialization_vector", "word 00", "comma ,", "word 1f", "word A",
                    "end ;"));
}

TEST(CoeParser, ASemicolonBeginsACommentWhereNoStatementEnds) {
    EXPECT_THAT(coe_pieces("; table; of 2\r\nmemory_initialization_radix=2; ; binary\n; more\n"),
                ElementsAre("comment ; table; of 2", "radix-name memory_initialization_radix", "radix 2",
                            "comment ; binary", "comment ; more"));
    EXPECT_THAT(
        coe_pieces("memory_initialization_vector=1;;\n; end"),
        ElementsAre("vector memory_initialization_vector", "word 1", "end ;", "comment ;", "comment ; end"));
}

TEST(CoeParser, TakesKeywordsInAnyLetterCase) {
    EXPECT_THAT(coe_pieces("Memory_Initialization_RADIX=2;MEMORY_INITIALIZATION_VECTOR=1;"),
                ElementsAre("radix-name Memory_Initialization_RADIX", "radix 2",
                            "vector MEMORY_INITIALIZATION_VECTOR", "word 1", "end ;"));
}

TEST(CoeParser, OtherTextIsStrayUpToTheEndOfItsLine) {
    EXPECT_THAT(coe_pieces("depth = 4; \n=\nmemory_initialization_radix 16;\n"),
                ElementsAre("stray depth = 4;", "stray =", "stray memory_initialization_radix 16;"));
}

TEST(CoeParser, TextAfterTheVectorIsNoWord) {
    EXPECT_THAT(coe_pieces("memory_initialization_vector=0; 1 2\n3"),
                ElementsAre("vector memory_initialization_vector", "word 0", "end ;", "after-end 1 2",
                            "after-end 3"));
}

TEST(CoeParser, AStatementWithoutSemicolonIsReportedAfterItsLastValue) {
    EXPECT_THAT(coe_pieces("memory_initialization_radix=16\nmemory_initialization_vector=0,\n"),
                ElementsAre("radix-name memory_initialization_radix", "radix 16", "no-semicolon 16",
                            "vector memory_initialization_vector", "word 0", "comma ,", "no-semicolon ,"));
    EXPECT_THAT(
        coe_pieces("memory_initialization_vector="),
        ElementsAre("vector memory_initialization_vector", "no-semicolon memory_initialization_vector"));
    EXPECT_THAT(coe_pieces("memory_initialization_radix=,"),
                ElementsAre("radix-name memory_initialization_radix", "radix ",
                            "no-semicolon memory_initialization_radix", "stray ,"));
}

TEST(CoeParser, AnEqualsSignAmongTheWordsIsOne) {
    EXPECT_THAT(coe_pieces("memory_initialization_vector==1;"),
                ElementsAre("vector memory_initialization_vector", "word =", "word 1", "end ;"));
}

TEST(CoeParser, SkipsAByteOrderMark) {
    EXPECT_THAT(coe_pieces("\xEF\xBB\xBFmemory_initialization_radix=2;"),
                ElementsAre("radix-name memory_initialization_radix", "radix 2"));
}

TEST(CoeParser, AFileWithoutTextHasNoPieces) {
    EXPECT_THAT(coe_pieces(""), IsEmpty());
    EXPECT_THAT(coe_pieces(" \r\n\t"), IsEmpty());
}

} // namespace
