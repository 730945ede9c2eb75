#pragma once

#include "tests/models/choices.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <string>

namespace kvr_test {

/// The number in the environment variable @p name; @p otherwise if it is not set.
/// @throws std::invalid_argument, std::out_of_range if the variable contains no number.
inline std::uint64_t number_in_environment(const char* name, std::uint64_t otherwise) {
    const char* text = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nothing sets variables
    return text != nullptr ? std::stoull(text) : otherwise;
}

/// Runs sequences of random operations on a store and its model. The environment can set the total number of
/// operations (KVR_MODEL_OPERATIONS) and the seed of the first sequence (KVR_MODEL_SEED). Each later sequence
/// adds one to the seed. A failure reports its seed, which repeats it.
/// @param otherwise the number of operations if the variable is not set
template <class Operations>
void run_model_operations(std::uint64_t otherwise = 100'000) {
    constexpr std::uint64_t longest_sequence = 500;
    const std::uint64_t all = number_in_environment("KVR_MODEL_OPERATIONS", otherwise);
    ASSERT_GT(all, 0U);
    auto seed = static_cast<std::uint32_t>(number_in_environment("KVR_MODEL_SEED", 1));
    for (std::uint64_t done = 0; done < all; ++seed) {
        const std::uint64_t count = std::min(longest_sequence, all - done);
        try {
            random_choices choices(seed);
            Operations operations(choices);
            for (std::uint64_t step = 0; step < count; ++step) {
                operations.step();
            }
            operations.compare_all();
        } catch (const std::exception& difference) {
            FAIL() << "seed " << seed << ": " << difference.what();
        }
        done += count;
    }
    testing::Test::RecordProperty("operations", std::to_string(all));
}

} // namespace kvr_test
