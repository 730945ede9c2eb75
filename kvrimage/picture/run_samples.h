#pragma once

#include "kvrimage/image/image_words.h"
#include "kvrimage/picture/column_grid.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace kvrimage {

/// Sampling for memories with too many runs: each column is sampled at `places` places, spread evenly over
/// it, with `runs` runs at each place.
struct run_samples {
    std::uint32_t runs;
    std::uint32_t places;

    friend bool operator==(const run_samples&, const run_samples&) = default;
};

/// Returns the sampling for a picture of words of @p width bits, or nothing if all runs can be used. Examines
/// at most 2^24 runs.
[[nodiscard]] std::optional<run_samples> samples_for(const image_words& words, std::uint32_t width,
                                                     const column_grid& grid);

/// Calls @p take with the runs of the grid in order, cut to its range: all runs, or those of @p samples.
/// Takes time proportional to the runs passed, not to the number of words.
void for_each_sample(const image_words& words, const column_grid& grid,
                     const std::optional<run_samples>& samples,
                     const std::function<void(const text_run&)>& take);

} // namespace kvrimage
