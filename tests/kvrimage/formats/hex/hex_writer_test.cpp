#include "kvrimage/formats/hex/hex_reader.h"
#include "kvrimage/formats/hex/hex_writer.h"
#include "tests/kvrimage/formats/hex/hex_files.h"
#include "tests/kvrimage/rounds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <random>

namespace {

using namespace kvrimage;
using namespace kvrimage::hex_test;

std::vector<std::string> hex_obstacles(const std::vector<diagnostic>& found) {
    std::vector<std::string> messages;
    for (const diagnostic& each : found) {
        messages.push_back(each.message);
    }
    return messages;
}

word random_word(std::mt19937& numbers, std::uint32_t width) {
    std::string digits(width, '0');
    for (char& digit : digits) {
        digit = numbers() % 2 == 0 ? '0' : '1';
    }
    return *word::parse(digits, radix::bin, width).value;
}

read_result read_words(const std::string& text, const memory_image& like) {
    read_options options;
    options.width = like.width();
    options.depth = like.depth();
    options.unit = address_unit::word;
    return read_hex(text, options);
}

TEST(HexWriter, WritesARecordAWordAndPages) {
    memory_image image(12, 70000);
    image.set(0, word::of(0xABC, 12));
    image.set(2, word::of(1, 12));
    image.set(65537, word::of(2, 12));
    const std::string text =
        ":020000000ABC38\n:020002000001FB\n:020000040001F9\n:020001000002FB\n:00000001FF\n";
    EXPECT_EQ(written_hex(image), text);
    EXPECT_EQ(size_of_hex(image, {}), text.size());
}

TEST(HexWriter, AddressesCountFromTheBase) {
    memory_image image(8, 2, 0x1FFFF);
    image.fill({0x1FFFF, 0x20000}, std::vector<word>{word::of(7, 8)});
    EXPECT_EQ(written_hex(image),
              ":020000040001F9\n:01FFFF0007FA\n:020000040002F8\n:0100000007F8\n:00000001FF\n");
}

TEST(HexWriter, AnImageWithoutWordsIsAnEndRecord) {
    EXPECT_EQ(written_hex(memory_image(8, 4)), ":00000001FF\n");
}

TEST(HexWriter, SaysWhatARecordCannotHold) {
    EXPECT_TRUE(can_write_hex(memory_image(2040, 1), {}).empty());
    EXPECT_THAT(
        hex_obstacles(can_write_hex(memory_image(2041, 1), {})),
        testing::ElementsAre("words of 2041 bits do not fit an Intel HEX record, which holds 2040 bits"));
    memory_image image(8, 4, 0xFFFFFFFE);
    image.set(0xFFFFFFFF, word::of(1, 8));
    EXPECT_TRUE(can_write_hex(image, {}).empty());
    image.set(0x100000000, word::of(1, 8));
    EXPECT_THAT(hex_obstacles(can_write_hex(image, {})),
                testing::ElementsAre("address 4294967296 is beyond 4294967295, the largest of Intel HEX"));
}

TEST(HexWriter, WhatIsWrittenIsReadAgainAtAllWidths) {
    std::mt19937 numbers(7);
    for (const std::uint32_t width : {1U,  2U,  3U,  4U,  5U,  7U,  8U,  9U,   12U,  13U,   16U,   17U,
                                      24U, 31U, 32U, 33U, 63U, 64U, 65U, 128U, 255U, 1000U, 2039U, 2040U}) {
        for (const std::uint64_t depth : {std::uint64_t{1}, std::uint64_t{3}, std::uint64_t{300}}) {
            memory_image image(width, depth);
            for (std::uint64_t address = 0; address < depth; ++address) {
                if (address == 0 || numbers() % 4 != 0) {
                    image.set(address, random_word(numbers, width));
                }
            }
            const std::string text = written_hex(image);
            EXPECT_EQ(text.size(), size_of_hex(image, {}));
            const read_result again = read_words(text, image);
            EXPECT_EQ(report_of(again), "") << width;
            ASSERT_TRUE(again.image) << width;
            EXPECT_TRUE(*again.image == image) << width << ' ' << depth;
        }
    }
}

TEST(HexWriter, LargeImagesAreReadAgain) {
    KVR_NOT_IN_A_SLOW_PROGRAM();
    std::mt19937 numbers(8);
    for (const std::uint32_t width : {8U, 20U, 32U}) {
        memory_image image(width, 140000);
        for (std::uint64_t address = 0; address < 140000; ++address) {
            image.set(address, word::of(numbers() % 256, width));
        }
        image.unset({65000, 70000});
        image.fill({100000, 130000},
                   std::vector<word>{word::of(1, width), word::of(2, width), word::of(3, width)});
        const std::string text = written_hex(image);
        EXPECT_EQ(text.size(), size_of_hex(image, {}));
        const read_result again = read_words(text, image);
        ASSERT_TRUE(again.image);
        EXPECT_TRUE(*again.image == image);
    }
}

TEST(HexWriter, WordsAboveHalfOfTheAddressesAreReadAgain) {
    memory_image image(8, deepest_memory);
    image.set(0x7FFFFFFF, word::of(1, 8));
    image.set(0x80000000, word::of(2, 8));
    image.set(0xFFFFFFFF, word::of(3, 8));
    const read_result again = read_words(written_hex(image), image);
    ASSERT_TRUE(again.image);
    EXPECT_TRUE(*again.image == image);
}

} // namespace
