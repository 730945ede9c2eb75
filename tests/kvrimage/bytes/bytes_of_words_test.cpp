#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "tests/kvrimage/bytes/byte_images.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace kvrimage;

std::string shown_bytes(const memory_image& image, byte_order order) {
    std::string text;
    for_each_byte_block(image, order, [&text](std::uint64_t address, std::string_view bytes) {
        text += std::to_string(address) + ":";
        for (const char byte : bytes) {
            text += std::to_string(static_cast<unsigned char>(byte)) + ",";
        }
    });
    return text;
}

TEST(BytesOfWords, ComeInTheOrderThatIsGiven) {
    memory_image image(16, 4);
    image.set(1, word::of(0x0102, 16));
    image.set(2, word::of(0x0304, 16));
    EXPECT_EQ(shown_bytes(image, byte_order::big), "2:1,2,3,4,");
    EXPECT_EQ(shown_bytes(image, byte_order::little), "2:2,1,4,3,");
}

TEST(BytesOfWords, SurplusBitsAreZero) {
    memory_image image(12, 2);
    image.set(0, word::of(0xABC, 12));
    EXPECT_EQ(shown_bytes(image, byte_order::big), "0:10,188,");
    EXPECT_EQ(shown_bytes(image, byte_order::little), "0:188,10,");
}

TEST(BytesOfWords, ABaseMovesAllAddresses) {
    memory_image image(24, 2, 100);
    image.set(101, word::of(7, 24));
    EXPECT_EQ(shown_bytes(image, byte_order::big), "303:0,0,7,");
}

TEST(BytesOfWords, LongWordsRepeat) {
    constexpr std::uint32_t width = 80000;
    memory_image image(width, 21);
    std::vector<word> pattern;
    std::string once;
    for (std::uint64_t value = 1; value <= 7; ++value) {
        pattern.push_back(word::of(value, width));
        once += std::string(width / 8 - 1, '\0') + static_cast<char>(value);
    }
    image.fill({0, 20}, pattern);
    std::string found;
    for_each_byte_block(image, byte_order::big,
                        [&found](std::uint64_t, std::string_view bytes) { found += bytes; });
    EXPECT_TRUE(found == once + once + once);
}

TEST(BytesOfWords, AreThoseOfEachWord) {
    std::mt19937 random(4);
    for (std::uint32_t width = 1; width <= 300; ++width) {
        const memory_image image = kvrimage_tests::random_byte_image(random, width, 400);
        const byte_order order = width % 2 == 0 ? byte_order::big : byte_order::little;
        const std::uint32_t bytes = bytes_of_width(width);
        std::map<std::uint64_t, char> expected;
        for (std::uint64_t address = 0; address < image.depth(); ++address) {
            const auto value = image[address];
            if (!value) {
                continue;
            }
            const std::string bits = std::string(8 * bytes - width, '0') + *value->to_text(radix::bin);
            for (std::uint32_t index = 0; index < bytes; ++index) {
                const std::uint32_t place = order == byte_order::big ? index : bytes - 1 - index;
                expected[address * bytes + place] =
                    static_cast<char>(std::stoul(bits.substr(8 * index, 8), nullptr, 2));
            }
        }
        std::map<std::uint64_t, char> found;
        for_each_byte_block(image, order, [&found](std::uint64_t address, std::string_view block) {
            for (const char byte : block) {
                found.emplace(address++, byte);
            }
        });
        EXPECT_EQ(found, expected) << width;
    }
}

/// Checks a stream of blocks without storing it.
struct streamed {
    std::uint64_t next = 0;
    std::uint64_t sum = 0;
    std::size_t largest = 0;
    bool is_gapless = true;

    void take(std::uint64_t address, std::string_view bytes) {
        is_gapless = is_gapless && address == next;
        next = address + bytes.size();
        largest = std::max(largest, bytes.size());
        sum += static_cast<unsigned char>(bytes.front());
        sum += static_cast<unsigned char>(bytes.back());
    }
};

TEST(BytesOfWords, AFillOfTheDeepestMemoryStreams) {
    memory_image image(16, deepest_memory);
    image.fill({0, deepest_memory - 1}, std::vector{word::of(0x0102, 16)});
    streamed stream;
    for_each_byte_block(image, byte_order::big, [&stream](std::uint64_t address, std::string_view bytes) {
        stream.take(address, bytes);
    });
    EXPECT_TRUE(stream.is_gapless);
    EXPECT_EQ(stream.next, std::uint64_t{1} << 33U);
    EXPECT_EQ(stream.largest, std::size_t{64} << 10U);
    EXPECT_EQ(stream.sum, 3 * (std::uint64_t{1} << 17U));
}

