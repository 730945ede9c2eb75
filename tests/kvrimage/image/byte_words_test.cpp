#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/word_runs.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace kvrimage;

/// Blocks of bytes at the given offsets, taken in order from the beginning of a string.
struct placed_block {
    std::uint64_t first;
    std::size_t words;
};

byte_words held_words(const std::shared_ptr<const std::string>& bytes,
                      const std::vector<placed_block>& places, std::uint32_t word_bytes, byte_order order) {
    std::vector<byte_words::block> blocks;
    std::size_t begin = 0;
    for (const placed_block& each : places) {
        blocks.push_back({each.first, std::string_view(*bytes).substr(begin, each.words * word_bytes)});
        begin += each.words * word_bytes;
    }
    return {std::move(blocks), word_bytes * 8, order, bytes};
}

memory_image image_of(std::uint64_t depth, byte_words&& words) {
    const std::uint32_t width = words.bytes_per_word() * 8;
    return {width, std::make_unique<image_words>(depth, std::move(words))};
}

std::string in_hex(const std::optional<word>& value) {
    return value ? value->to_text(radix::hex).value_or("X") : "-";
}

TEST(ByteWords, StayBytesUntilATextIsAskedFor) {
    const auto bytes = std::make_shared<const std::string>("\x12\x34\x56\x78");
    memory_image image = image_of(10, held_words(bytes, {{2, 1}, {7, 1}}, 2, byte_order::little));
    EXPECT_EQ(image.count_set(), 2U);
    EXPECT_EQ(image.bounds()->first, 2U);
    EXPECT_EQ(image.bounds()->last, 7U);
    EXPECT_EQ(in_hex(image[1]) + in_hex(image[2]) + in_hex(image[3]) + in_hex(image[7]) + in_hex(image[8]),
              "-3412-7856-");
    EXPECT_EQ(image.repetition_at(3).last, 6U);
    EXPECT_EQ(image.repetition_at(7).last, 7U);
    EXPECT_EQ(image.repetition_at(7).period, 1U);
    EXPECT_NE(image.words().bytes(), nullptr);
    EXPECT_EQ(image.words()[7], "7856");
    EXPECT_EQ(image.words().bytes(), nullptr);
    EXPECT_EQ(in_hex(image[2]) + in_hex(image[8]), "3412-");
    EXPECT_EQ(image.depth(), 10U);
}

TEST(ByteWords, EveryChangeMakesTexts) {
    const auto bytes = std::make_shared<const std::string>("\x01\x02\x03\x04");
    const memory_image held = image_of(6, held_words(bytes, {{1, 4}}, 1, byte_order::big));
    memory_image set = held;
    set.set(0, word::of(0xFF, 8));
    EXPECT_EQ(in_hex(set[0]) + in_hex(set[4]), "FF04");
    memory_image filled = held;
    filled.fill_unset(word::of(0xEE, 8));
    EXPECT_EQ(in_hex(filled[5]) + in_hex(filled[1]), "EE01");
    memory_image longer = held;
    longer.resize(20);
    EXPECT_EQ(longer.count_set(), 4U);
    EXPECT_EQ(longer.depth(), 20U);
    memory_image without = held;
    without.unset({1, 3});
    EXPECT_EQ(without.count_set(), 1U);
    EXPECT_NE(held.words().bytes(), nullptr);
    EXPECT_FALSE(held == without);
}

TEST(ByteWords, CopiesShareTheBytesAndTheLastOneGivesThemUp) {
    auto bytes = std::make_shared<const std::string>("\x01\x02");
    const std::weak_ptr<const std::string> watched = bytes;
    {
        memory_image image = image_of(2, held_words(bytes, {{0, 2}}, 1, byte_order::big));
        const memory_image copy = image;
        bytes.reset();
        EXPECT_EQ(image.words()[1], "02");
        EXPECT_FALSE(watched.expired());
        EXPECT_TRUE(image == copy);
        EXPECT_TRUE(watched.expired()); // both are stored as texts now
    }
}

