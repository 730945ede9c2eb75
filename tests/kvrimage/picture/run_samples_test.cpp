#include "kvrimage/picture/run_samples.h"
#include "tests/kvrimage/picture/drawn_memory.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

struct taken_run {
    std::uint64_t first;
    std::uint64_t last;
    std::string text;
    friend bool operator==(const taken_run&, const taken_run&) = default;
};

std::vector<taken_run> runs_of(const image_words& words, const column_grid& grid,
                               const std::optional<run_samples>& samples) {
    std::vector<taken_run> taken;
    for_each_sample(words, grid, samples, [&](const text_run& run) {
        taken.push_back({run.first, run.last, std::string(run.text)});
    });
    return taken;
}

TEST(RunSamples, AllRunsAreTakenCutToTheRange) {
    const image_words words = words_of(10, {{0, 4, {"A"}}, {7, 9, {"B"}}});
    EXPECT_EQ(runs_of(words, column_grid(2, 8, 3), std::nullopt),
              (std::vector<taken_run>{{2, 4, "A"}, {5, 6, ""}, {7, 8, "B"}}));
}

TEST(RunSamples, RunOverAllAddressesIsOneRun) {
    const std::uint64_t depth = std::uint64_t{1} << 32U;
    const image_words words = words_of(depth, {{0, depth - 1, {"1"}}});
    const column_grid grid(0, depth - 1, 1648);
    EXPECT_EQ(samples_for(words, 4, grid), std::nullopt);
    EXPECT_EQ(runs_of(words, grid, std::nullopt), (std::vector<taken_run>{{0, depth - 1, "1"}}));
}

TEST(RunSamples, LimitIsTwoToThe24Runs) {
    KVR_NOT_IN_A_SLOW_PROGRAM();
    const std::uint64_t most = std::uint64_t{1} << 24U;
    const image_words words = words_of(most + 2, {{0, most + 1, {"1", "2"}}});
    EXPECT_EQ(samples_for(words, 4, column_grid(0, most - 1, 100)), std::nullopt);
    EXPECT_EQ(samples_for(words, 4, column_grid(0, most, 100)), (run_samples{64, 16}));
    EXPECT_EQ(samples_for(words, 4, column_grid(2, most + 1, 100)), std::nullopt);
}

TEST(RunSamples, WideWordsAreLimitedByTheirBits) {
    const std::uint64_t depth = std::uint64_t{1} << 13U;
    const image_words words = words_of(depth, {{0, depth - 1, {"1", "2"}}});
    const column_grid grid(0, depth - 1, 8);
    EXPECT_EQ(samples_for(words, 1U << 15U, grid), std::nullopt);
    EXPECT_EQ(samples_for(words, 1U << 16U, grid),
              (run_samples{32, 16})); // 512 of 65536 bits in each of 8 columns
    EXPECT_EQ(samples_for(words, 1U << 20U, column_grid(0, depth - 1, 32)), (run_samples{1, 8}));
    EXPECT_EQ(samples_for(words, 1U << 20U, column_grid(0, depth - 1, 1024)), (run_samples{1, 1}));
}

TEST(RunSamples, SamplesAreTheFirstRunsAtPlacesSpreadOverEachColumn) {
    const image_words words = words_of(40, {{0, 39, {"1", "2"}}});
    EXPECT_EQ(runs_of(words, column_grid(0, 39, 2), run_samples{2, 2}),
              (std::vector<taken_run>{{0, 0, "1"},
                                      {1, 1, "2"},
                                      {10, 10, "1"},
                                      {11, 11, "2"},
                                      {20, 20, "1"},
                                      {21, 21, "2"},
                                      {30, 30, "1"},
                                      {31, 31, "2"}}));
}

TEST(RunSamples, LongRunIsTakenOnceAndEndsWithTheRange) {
    const image_words words = words_of(40, {{5, 39, {"1"}}});
    EXPECT_EQ(runs_of(words, column_grid(0, 29, 2), run_samples{2, 2}),
              (std::vector<taken_run>{{0, 4, ""}, {5, 29, "1"}}));
}

} // namespace
