#include "kvr/memory/store/word_pieces.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using kvr::pattern_ref;
using kvr::word_pattern;
using kvr::word_pieces;

pattern_ref text(std::string_view characters) {
    return word_pattern::uniform(characters);
}

/// The pieces as "first-last text", separated by blanks.
std::string shown(const word_pieces& pieces) {
    std::string all;
    for (const word_pieces::piece& each : pieces.all()) {
        all += (all.empty() ? "" : " ") + std::to_string(each.first) + "-" + std::to_string(each.last) +
               std::string(each.texts->text_at(0));
    }
    return all;
}

class WordPieces : public testing::Test {
protected:
    WordPieces() {
        pieces.assign(100, 200, text("a"));
        pieces.assign(300, 400, text("b"));
    }

    word_pieces pieces;
};

TEST_F(WordPieces, StandInAscendingOrder) {
    pieces.assign(250, 250, text("c"));
    pieces.assign(0, 10, text("d"));
    EXPECT_EQ(shown(pieces), "0-10d 100-200a 250-250c 300-400b");
}

TEST_F(WordPieces, AreCutWhereAnotherOverlaps) {
    pieces.assign(150, 350, text("c"));
    EXPECT_EQ(shown(pieces), "100-149a 150-350c 351-400b");
}

TEST_F(WordPieces, AreCutInTwoByAnotherInside) {
    pieces.assign(150, 160, text("c"));
    EXPECT_EQ(shown(pieces), "100-149a 150-160c 161-200a 300-400b");
}

TEST_F(WordPieces, KeepSingleWordsThatOthersLeaveOfThem) {
    pieces.assign(101, 199, text("c"));
    EXPECT_EQ(shown(pieces), "100-100a 101-199c 200-200a 300-400b");
    pieces.assign(200, 399, text("c"));
    EXPECT_EQ(shown(pieces), "100-100a 101-399c 400-400b");
}

TEST_F(WordPieces, AreReplacedByAnotherOverThem) {
    pieces.assign(100, 400, text("c"));
    EXPECT_EQ(shown(pieces), "100-400c");
}

TEST_F(WordPieces, AreTakenOutWhereThereIsToBeNone) {
    pieces.assign(150, 160, pattern_ref());
    pieces.assign(300, 400, pattern_ref());
    pieces.assign(1000, 1023, pattern_ref());
    EXPECT_EQ(shown(pieces), "100-149a 161-200a");
}

TEST_F(WordPieces, AreJoinedWithNeighborsOfTheSameText) {
    pieces.assign(201, 250, text("a"));
    pieces.assign(251, 299, text("b"));
    EXPECT_EQ(shown(pieces), "100-250a 251-400b");
    pieces.assign(251, 400, text("a"));
    EXPECT_EQ(shown(pieces), "100-400a");
}

TEST_F(WordPieces, AreJoinedOnBothSides) {
    pieces.assign(300, 400, text("a"));
    pieces.assign(201, 299, text("a"));
    EXPECT_EQ(shown(pieces), "100-400a");
}

TEST_F(WordPieces, AreFoundByIndex) {
    const auto found = [&](std::uint32_t index) {
        const word_pieces::stretch here = pieces.stretch_at(index);
        return (here.texts != nullptr ? std::string(here.texts->text_at(0)) : "none") +
               std::to_string(here.last);
    };
    EXPECT_EQ(found(0), "none99");
    EXPECT_EQ(found(100), "a200");
    EXPECT_EQ(found(200), "a200");
    EXPECT_EQ(found(201), "none299");
    EXPECT_EQ(found(401), "none1023");
}

TEST_F(WordPieces, GrowByOneEqualWordAtTheirEnd) {
    EXPECT_TRUE(pieces.extend(201, "a"));
    EXPECT_TRUE(pieces.extend(401, "b"));
    EXPECT_EQ(shown(pieces), "100-201a 300-401b");
}

TEST_F(WordPieces, DoNotGrowOtherwise) {
    EXPECT_FALSE(pieces.extend(201, "x")) << "another text";
    EXPECT_FALSE(pieces.extend(202, "a")) << "not adjacent";
    EXPECT_FALSE(pieces.extend(150, "a")) << "inside";
    EXPECT_FALSE(pieces.extend(99, "a")) << "at the front";
    EXPECT_FALSE(pieces.extend(0, "a")) << "before all";
    EXPECT_EQ(shown(pieces), "100-200a 300-400b");
    pieces.assign(201, 298, text("c"));
    EXPECT_FALSE(pieces.extend(299, "c")) << "up to another piece";
}

TEST_F(WordPieces, NameTheNeighborWithAText) {
    EXPECT_EQ(pieces.neighbour_with(99, "a")->text_at(0), "a");
    EXPECT_EQ(pieces.neighbour_with(401, "b")->text_at(0), "b");
    EXPECT_FALSE(pieces.neighbour_with(401, "a"));
    EXPECT_FALSE(pieces.neighbour_with(98, "a"));
}

} // namespace
