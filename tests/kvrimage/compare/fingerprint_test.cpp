#include "kvrimage/compare/fingerprint.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/word.h"
#include "tests/kvrimage/operations/plain_memory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;

memory_image memory_of(std::uint32_t width, std::initializer_list<std::uint64_t> values) {
    memory_image image(width, 8);
    std::uint64_t address = 0;
    for (const std::uint64_t value : values) {
        image.set(address++, word::of(value, width));
    }
    return image;
}

TEST(Fingerprint, IsTheSameHoweverTheWordsWereSet) {
    memory_image filled(8, 5000);
    filled.fill({0, 4999}, std::vector{word::of(7, 8)});
    filled.set(100, word::of(8, 8));
    memory_image single(8, 5000);
    for (std::uint64_t address = 5000; address-- > 0;) {
        single.set(address, word::of(address == 100 ? 8 : 7, 8));
    }
    EXPECT_TRUE(filled == single);
    EXPECT_EQ(fingerprint_of(filled), fingerprint_of(single));
}

TEST(Fingerprint, AddsTheWordsOfARowAsThoseByThemselves) {
    const std::vector<std::string> texts = page_of_words(4);
    memory_image in_row(16, texts.size());
    set_in_row(in_row, 0, texts);
    ASSERT_EQ(in_row.words().row_at(0).count, texts.size());
    const std::uint64_t none = fingerprint_of(memory_image(16, texts.size()));
    std::uint64_t sum = none;
    for (std::size_t address = 0; address < texts.size(); ++address) {
        memory_image one_word(16, texts.size());
        one_word.words().set(address, texts[address]);
        sum += fingerprint_of(one_word) - none;
    }
    EXPECT_EQ(fingerprint_of(in_row), sum);
}

TEST(Fingerprint, DiffersWithEveryPartOfAMemory) {
    std::set<std::uint64_t> all;
    all.insert(fingerprint_of(memory_image(8, 8)));
    all.insert(fingerprint_of(memory_image(9, 8)));
    all.insert(fingerprint_of(memory_image(8, 9)));
    all.insert(fingerprint_of(memory_image(8, 8, 1)));
    all.insert(fingerprint_of(memory_of(8, {0})));
    all.insert(fingerprint_of(memory_of(8, {1})));
    all.insert(fingerprint_of(memory_of(8, {1, 2})));
    all.insert(fingerprint_of(memory_of(8, {2, 1})));
    all.insert(fingerprint_of(memory_of(64, {1})));
    EXPECT_EQ(all.size(), 9U);
}

TEST(Fingerprint, OfRandomMemoriesAgreesWithTheComparison) {
    std::mt19937 random(3);
    int same = 0;
    for (int round = 0; round < 2000; ++round) {
        memory_image images[2] = {memory_image(12, 4), memory_image(12, 4)};
        for (memory_image& image : images) {
            for (std::uint64_t address = 0; address < 4; ++address) {
                if (random() % 3 != 0) {
                    image.set(address, word::of(random() % 2, 12));
                }
            }
        }
        const bool are_equal = images[0] == images[1];
        EXPECT_EQ(fingerprint_of(images[0]) == fingerprint_of(images[1]), are_equal);
        same += are_equal ? 1 : 0;
    }
    EXPECT_GT(same, 5);
}

} // namespace