TEST(BytesOfWords, AFillOfSeveralWordsStreams) {
    memory_image image(24, deepest_memory);
    image.fill({1, deepest_memory - 1},
               std::vector{word::of(0x010101, 24), word::of(0x020202, 24), word::of(0x030303, 24)});
    std::uint64_t bytes = 0;
    bool is_right = true;
    for_each_byte_block(image, byte_order::big, [&](std::uint64_t address, std::string_view block) {
        bytes += block.size();
        for (const std::size_t index : {std::size_t{0}, block.size() / 2, block.size() - 1}) {
            is_right = is_right && block[index] == static_cast<char>(1 + ((address + index) / 3 + 2) % 3);
        }
    });
    EXPECT_TRUE(is_right);
    EXPECT_EQ(bytes, 3 * (deepest_memory - 1));
}

/// "0+65536 65536+2": address and size of each block.
std::string shown_sizes(const memory_image& image, byte_order order = byte_order::big) {
    std::string text;
    for_each_byte_block(image, order, [&text](std::uint64_t address, std::string_view bytes) {
        text += (text.empty() ? "" : " ") + std::to_string(address) + "+" + std::to_string(bytes.size());
    });
    return text;
}

/// The addresses from which fills begin here are those of a new page of the store.
constexpr std::uint64_t after_page = 1024;

/// A memory with a word at 1023 and @p pattern repeated in the @p count words after it.
memory_image word_and_fill(std::uint64_t count, const std::vector<word>& pattern) {
    const std::uint32_t width = pattern.front().width();
    memory_image image(width, after_page + count);
    image.set(after_page - 1, word::of(9, width));
    image.fill({after_page, after_page + count - 1}, pattern);
    return image;
}

/// Returns the numbers from 1 to @p count as words.
std::vector<word> numbered_words(std::uint64_t count, std::uint32_t width) {
    std::vector<word> all;
    for (std::uint64_t number = 1; number <= count; ++number) {
        all.push_back(word::of(number, width));
    }
    return all;
}

TEST(BytesOfWords, BlocksAreFilledUpWithWords) {
    memory_image image(16, 40000);
    for (std::uint64_t address = 1; address < image.depth(); ++address) {
        image.set(address, word::of(address, 16));
    }
    EXPECT_EQ(shown_sizes(image), "2+65536 65538+14462");
}

TEST(BytesOfWords, OnlyARunLongerThanABlockBeginsABlock) {
    const std::vector<word> value = numbered_words(1, 16);
    EXPECT_EQ(shown_sizes(word_and_fill(32768, value)), "2046+65536 67582+2");
    EXPECT_EQ(shown_sizes(word_and_fill(32769, value)), "2046+2 2048+65536 67584+2");
}

TEST(BytesOfWords, OnlyACycleLongerThanTwoBlocksBeginsABlock) {
    const std::vector<word> pattern = numbered_words(2, 16);
    EXPECT_EQ(shown_sizes(word_and_fill(65536, pattern)), "2046+65536 67582+65536 133118+2");
    EXPECT_EQ(shown_sizes(word_and_fill(65537, pattern)), "2046+2 2048+65536 67584+65536 133120+2");
}

TEST(BytesOfWords, ACycleRepeatsInBlocksIfItsPeriodFitsOne) {
    constexpr std::uint32_t width = 8 * 4096;
    EXPECT_EQ(shown_sizes(word_and_fill(33, numbered_words(16, width))),
              "4190208+4096 4194304+65536 4259840+65536 4325376+4096");
    EXPECT_EQ(shown_sizes(word_and_fill(34, numbered_words(17, width))),
              "4190208+65536 4255744+65536 4321280+12288");
}

TEST(BytesOfWords, StoredAsBytesAreReversedInBlocksOfWholeWords) {
    const std::string contents(3 * 21847, 'x');
    const auto image_of = [](std::uint32_t width, std::vector<byte_words::block> blocks) {
        byte_words words(std::move(blocks), width, byte_order::big, nullptr);
        return memory_image(width, std::make_unique<image_words>(100000, std::move(words)), 10);
    };
    const std::string_view all = contents;
    const memory_image image = image_of(24, {{5, all}, {30000, all.substr(0, 6)}});
    EXPECT_EQ(shown_sizes(image, byte_order::big), "45+65541 90030+6");
    EXPECT_EQ(shown_sizes(image, byte_order::little), "45+65535 65580+6 90030+6");
    const memory_image wide = image_of(8 * 32769, {{1, all.substr(0, 65538)}});
    EXPECT_EQ(shown_sizes(wide, byte_order::little), "360459+32769 393228+32769");
}

TEST(BytesOfWords, AWordMayBeLargerThanABlock) {
    memory_image image(widest_word, 3);
    image.fill({0, 2}, std::vector{word(widest_word)});
    streamed stream;
    for_each_byte_block(image, byte_order::big, [&stream](std::uint64_t address, std::string_view bytes) {
        stream.take(address, bytes);
    });
    EXPECT_TRUE(stream.is_gapless);
    EXPECT_EQ(stream.next, 3 * (std::uint64_t{1} << 17U));
}

} // namespace
