// Long random sequences of changes to a word store, compared with a plain model.

#include "tests/models/choices.h"
#include "tests/models/model_operations.h"
#include "tests/models/word_store_operations.h"

#include <gtest/gtest.h>

namespace {

TEST(WordStoreOperations, LeaveWhatADequeOfStringsWouldHold) {
    kvr_test::run_model_operations<kvr_test::word_store_operations>();
}

TEST(WordStoreOperations, MeetRowsAndCycles) {
    std::uint64_t rows = 0;
    std::uint64_t cycles = 0;
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        kvr_test::random_choices choices(seed);
        kvr_test::word_store_operations operations(choices);
        for (int step = 0; step < 200; ++step) {
            operations.step();
        }
        rows += operations.rows();
        cycles += operations.cycles();
    }
    EXPECT_GT(rows, 1000U);
    EXPECT_GT(cycles, 100U);
}

} // namespace
