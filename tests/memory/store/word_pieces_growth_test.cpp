// How far a piece grows word by word before the next piece.

#include "kvr/memory/store/word_pieces.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {

using kvr::word_pattern;

TEST(WordPiecesGrowth, LeavesOneWordBeforeTheNextPiece) {
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

TEST(WordPiecesGrowth, NothingIsLeftOfAPieceThatIsReplacedUpToItsEnd) {
    kvr::word_pieces pieces;
    pieces.assign(10, 20, word_pattern::uniform("a"));
    pieces.assign(15, 20, word_pattern::uniform("b"));
    ASSERT_EQ(pieces.all().size(), 2U);
    EXPECT_EQ(pieces.all().front().last, 14U);
    EXPECT_EQ(pieces.all().back().first, 15U);
    EXPECT_EQ(pieces.all().back().last, 20U);
    pieces.assign(10, 14, word_pattern::uniform("c"));
    EXPECT_EQ(pieces.all().size(), 2U);
}

} // namespace
