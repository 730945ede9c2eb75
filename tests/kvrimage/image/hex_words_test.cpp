#include "kvrimage/image/hex_words.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <stdexcept>
#include <string>

namespace {

using namespace kvrimage;

word hex_word(std::string_view text, std::uint32_t width) {
    return word::parse(text, radix::hex, width).value.value();
}

TEST(HexWords, AreAppendedWithAllTheirDigits) {
    memory_image image(12, 8, 0x100);
    image.set(0x101, hex_word("A", 12));
    image.set(0x102, hex_word("XB1", 12));
    std::string text = "before ";
    EXPECT_TRUE(append_hex_words(image, {0x101, 0x102}, text));
    EXPECT_EQ(text, "before 00AXB1");
}

TEST(HexWords, LeaveTheTextWhereAWordIsNotSet) {
    memory_image image(8, 8);
    image.set(0, hex_word("1", 8));
    std::string text = "before";
    EXPECT_FALSE(append_hex_words(image, {0, 1}, text));
    EXPECT_EQ(text, "before");
}

TEST(HexWords, LeaveTheTextWhereADontCareBitHasPlainOnesBesideIt) {
    memory_image image(8, 2);
    image.set(0, hex_word("12", 8));
    image.set(1, word::parse("0000000X", radix::bin, 8).value.value());
    std::string text;
    EXPECT_FALSE(append_hex_words(image, {0, 1}, text));
    EXPECT_EQ(text, "");
}

TEST(HexWords, LeaveTheTextWhereAWholePageHasSuchBits) {
    memory_image image(8, 1024);
    for (std::uint64_t address = 0; address < 1024; ++address) {
        image.set(address,
                  word::parse(address % 2 == 0 ? "0000000X" : "X0000000", radix::bin, 8).value.value());
    }
    std::string text = "before";
    EXPECT_FALSE(append_hex_words(image, {0, 1023}, text));
    EXPECT_EQ(text, "before");
}

TEST(HexWords, RefuseAddressesBeyondTheMemory) {
    const memory_image image(8, 2, 4);
    std::string text;
    EXPECT_THROW(append_hex_words(image, {3, 4}, text), std::out_of_range);
    EXPECT_THROW(append_hex_words(image, {5, 6}, text), std::out_of_range);
    EXPECT_THROW(append_hex_words(image, {5, 4}, text), std::invalid_argument);
}

TEST(HexWords, AreThoseThatEachAddressHolds) {
    std::mt19937 random(7);
    for (const std::uint32_t width : {1U, 8U, 13U, 64U, 130U, 1100U}) {
        memory_image image(width, 3000, 1);
        image.fill({1000, 2500}, std::array{word(width), hex_word("1", width)});
        for (std::uint64_t address = 1; address <= 2000; ++address) {
            image.set(address, hex_word(random() % 2 != 0 ? "1" : "0", width));
        }
        for (int round = 0; round < 20; ++round) {
            const std::uint64_t first = 1 + random() % 2400;
            const std::uint64_t last = first + random() % (2500 - first + 1);
            std::string expected;
            for (std::uint64_t address = first; address <= last; ++address) {
                expected += image[address].value().to_text(radix::hex).value();
            }
            std::string text;
            EXPECT_TRUE(append_hex_words(image, {first, last}, text));
            EXPECT_EQ(text, expected);
        }
    }
}

} // namespace
