#include "kvrimage/bytes/byte_blocks.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;

std::string shown_blocks(const byte_blocks& blocks) {
    std::string text;
    for (const byte_block& each : blocks.all()) {
        text += std::to_string(each.address) + ":" + std::string(each.bytes) + " ";
    }
    return text;
}

TEST(ByteBlocks, NeighboursInMemoryAndAddressBecomeOne) {
    const std::string text = "abcdef";
    byte_blocks blocks;
    EXPECT_TRUE(blocks.empty());
    blocks.add(10, std::string_view(text).substr(0, 2));
    blocks.add(12, std::string_view(text).substr(2, 2));
    blocks.add(14, std::string_view(text).substr(5, 1));
    blocks.add(20, std::string_view(text).substr(4, 1));
    EXPECT_EQ(shown_blocks(blocks), "10:abcd 14:f 20:e ");
    EXPECT_FALSE(blocks.empty());
}

TEST(ByteBlocks, RoomIsHandedOutSideBySide) {
    byte_blocks blocks(5);
    std::string("ab").copy(blocks.room_for(7, 2), 2);
    std::string("cde").copy(blocks.room_for(9, 3), 3);
    EXPECT_EQ(shown_blocks(blocks), "7:abcde ");
}

TEST(ByteBlocks, AreSortedByAddress) {
    byte_blocks blocks;
    blocks.add(20, "x");
    blocks.add(10, "yy");
    EXPECT_TRUE(blocks.sort().empty());
    EXPECT_EQ(shown_blocks(blocks), "10:yy 20:x ");
}

TEST(ByteBlocks, OfTwoValuesTheLaterOneCounts) {
    byte_blocks blocks;
    blocks.add(0, "abcdefgh");
    blocks.add(2, "cX");
    const std::vector<byte_overlap> overlaps = blocks.sort();
    EXPECT_EQ(shown_blocks(blocks), "0:ab 2:cX 4:efgh ");
    ASSERT_EQ(overlaps.size(), 1U);
    EXPECT_EQ(overlaps[0].first, 2U);
    EXPECT_EQ(overlaps[0].last, 3U);
    EXPECT_TRUE(overlaps[0].differ);
}

TEST(ByteBlocks, OverlapsAreListedInOrderOfAddresses) {
    byte_blocks blocks;
    blocks.add(0, "abcdefgh");
    for (const std::uint64_t address : {5U, 2U, 7U, 3U}) {
        blocks.add(address, "X");
    }
    std::vector<std::uint64_t> firsts;
    for (const byte_overlap& each : blocks.sort()) {
        firsts.push_back(each.first);
    }
    EXPECT_EQ(firsts, (std::vector<std::uint64_t>{2, 3, 5, 7}));
}

TEST(ByteBlocks, EqualBytesThatAreSetAgainDoNotDiffer) {
    byte_blocks blocks;
    blocks.add(5, "abc");
    blocks.add(5, "abc");
    const std::vector<byte_overlap> overlaps = blocks.sort();
    ASSERT_EQ(overlaps.size(), 1U);
    EXPECT_FALSE(overlaps[0].differ);
    EXPECT_EQ(shown_blocks(blocks), "5:abc ");
}

TEST(ByteBlocks, EndWithTheLastAddress) {
    const std::string text = "abcd";
    byte_blocks blocks;
    blocks.add(~std::uint64_t{0} - 1, std::string_view(text).substr(0, 2));
    blocks.add(0, std::string_view(text).substr(2, 2));
    EXPECT_TRUE(blocks.sort().empty());
    EXPECT_EQ(shown_blocks(blocks), "0:cd 18446744073709551614:ab ");
    blocks.add(~std::uint64_t{0}, "X");
    ASSERT_EQ(blocks.sort().size(), 1U);
    EXPECT_EQ(shown_blocks(blocks), "0:cd 18446744073709551614:a 18446744073709551615:X ");
}

TEST(ByteBlocks, AreAMapOfBytesAfterRandomAdds) {
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        // Every second round ends at the last address, 79 after the first one.
        const std::uint64_t first = round % 2 == 0 ? 0 : ~std::uint64_t{0} - 79;
        std::vector<std::string> texts;
        for (auto count = random() % 12; count > 0; --count) {
            std::string text(1 + random() % 20, ' ');
            for (char& each : text) {
                each = static_cast<char>('a' + random() % 2);
            }
            texts.push_back(text);
        }
        byte_blocks blocks;
        std::map<std::uint64_t, char> bytes;
        std::map<std::uint64_t, bool> set_again;
        for (const std::string& text : texts) {
            const std::uint64_t address = first + random() % (81 - text.size());
            blocks.add(address, text);
            for (std::size_t index = 0; index < text.size(); ++index) {
                const auto [found, is_new] = bytes.emplace(address + index, text[index]);
                if (!is_new) {
                    set_again.emplace(address + index, false);
                    found->second = text[index];
                }
            }
        }
        const std::vector<byte_overlap> overlaps = blocks.sort();
        std::map<std::uint64_t, char> in_blocks;
        std::uint64_t next = 0;
        for (const byte_block& each : blocks.all()) {
            ASSERT_GE(each.address, next);
            next = each.last() + 1;
            for (std::size_t index = 0; index < each.bytes.size(); ++index) {
                in_blocks.emplace(each.address + index, each.bytes[index]);
            }
        }
        EXPECT_EQ(in_blocks, bytes);
        std::map<std::uint64_t, bool> in_overlaps;
        for (const byte_overlap& each : overlaps) {
            for (std::uint64_t index = 0; index <= each.last - each.first; ++index) {
                in_overlaps.emplace(each.first + index, false);
            }
        }
        EXPECT_EQ(in_overlaps, set_again);
    }
}

} // namespace
