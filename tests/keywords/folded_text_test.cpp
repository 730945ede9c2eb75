#include "kvr/keywords/folded_text.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::string all_bytes() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

bool same_letter(unsigned char left, unsigned char right) {
    const auto lower = [](unsigned char byte) { return byte >= 'A' && byte <= 'Z' ? byte + 32 : byte + 0; };
    return lower(left) == lower(right);
}

TEST(FoldedText, EachPairOfBytesIsEqualOnlyAsTheSameLetter) {
    for (const char left : all_bytes()) {
        for (const char right : all_bytes()) {
            const bool same =
                same_letter(static_cast<unsigned char>(left), static_cast<unsigned char>(right));
            EXPECT_EQ(kvr::equal_folded(std::string(1, left), std::string(1, right)), same);
            EXPECT_EQ(kvr::equal_folded(std::string(9, left), std::string(9, right)), same);
        }
    }
}

TEST(FoldedText, ADifferenceAtAnyPositionOfAnyLengthIsSeen) {
    for (std::size_t size = 1; size <= 40; ++size) {
        const std::string text(size, 'a');
        for (std::size_t position = 0; position < size; ++position) {
            std::string other = text;
            other[position] = 'b';
            EXPECT_FALSE(kvr::equal_folded(text, other)) << size << " " << position;
            EXPECT_NE(kvr::folded_hash(text), kvr::folded_hash(other)) << size << " " << position;
        }
    }
}

TEST(FoldedText, LetterCaseAtAnyPositionOfAnyLengthIsIgnored) {
    for (std::size_t size = 1; size <= 40; ++size) {
        const std::string text(size, 'z');
        for (std::size_t position = 0; position < size; ++position) {
            std::string other = text;
            other[position] = 'Z';
            EXPECT_TRUE(kvr::equal_folded(text, other)) << size << " " << position;
            EXPECT_EQ(kvr::folded_hash(text), kvr::folded_hash(other)) << size << " " << position;
        }
    }
}

TEST(FoldedText, TextsOfDifferentLengthDiffer) {
    EXPECT_FALSE(kvr::equal_folded("", "a"));
    EXPECT_FALSE(kvr::equal_folded("adder", "adder_"));
    EXPECT_FALSE(kvr::equal_folded("adder_tree", "adder_tre"));
    EXPECT_FALSE(kvr::equal_folded(std::string_view("a", 1), std::string_view("a\0", 2)));
}

TEST(FoldedText, EmptyTextsAreEqual) {
    EXPECT_TRUE(kvr::equal_folded("", std::string_view()));
}

TEST(FoldedText, NoByteAfterTheTextIsRead) {
    for (std::size_t size = 0; size <= 40; ++size) {
        const std::vector<char> left(size, 'x');
        const std::vector<char> right(size, 'X');
        const std::string_view one(left.data(), size);
        const std::string_view other(right.data(), size);
        EXPECT_TRUE(kvr::equal_folded(one, other));
        EXPECT_EQ(kvr::folded_hash(one), kvr::folded_hash(other));
    }
}

TEST(FoldedText, TheHighestBitsOfTheHashDependOnTheLastCharacterToo) {
    std::set<std::uint64_t> high_bits;
    for (char last = 'a'; last <= 'z'; ++last) {
        high_bits.insert(kvr::folded_hash(std::string("seriesa1_logic_cel") + last) >> 51);
    }
    EXPECT_GE(high_bits.size(), 24U);
}

TEST(FoldedText, IsTheSameAtCompileTime) {
    static_assert(kvr::equal_folded("Logic_Cell", "lOGIC_cELL"));
    constexpr std::uint64_t hash = kvr::folded_hash("Logic_Cell");
    const std::string text = "logic_cell";
    EXPECT_EQ(hash, kvr::folded_hash(text));
}

} // namespace
