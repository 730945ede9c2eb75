#pragma once

#include "kvrimage/image/image_words.h"
#include "kvrimage/picture/column_grid.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace kvrimage {

/// What to look at where there is too much: in each column this many runs from each of this many places on,
/// which are spread evenly over it.
struct run_samples {
    std::uint32_t runs;
    std::uint32_t places;

    friend bool operator==(const run_samples&, const run_samples&) = default;
};

/// The samples that a picture of words of @p width bits rests on; nothing where it can rest on all runs.
/// Takes the time of a look at 2^24 runs at most.
[[nodiscard]] std::optional<run_samples> samples_for(const image_words& words, std::uint32_t width,
                                                     const column_grid& grid);

/// Calls @p take with the runs of the grid's range, cut to it, in order: all of them, or @p samples. The cost
/// follows the runs that are taken, not the number of words.
void for_each_sample(const image_words& words, const column_grid& grid,
                     const std::optional<run_samples>& samples,
                     const std::function<void(const text_run&)>& take);

} // namespace kvrimage
