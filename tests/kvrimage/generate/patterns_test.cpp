#include "kvrimage/bytes/image_bytes.h"
#include "kvrimage/generate/patterns.h"
#include "kvrimage/operations/checksum/crc.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;

std::vector<std::string> hex_words_of(const memory_image& image) {
    std::vector<std::string> words;
    for (std::uint64_t address = 0; address < image.depth(); ++address) {
        words.push_back(image[address].value().to_text(radix::hex).value());
    }
    return words;
}

word signed_word(std::int64_t value, std::uint32_t width) {
    return word::of_signed(value, width);
}

std::uint64_t crc_32_of(const memory_image& image) {
    crc check({32, 0x04C11DB7, 0xFFFFFFFF, true, true, 0xFFFFFFFF});
    check.add(bytes_of_image(image));
    return check.value();
}

TEST(Ramp, CountsLikeACounterOfItsWidth) {
    EXPECT_EQ(hex_words_of(ramp(signed_word(6, 4), signed_word(1, 4), 4)),
              (std::vector<std::string>{"6", "7", "8", "9"}));
    EXPECT_EQ(hex_words_of(ramp(word::of(0x1FE, 9), signed_word(1, 9), 4)),
              (std::vector<std::string>{"1FE", "1FF", "000", "001"}));
    EXPECT_EQ(hex_words_of(ramp(word::of(1, 12), signed_word(-2, 12), 3)),
              (std::vector<std::string>{"001", "FFF", "FFD"}));
}

TEST(Ramp, CarriesThroughWideWords) {
    EXPECT_EQ(hex_words_of(ramp(word::parse("FFFFFFFFFFFFFFFFFFF", radix::hex, 77).value.value(),
                                signed_word(1, 77), 2)),
              (std::vector<std::string>{"0FFFFFFFFFFFFFFFFFFF", "10000000000000000000"}));
}

TEST(Ramp, AgreesWithNumbersOfAnyWidth) {
    std::mt19937_64 random(7);
    for (int round = 0; round < rounds(400); ++round) {
        const auto width = static_cast<std::uint32_t>(1 + random() % 64);
        const std::uint64_t mask = ~std::uint64_t{0} >> (64 - width);
        const std::uint64_t start = random() & mask;
        const std::uint64_t step = random() & mask;
        const memory_image made = ramp(word::of(start, width), word::of(step, width), 20);
        for (std::uint64_t address = 0; address < 20; ++address) {
            ASSERT_EQ(made[address], word::of((start + step * address) & mask, width)) << width;
        }
    }
}

TEST(Ramp, RefusesWordsThatDoNotGoTogether) {
    EXPECT_THROW(static_cast<void>(ramp(word::of(1, 8), word::of(1, 9), 2)), std::invalid_argument);
    const word dont_care = word::parse("X", radix::hex, 8).value.value();
    EXPECT_THROW(static_cast<void>(ramp(dont_care, word::of(1, 8), 2)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(ramp(word::of(1, 8), dont_care, 2)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(ramp(word::of(1, 8), word::of(1, 8), 0)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(ramp(word::of(1, 8), word::of(1, 8), deepest_memory + 1)),
                 std::invalid_argument);
}

/// A second implementation of the generator, from the description in its header.
std::uint64_t described_number(std::uint64_t seed, std::uint64_t index) {
    std::uint64_t z = seed + (index + 1) * 0x9E3779B97F4A7C15;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return z ^ (z >> 31);
}

TEST(RandomWords, AreTheSameEverywhere) {
    EXPECT_EQ(hex_words_of(random_words(64, 2, 0)),
              (std::vector<std::string>{"E220A8397B1DCDAF", "6E789E6AA1B965F4"}));
    EXPECT_EQ(hex_words_of(random_words(12, 3, 1)), (std::vector<std::string>{"CC1", "C67", "55E"}));
}

TEST(RandomWords, OfManyWidthsHaveTheirChecksums) {
    EXPECT_EQ(crc_32_of(random_words(1, 4096, 1)), 0x2458A149U);
    EXPECT_EQ(crc_32_of(random_words(8, 4096, 2)), 0xE980CB33U);
    EXPECT_EQ(crc_32_of(random_words(36, 4096, 3)), 0xB4D388A4U);
    EXPECT_EQ(crc_32_of(random_words(1000, 256, 4)), 0x85A551B5U);
}

TEST(RandomWords, AreTheLowestBitsOfTheNumbersThatAreDescribed) {
    std::mt19937_64 random(8);
    for (int round = 0; round < rounds(300); ++round) {
        const auto width = static_cast<std::uint32_t>(1 + random() % 200);
        const std::uint64_t seed = random();
        const std::uint64_t limbs = (width + 63) / 64;
        const memory_image made = random_words(width, 5, seed);
        for (std::uint64_t address = 0; address < 5; ++address) {
            const word value = made[address].value();
            for (std::uint32_t bit = 0; bit < width; ++bit) {
                const std::uint64_t limb = described_number(seed, limbs * address + bit / 64);
                ASSERT_EQ(value.bit(bit), (limb >> (bit % 64) & 1U) != 0 ? '1' : '0') << width;
            }
        }
    }
}

TEST(RandomWords, OfADeeperMemoryBeginWithTheSameOnes) {
    memory_image deep = random_words(20, 100, 9);
    deep.resize(10);
    EXPECT_EQ(deep, random_words(20, 10, 9));
}

TEST(RandomWords, RefuseSizesThatNoMemoryHas) {
    EXPECT_THROW(static_cast<void>(random_words(0, 1, 0)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(random_words(widest_word + 1, 1, 0)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(random_words(8, 0, 0)), std::invalid_argument);
}

TEST(TextWords, AreTheBytesOfTheText) {
    EXPECT_EQ(hex_words_of(text_words("Az\xC3\xA9")), (std::vector<std::string>{"41", "7A", "C3", "A9"}));
    EXPECT_EQ(hex_words_of(text_words("A", 20)), (std::vector<std::string>{"00041"}));
    EXPECT_EQ(hex_words_of(text_words("A", 7)), (std::vector<std::string>{"41"}));
}

TEST(TextWords, RefuseBytesThatDoNotFit) {
    try {
        static_cast<void>(text_words("a\xC3", 7));
        FAIL();
    } catch (const std::overflow_error& error) {
        EXPECT_STREQ(error.what(), "the byte 0xC3 at address 0x1 does not fit words of 7 bits (0..0x7F)");
    }
}

TEST(TextWords, RefuseNoText) {
    EXPECT_THROW(static_cast<void>(text_words("")), std::invalid_argument);
}

} // namespace