TEST(ByteWords, MayLieInBothHalves) {
    const auto bytes = std::make_shared<const std::string>("\x01\x02\x03\x04");
    const std::uint64_t first = image_words::half() - 2;
    memory_image image =
        image_of(image_words::half() + 2, held_words(bytes, {{first, 4}}, 1, byte_order::big));
    std::string all;
    for (std::uint64_t offset = first; offset < first + 4; ++offset) {
        all += image.words()[offset];
    }
    EXPECT_EQ(all, "01020304");
}

/// "0-4 12, 5-9 -": the runs of an image.
std::string text_of_runs(const memory_image& image) {
    std::string text;
    for (const run& each : image.runs()) {
        text += std::to_string(each.addresses.first) + "-" + std::to_string(each.addresses.last) + " " +
                in_hex(each.value) + ", ";
    }
    return text;
}

/// All bytes that for_each_byte_block() returns, with their addresses.
std::string blocks_of(const memory_image& image, byte_order order) {
    std::string text;
    std::uint64_t next = 0;
    for_each_byte_block(image, order, [&](std::uint64_t address, std::string_view bytes) {
        text += address == next && !text.empty() ? "" : "@" + std::to_string(address) + " ";
        text += bytes;
        next = address + bytes.size();
    });
    return text;
}

TEST(ByteWords, AreTheSameAsWordsThatWereSetOneByOne) {
    std::mt19937 random(7);
    for (int round = 0; round < rounds(100); ++round) {
        const std::uint32_t word_bytes = std::array{1U, 2U, 3U, 4U, 8U, 40U}[random() % 6];
        const byte_order order = random() % 2 == 0 ? byte_order::big : byte_order::little;
        std::vector<placed_block> places;
        std::uint64_t depth = 0;
        std::size_t count = 0;
        for (auto left = 1 + random() % 3; left > 0; --left) {
            const std::size_t words = 1 + random() % (random() % 4 == 0 ? 3000 : 9);
            depth += random() % 3 == 0 ? 0 : random() % 2000;
            places.push_back({depth, words});
            depth += words;
            count += words;
        }
        depth += random() % 3;
        std::string all(count * word_bytes, '\0');
        const unsigned values = random() % 3 == 0 ? 2 : 256; // few values make runs
        std::ranges::generate(all, [&] { return static_cast<char>(random() % values); });
        if (random() % 4 == 0) {
            std::ranges::fill(all, '\x55');
        }
        const auto bytes = std::make_shared<const std::string>(all);
        const memory_image held = image_of(depth, held_words(bytes, places, word_bytes, order));
        memory_image plain(word_bytes * 8, depth);
        std::size_t begin = 0;
        for (const placed_block& each : places) {
            for (std::uint64_t offset = each.first; offset < each.first + each.words; ++offset) {
                std::string of_word = all.substr(begin, word_bytes);
                begin += word_bytes;
                if (order == byte_order::little) {
                    std::ranges::reverse(of_word);
                }
                std::string digits;
                for (const char byte : of_word) {
                    digits += "0123456789ABCDEF"[static_cast<unsigned char>(byte) / 16];
                    digits += "0123456789ABCDEF"[static_cast<unsigned char>(byte) % 16];
                }
                plain.set(offset, *word::parse(digits, radix::hex, word_bytes * 8).value);
            }
        }
        EXPECT_EQ(held.count_set(), plain.count_set());
        EXPECT_EQ(blocks_of(held, byte_order::big), blocks_of(plain, byte_order::big));
        EXPECT_EQ(blocks_of(held, byte_order::little), blocks_of(plain, byte_order::little));
        const std::uint64_t somewhere = random() % depth;
        EXPECT_EQ(held[somewhere], plain[somewhere]);
        EXPECT_EQ(text_of_runs(held), text_of_runs(plain));
        EXPECT_NE(held.words().bytes(), nullptr);
        EXPECT_TRUE(held == plain);
    }
}

} // namespace
