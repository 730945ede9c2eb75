#include "kvrimage/formats/unset_words.h"
#include "kvrimage/image/image_words.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace {

using namespace kvrimage;

memory_image empty_image(std::uint64_t depth, std::uint64_t base = 0) {
    return {8, std::make_unique<image_words>(depth), base};
}

TEST(UnsetWords, AreAllOfAnEmptyMemory) {
    const unset_words found = count_unset(empty_image(100, 5));
    EXPECT_EQ(found.count, 100U);
    EXPECT_EQ(found.first, 5U);
}

TEST(UnsetWords, AreNoneOfAFullOne) {
    memory_image image = empty_image(100);
    image.words().fill(0, 99, {"00"});
    EXPECT_EQ(count_unset(image).count, 0U);
}

TEST(UnsetWords, AreCountedInHugeMemories) {
    memory_image image = empty_image(std::uint64_t{1} << 32U, 7);
    image.words().fill(1, (std::uint64_t{1} << 32U) - 3, {"00", "01", "02"});
    const unset_words found = count_unset(image);
    EXPECT_EQ(found.count, 3U);
    EXPECT_EQ(found.first, 7U);
}

TEST(UnsetWords, AreThoseThatAModelHas) {
    std::mt19937 random(2);
    for (int round = 0; round < 300; ++round) {
        const std::uint64_t depth = random() % 3000 + 1;
        memory_image image = empty_image(depth, 1000);
        std::vector<bool> is_set(depth);
        for (std::uint64_t step = random() % 6; step > 0; --step) {
            const std::uint64_t first = random() % depth;
            const std::uint64_t last = std::min(first + random() % 700, depth - 1);
            const bool sets = random() % 4 != 0;
            switch (random() % 3) {
            case 0:
                image.words().fill(first, last, {sets ? "0A" : ""});
                break;
            case 1:
                image.words().fill(first, last,
                                   sets ? std::vector<std::string_view>{"01", "02", "03"}
                                        : std::vector<std::string_view>{""});
                break;
            default:
                for (std::uint64_t address = first; address <= last; ++address) {
                    image.words().set(address, sets ? "FF" : "");
                }
                break;
            }
            for (std::uint64_t address = first; address <= last; ++address) {
                is_set[address] = sets;
            }
        }
        const auto count = static_cast<std::uint64_t>(std::count(is_set.begin(), is_set.end(), false));
        const auto first =
            static_cast<std::uint64_t>(std::find(is_set.begin(), is_set.end(), false) - is_set.begin());
        const unset_words found = count_unset(image);
        ASSERT_EQ(found.count, count);
        if (count != 0) {
            ASSERT_EQ(found.first, first + 1000);
        }
    }
}

TEST(UnsetWords, AreThoseBeforeBetweenAndAfterFillsOfOneWord) {
    memory_image image = empty_image(1000000, 7);
    image.words().fill(10, 499999, {"00"});
    image.words().fill(500003, 999997, {"01"});
    const unset_words found = count_unset(image);
    EXPECT_EQ(found.count, 10U + 3 + 2);
    EXPECT_EQ(found.first, 7U);
}

} // namespace
