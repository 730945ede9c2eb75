#include "kvrimage/bytes/byte_pieces.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

using namespace kvrimage;

/// Lists the pieces of a file whose word 0 is at byte address 100: "a 7+2 3-4 at 109, part; ".
class shown_pieces {
public:
    explicit shown_pieces(std::uint32_t bytes_of_word) : bytes(taker, 100, bytes_of_word) {}

    std::string address(std::uint64_t at, std::uint64_t count) {
        bytes.add_address({7, 2}, at, count);
        return std::move(text);
    }
    /// The digits of byte number n are at offset 2 * n.
    std::string data(std::uint64_t at, std::uint64_t count) {
        bytes.add_data(at, count, [](std::uint64_t first, std::uint64_t covered) {
            return span{2 * first, 2 * covered};
        });
        return std::move(text);
    }
    std::string run(std::uint64_t first, std::uint64_t last) {
        bytes.add_run({7, 2}, first, last);
        return std::move(text);
    }

private:
    void show(const text_piece& piece) {
        text += fmt::format("{} {}+{}", piece.what == text_piece::kind::address ? 'a' : 'w',
                            piece.where.offset, piece.where.length);
        if (piece.addresses) {
            text += fmt::format(" {}-{} at {}", piece.addresses->first, piece.addresses->last, piece.in_file);
        }
        text += piece.is_part ? ", part; " : "; ";
    }

    std::string text;
    piece_taker taker = [this](const text_piece& piece) { show(piece); };
    byte_pieces bytes;
};

TEST(BytePieces, AnAddressAppliesToTheWordsOfItsBytes) {
    shown_pieces of_words(4);
    EXPECT_EQ(of_words.address(100, 0), "a 7+2 0-0 at 100; ");
    EXPECT_EQ(of_words.address(107, 1), "a 7+2 1-1 at 107; ");
    EXPECT_EQ(of_words.address(107, 2), "a 7+2 1-2 at 107; ");
    EXPECT_EQ(of_words.address(99, 9), "a 7+2; ") << "below the base";
}

TEST(BytePieces, DataAreCutAtTheBordersOfWords) {
    shown_pieces of_words(4);
    EXPECT_EQ(of_words.data(104, 8), "w 0+8 1-1 at 104; w 8+8 2-2 at 108; ");
    EXPECT_EQ(of_words.data(105, 1), "w 0+2 1-1 at 105, part; ");
    EXPECT_EQ(of_words.data(105, 4), "w 0+6 1-1 at 105, part; w 6+2 2-2 at 108, part; ");
    EXPECT_EQ(of_words.data(107, 6), "w 0+2 1-1 at 107, part; w 2+8 2-2 at 108; w 10+2 3-3 at 112, part; ");
    EXPECT_EQ(of_words.data(98, 6), "w 0+4; w 4+8 0-0 at 100; ");
    EXPECT_EQ(of_words.data(98, 1), "w 0+2; ");
    EXPECT_EQ(shown_pieces(1).data(105, 2), "w 0+2 5-5 at 105; w 2+2 6-6 at 106; ");
}

TEST(BytePieces, ARepeatedByteIsAPartOfEachLongerWord) {
    EXPECT_EQ(shown_pieces(1).run(103, 109), "w 7+2 3-9 at 103; ");
    EXPECT_EQ(shown_pieces(2).run(103, 109), "w 7+2 1-4 at 103, part; ");
    EXPECT_EQ(shown_pieces(2).run(99, 109), "w 7+2; ") << "below the base";
}

} // namespace
