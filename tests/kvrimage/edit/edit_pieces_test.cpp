#include "kvrimage/edit/edit_pieces.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;

constexpr std::uint64_t last_of_all = std::numeric_limits<std::uint64_t>::max();

assignment assigned(std::uint64_t first, std::uint64_t last, const std::vector<std::uint64_t>& values) {
    assignment made{{first, last}, {}};
    for (const std::uint64_t value : values) {
        made.words.push_back(word::of(value, 8));
    }
    return made;
}

/// "first-last" for each piece.
std::string ranges_of(const std::vector<edit_piece>& pieces) {
    std::string text;
    for (const edit_piece& piece : pieces) {
        text += std::to_string(piece.first) + "-" + std::to_string(piece.last) + " ";
    }
    return text;
}

TEST(EditPieces, LaterAssignmentCounts) {
    const std::vector<assignment> made = {assigned(0, 9, {1}), assigned(3, 4, {2})};
    const edit_pieces pieces(made);
    EXPECT_EQ(ranges_of(pieces.all()), "0-2 3-4 5-9 ");
    EXPECT_EQ(pieces.all()[1].text_at(3), "02");
    EXPECT_EQ(pieces.all()[2].text_at(5), "01");
}

TEST(EditPieces, AreAtTheAddressesOfAFileWithABase) {
    const std::vector<assignment> made = {assigned(0, 4, {1, 2}), assigned(2, 2, {3})};
    const edit_pieces pieces(made, 100);
    EXPECT_EQ(ranges_of(pieces.all()), "100-101 102-102 103-104 ");
    EXPECT_EQ(pieces.all()[0].text_at(101), "02");
    EXPECT_EQ(pieces.all()[2].text_at(103), "02");
}

TEST(EditPieces, UnitesNeighboursOfOneWord) {
    const std::vector<assignment> made = {assigned(0, 1, {1}), assigned(2, 2, {1}), assigned(4, 4, {1}),
                                          assigned(5, 5, {2})};
    EXPECT_EQ(ranges_of(edit_pieces(made).all()), "0-2 4-4 5-5 ");
}

TEST(EditPieces, KeepsNeighboursOfSeveralWordsApart) {
    const std::vector<assignment> made = {assigned(0, 1, {1, 2}), assigned(2, 3, {1, 2}),
                                          assigned(4, 4, {3})};
    EXPECT_EQ(ranges_of(edit_pieces(made).all()), "0-1 2-3 4-4 ");
}

TEST(EditPieces, WordsOfACutPieceGoOnFromTheFirstAddressOfTheAssignment) {
    const std::vector<assignment> made = {assigned(10, 19, {1, 2, 3})};
    edit_pieces pieces(made);
    const std::vector<edit_piece> taken = pieces.take({14, 15});
    ASSERT_EQ(taken.size(), 1U);
    EXPECT_EQ(taken[0].text_at(14), "02");
    EXPECT_EQ(taken[0].word_at(15), word::of(3, 8));
    EXPECT_EQ(taken[0].period(), 2U);
    EXPECT_EQ(ranges_of(pieces.all()), "10-13 16-19 ");
    EXPECT_EQ(pieces.all()[0].period(), 3U);
}

TEST(EditPieces, TouchOnlyWhatTheyHold) {
    const std::vector<assignment> made = {assigned(5, 6, {1})};
    edit_pieces pieces(made);
    EXPECT_FALSE(pieces.touch({0, 4}));
    EXPECT_TRUE(pieces.touch({0, 5}));
    EXPECT_TRUE(pieces.touch({6, 9}));
    EXPECT_FALSE(pieces.touch({7, 9}));
    EXPECT_TRUE(pieces.take({7, 9}).empty());
    EXPECT_FALSE(pieces.empty());
    EXPECT_EQ(pieces.take({0, 9}).size(), 1U);
    EXPECT_TRUE(pieces.empty());
}

TEST(EditPieces, ReachTheLastOfAllAddresses) {
    const std::vector<assignment> made = {assigned(last_of_all - 3, last_of_all, {1, 2}),
                                          assigned(last_of_all, last_of_all, {3})};
    edit_pieces pieces(made);
    EXPECT_EQ(pieces.take({last_of_all - 1, last_of_all}).size(), 2U);
    ASSERT_EQ(pieces.all().size(), 1U);
    EXPECT_EQ(pieces.all()[0].last, last_of_all - 2);
}

} // namespace
