#include "kvrimage/operations/number_counts.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace {

using namespace kvrimage;

TEST(SortByValue, SortsByAllBytesAndKeepsTheOrderOfEqualNumbers) {
    std::mt19937_64 engine(1);
    for (const std::uint64_t mask :
         {std::uint64_t{0}, std::uint64_t{7}, std::uint64_t{0xFF00FF00}, ~std::uint64_t{0}}) {
        std::vector<number_count> counts;
        for (std::uint32_t turn = 0; turn < 3000; ++turn) {
            counts.push_back({engine() & mask, turn, 0});
        }
        std::vector<number_count> expected = counts;
        std::ranges::stable_sort(expected, {}, &number_count::value);
        sort_by_value(counts);
        EXPECT_EQ(counts, expected);
    }
}

TEST(NumberCounts, JoinsWhatIsEqual) {
    number_counts counts;
    counts.add(5, 1, 0);
    counts.add(3, 4, 1);
    counts.add(3, 2, 2);
    counts.add(5, 1, 3);
    EXPECT_EQ(counts.sorted(), (std::vector<number_count>{{3, 2, 5}, {5, 3, 1}}));
}

TEST(NumberCounts, CountsUpToTwoToThePowerOf32) {
    number_counts counts;
    counts.add(5, std::uint64_t{1} << 32U, 0);
    EXPECT_EQ(counts.sorted().front().repeats, 0xFFFFFFFFU);
}

TEST(NumberCounts, CountsMoreThanItGathersAtOnce) {
    KVR_NOT_IN_A_SLOW_PROGRAM();
    std::mt19937 engine(1);
    for (const std::uint32_t values : {100U, 1U << 20U}) {
        number_counts counts;
        std::map<std::uint64_t, number_count> expected;
        for (std::uint32_t turn = 0; turn < 600000; ++turn) {
            const std::uint64_t value = engine() % values;
            counts.add(value, 1, turn);
            auto [place, is_new] = expected.try_emplace(value, number_count{value, turn, 0});
            place->second.repeats += is_new ? 0 : 1;
            place->second.last_turn = turn;
        }
        const std::vector<number_count>& found = counts.sorted();
        ASSERT_TRUE(std::ranges::equal(found, expected, {}, {}, [](const auto& one) { return one.second; }));
    }
}

} // namespace
