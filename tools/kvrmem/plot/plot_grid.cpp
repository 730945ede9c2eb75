#include "tools/kvrmem/plot/plot_grid.h"

#include "tools/kvrmem/memory/word_runs.h"

#include <algorithm>

namespace kvrmem {

namespace {

kvr::word_run run_within(const kvr::word_store& words, const address_range& range, std::uint64_t address) {
    kvr::word_run run = words.run_at(static_cast<std::uint32_t>(address));
    run.last = std::min(run.last, range.last);
    return run;
}

/// Shows the first runs, at most @p most of them, from @p address to @p end (exclusive); answers the address
/// behind them.
std::uint64_t walk_place(const kvr::word_store& words, const address_range& range, std::uint64_t address,
                         std::uint64_t end, std::uint32_t most,
                         const std::function<void(const kvr::word_run&)>& take) {
    for (std::uint32_t count = 0; count < most && address < end; ++count) {
        const kvr::word_run run = run_within(words, range, address);
        take(run);
        address = std::uint64_t{run.last} + 1;
    }
    return address;
}

} // namespace

address_grid::address_grid(const address_range& range, std::uint32_t most_columns)
    : addresses(range),
      column_words((words() + most_columns - 1) / most_columns) {}

std::uint32_t address_grid::columns() const noexcept {
    return static_cast<std::uint32_t>((words() + column_words - 1) / column_words);
}

std::uint32_t address_grid::column_of(std::uint64_t address) const noexcept {
    return static_cast<std::uint32_t>((address - addresses.first) / column_words);
}

std::uint64_t address_grid::first_of(std::uint32_t column) const noexcept {
    return addresses.first + column * column_words;
}

std::uint64_t address_grid::last_of(std::uint32_t column) const noexcept {
    return std::min<std::uint64_t>(first_of(column) + column_words - 1, addresses.last);
}

bool has_more_runs(const kvr::word_store& words, const address_range& range, std::uint64_t limit) {
    std::uint64_t runs = 0;
    for (std::uint64_t address = range.first; address <= range.last; ++runs) {
        const bool is_settled = range.last - address < limit - runs; // even if each word were a run
        if (is_settled || runs == limit) {
            return !is_settled;
        }
        address = std::uint64_t{run_within(words, range, address).last} + 1;
    }
    return false;
}

void walk_runs(const kvr::word_store& words, const address_grid& grid,
               const std::optional<run_samples>& samples,
               const std::function<void(const kvr::word_run&)>& take) {
    if (!samples) {
        for_each_run(words, grid.range().first, grid.range().last, take);
        return;
    }
    std::uint64_t address = grid.range().first;
    for (std::uint32_t column = 0; column < grid.columns(); ++column) {
        const std::uint64_t first = grid.first_of(column);
        const std::uint64_t count = grid.last_of(column) - first + 1;
        for (std::uint32_t place = 0; place < samples->places; ++place) {
            const std::uint64_t begin = first + count * place / samples->places;
            const std::uint64_t end = first + count * (place + 1) / samples->places;
            address = walk_place(words, grid.range(), std::max(address, begin), end, samples->runs, take);
        }
    }
}

} // namespace kvrmem
