#include "kvrimage/picture/run_samples.h"

#include "kvrimage/image/word_runs.h"
#include "kvrimage/picture/picture.h"

#include <algorithm>

namespace kvrimage {

namespace {

/// Limits of work without sampling. If bits are counted one by one, each bit of a run counts.
constexpr std::uint64_t most_runs = std::uint64_t{1} << 24U;
constexpr std::uint64_t most_bits = std::uint64_t{1} << 28U;
constexpr run_samples full_samples = {64, 16};

/// True if the offsets of @p grid have more than @p limit runs.
bool has_more_runs(const image_words& words, const column_grid& grid, std::uint64_t limit) {
    std::uint64_t runs = 0;
    for (std::uint64_t offset = grid.first(); offset <= grid.last(); ++runs) {
        const bool is_settled = grid.last() - offset < limit - runs; // even if each word were a run
        if (is_settled || runs == limit) {
            return !is_settled;
        }
        offset = words.run_at(offset).last + 1;
    }
    return false;
}

/// Limits the samples to the bits allowed for wide words, but to no less than one run for each column.
run_samples samples_of_wide_words(std::uint32_t width, std::uint32_t columns) {
    const auto runs = static_cast<std::uint32_t>(std::max<std::uint64_t>(most_bits / width / columns, 1));
    const std::uint32_t places = std::min(runs, full_samples.places);
    return {std::min(runs / places, full_samples.runs), places};
}

/// Passes at most @p most runs from @p offset to @p end (exclusive). Returns the offset after them.
std::uint64_t take_runs(const image_words& words, const column_grid& grid, std::uint64_t offset,
                        std::uint64_t end, std::uint32_t most,
                        const std::function<void(const text_run&)>& take) {
    for (std::uint32_t count = 0; count < most && offset < end; ++count) {
        text_run run = words.run_at(offset);
        run.last = std::min(run.last, grid.last());
        take(run);
        offset = run.last + 1;
    }
    return offset;
}

} // namespace

std::optional<run_samples> samples_for(const image_words& words, std::uint32_t width,
                                       const column_grid& grid) {
    const bool is_wide = width > widest_waveform;
    if (!has_more_runs(words, grid, is_wide ? most_bits / width : most_runs)) {
        return std::nullopt;
    }
    return is_wide ? samples_of_wide_words(width, grid.columns()) : full_samples;
}

void for_each_sample(const image_words& words, const column_grid& grid,
                     const std::optional<run_samples>& samples,
                     const std::function<void(const text_run&)>& take) {
    if (!samples) {
        for_each_run(words, grid.first(), grid.last() + 1, take);
        return;
    }
    std::uint64_t offset = grid.first();
    for (std::uint32_t column = 0; column < grid.columns(); ++column) {
        const std::uint64_t first = grid.first_of(column);
        const std::uint64_t count = grid.last_of(column) - first + 1;
        for (std::uint32_t place = 0; place < samples->places; ++place) {
            const std::uint64_t begin = first + count * place / samples->places;
            const std::uint64_t end = first + count * (place + 1) / samples->places;
            offset = take_runs(words, grid, std::max(offset, begin), end, samples->runs, take);
        }
    }
}

} // namespace kvrimage
