#include "kvrimage/operations/statistics/runs.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace kvrimage;

word run_word(std::uint64_t value) {
    return word::of(value, 8);
}

void expect_runs(const run_statistics& found, std::uint64_t runs, const address_range& longest,
                 const word& value) {
    EXPECT_EQ(found.runs, runs);
    ASSERT_TRUE(found.longest);
    EXPECT_EQ(found.longest->addresses, longest);
    EXPECT_EQ(found.longest->value, value);
}

TEST(RunsOf, AnEmptyMemoryHasNone) {
    const run_statistics found = runs_of(memory_image(8, deepest_memory));
    EXPECT_EQ(found.runs, 0);
    EXPECT_FALSE(found.longest);
}

TEST(RunsOf, TheLowestOfTheLongestCounts) {
    memory_image image(8, 20, 100);
    image.set(100, run_word(1));
    image.fill({104, 106}, std::array{run_word(2)});
    image.fill({107, 109}, std::array{run_word(1)});
    expect_runs(runs_of(image), 3, {104, 106}, run_word(2));
}

TEST(RunsOf, WordsThatAreNotSetEndARun) {
    memory_image image(8, 9);
    image.fill({0, 3}, std::array{run_word(2)});
    image.fill({5, 8}, std::array{run_word(2)});
    expect_runs(runs_of(image), 2, {0, 3}, run_word(2));
}

TEST(RunsOf, TurnsOfAPatternMeet) {
    memory_image image(8, deepest_memory);
    image.fill({0, 299}, std::array{run_word(1), run_word(2), run_word(1)});
    expect_runs(runs_of(image), 201, {2, 3}, run_word(1));
}

TEST(RunsOf, TheLastTurnGoesOnInTheWordsAfterIt) {
    memory_image image(8, deepest_memory);
    image.fill({0, 2999999999}, std::array{run_word(1), run_word(2), run_word(3)});
    image.fill({3000000000, 3000000003}, std::array{run_word(3)});
    expect_runs(runs_of(image), 3000000000, {2999999999, 3000000003}, run_word(3));
}

TEST(RunsOf, APatternOfEqualWordsIsOneRun) {
    memory_image image(8, deepest_memory);
    image.fill({0, deepest_memory - 1}, std::array{run_word(7), run_word(7), run_word(7)});
    expect_runs(runs_of(image), 1, {0, deepest_memory - 1}, run_word(7));
}

TEST(RunsOf, RandomMemoriesHaveThoseThatTheRunsOfTheImageAre) {
    memory_maker maker(22);
    for (int round = 0; round < rounds(300); ++round) {
        const auto width = static_cast<std::uint32_t>(1 + maker.below(4));
        const memory_image image = maker.memory(width, 1 + maker.below(300), round % 3 == 0 ? 5 : 0, 3);
        std::uint64_t count = 0;
        std::optional<run> longest;
        const auto length = [](const run& one) { return one.addresses.last - one.addresses.first; };
        for (const run& one : image.runs()) {
            count += one.value ? 1U : 0U;
            if (one.value && (!longest || length(one) > length(*longest))) {
                longest = one;
            }
        }
        const run_statistics found = runs_of(image);
        ASSERT_EQ(found.runs, count);
        ASSERT_EQ(found.longest.has_value(), longest.has_value());
        if (longest) {
            ASSERT_EQ(found.longest->addresses, longest->addresses);
            ASSERT_EQ(found.longest->value, longest->value);
        }
    }
}

} // namespace
