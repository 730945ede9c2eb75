#include "tools/kvrmem/plot/plot_samples.h"

#include "tools/kvrmem/memory/word_text.h"

#include <algorithm>

namespace kvrmem {

occupancy word_column::state() const noexcept {
    if (set == 0) {
        return occupancy::unset;
    }
    if (set < seen) {
        return occupancy::partly_set;
    }
    return is_in_run ? occupancy::run : occupancy::set;
}

void occupancy_strip::take(const kvr::word_run& run) {
    const bool is_run = run.last > run.first && !run.text.empty();
    bool begins = true;
    for (std::uint32_t at = grid.column_of(run.first); at <= grid.column_of(run.last); ++at) {
        const std::uint64_t first = std::max<std::uint64_t>(grid.first_of(at), run.first);
        const std::uint64_t last = std::min<std::uint64_t>(grid.last_of(at), run.last);
        word_column& column = counted[at];
        column.seen += last - first + 1;
        column.set += run.text.empty() ? 0 : last - first + 1;
        if (is_run && first == grid.first_of(at) && last == grid.last_of(at)) {
            column.is_in_run = true;
            column.begins_run = begins;
            begins = false;
        }
    }
}

void value_envelope::take(const kvr::word_run& run) {
    const std::optional<std::uint64_t> key = order.key_of(run.text);
    if (!key) {
        return;
    }
    for (std::uint32_t at = grid.column_of(run.first); at <= grid.column_of(run.last); ++at) {
        std::optional<value_bounds>& column = found[at];
        column = column ? value_bounds{std::min(column->lowest, *key), std::max(column->highest, *key)}
                        : value_bounds{*key, *key};
    }
}

std::optional<value_bounds> value_envelope::bounds() const {
    std::optional<value_bounds> all;
    for (const std::optional<value_bounds>& column : found) {
        if (column) {
            all = all ? value_bounds{std::min(all->lowest, column->lowest),
                                     std::max(all->highest, column->highest)}
                      : *column;
        }
    }
    return all;
}

bit_map::bit_map(const address_grid& columns_of_addresses, std::uint32_t word_width, std::uint32_t most_rows)
    : grid(columns_of_addresses),
      width(word_width),
      row_count(std::min(width, most_rows)),
      cells(std::size_t{row_count} * grid.columns()),
      word_counts(row_count) {}

std::uint32_t bit_map::row_of(std::uint32_t bit) const noexcept {
    return static_cast<std::uint32_t>(std::uint64_t{bit} * row_count / width);
}

std::uint32_t bit_map::first_bit_of(std::uint32_t row) const noexcept {
    return static_cast<std::uint32_t>((std::uint64_t{row} * width + row_count - 1) / row_count);
}

void bit_map::count_bits(std::string_view word) {
    show_word(word, RADIX_BIN, width, bits);
    for (std::uint32_t row = 0; row < row_count; ++row) {
        // The text begins with the most significant bit.
        const auto begin = bits.end() - first_bit_of(row + 1);
        const auto end = bits.end() - first_bit_of(row);
        bit_count& counts = word_counts[row];
        counts.ones = static_cast<std::uint64_t>(std::count(begin, end, '1'));
        counts.zeros = static_cast<std::uint64_t>(std::count(begin, end, '0'));
        counts.dont_cares = static_cast<std::uint64_t>(end - begin) - counts.ones - counts.zeros;
    }
}

void bit_map::take(const kvr::word_run& run) {
    if (run.text.empty()) {
        return;
    }
    count_bits(run.text);
    for (std::uint32_t at = grid.column_of(run.first); at <= grid.column_of(run.last); ++at) {
        const std::uint64_t count = std::min<std::uint64_t>(grid.last_of(at), run.last) -
                                    std::max<std::uint64_t>(grid.first_of(at), run.first) + 1;
        for (std::uint32_t row = 0; row < row_count; ++row) {
            bit_count& cell = cells[std::size_t{at} * row_count + row];
            cell.ones += count * word_counts[row].ones;
            cell.zeros += count * word_counts[row].zeros;
            cell.dont_cares += count * word_counts[row].dont_cares;
        }
    }
}

bit_shade bit_map::shade(std::uint32_t row, std::uint32_t column) const noexcept {
    const bit_count& cell = cells[std::size_t{column} * row_count + row];
    const std::uint64_t plain = cell.ones + cell.zeros;
    if (plain + cell.dont_cares == 0) {
        return bit_shade::unset;
    }
    if (cell.dont_cares >= plain) {
        return bit_shade::dont_care;
    }
    if (cell.ones == 0 || cell.zeros == 0) {
        return cell.ones == 0 ? bit_shade::none : bit_shade::all;
    }
    // Borders where shares seldom are: not at thirds or quarters.
    constexpr double least_half = 0.3;
    constexpr double most_half = 0.7;
    const double share = static_cast<double>(cell.ones) / static_cast<double>(plain);
    return share < least_half ? bit_shade::low : share > most_half ? bit_shade::high : bit_shade::half;
}

} // namespace kvrmem
