#include "tools/kvrmem/memory/memory_image.h"

#include "tools/kvrmem/memory/word_runs.h"

namespace kvrmem {

std::optional<address_bounds> bounds_of(const kvr::word_store& words) {
    std::optional<address_bounds> bounds;
    const auto take = [&bounds](std::uint32_t first, std::uint32_t last) {
        bounds = address_bounds{bounds ? bounds->lowest : first, last};
    };
    for_each_row_cycle_or_run(
        words,
        [&take](const kvr::word_row& row, std::uint32_t first) {
            take(first, first + row.count - 1);
            return row.count;
        },
        [&take](const kvr::word_cycle& cycle) {
            take(cycle.first, cycle.last);
            return length_of(cycle);
        },
        [&take](const kvr::word_run& run) { take(run.first, run.last); });
    return bounds;
}

} // namespace kvrmem
