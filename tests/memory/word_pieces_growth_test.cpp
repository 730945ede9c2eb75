// How far a piece grows word by word in front of the next piece.

#include "kvr/memory/word_pieces.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {

using kvr::word_pattern;

TEST(WordPiecesGrowth, LeavesOneWordInFrontOfTheNextPiece) {
    kvr::word_pieces pieces;
    pieces.assign(0, 7, word_pattern::uniform("a"));
    pieces.assign(10, 12, word_pattern::uniform("b"));
    EXPECT_TRUE(pieces.extend(8, "a"));
    EXPECT_FALSE(pieces.extend(9, "a"));
    EXPECT_EQ(pieces.all().front().last, 8U);
}

TEST(WordPiecesGrowth, DoesNotBegin) {
    kvr::word_pieces pieces;
    EXPECT_FALSE(pieces.extend(0, "a"));
    EXPECT_FALSE(pieces.extend(5, "a"));
}

TEST(WordPiecesGrowth, IsForPiecesOfOneTextOnly) {
    kvr::word_pieces pieces;
    const std::string_view texts[] = {"a", "b"};
    pieces.assign(0, 6, word_pattern::repeating(0, texts, 2));
    EXPECT_FALSE(pieces.extend(7, "a"));
    EXPECT_FALSE(pieces.extend(7, "b"));
    EXPECT_EQ(pieces.all().front().last, 6U);
}

} // namespace
