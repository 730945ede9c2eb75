#include "kvrimage/picture/bit_map.h"

#include "kvrimage/image/word_text.h"

#include <algorithm>

namespace kvrimage {

namespace {

constexpr std::uint32_t rows_needed(std::uint32_t dividend, std::uint32_t divisor) noexcept {
    return (dividend - 1) / divisor + 1;
}

/// Returns the bits of a row: 1 if all rows fit, else the smallest power of two of bytes that fits.
std::uint32_t row_bits_for(std::uint32_t word_width, std::uint32_t most_rows) noexcept {
    std::uint32_t row_bits = word_width <= most_rows ? 1 : bits_per_byte;
    while (rows_needed(word_width, row_bits) > most_rows) {
        row_bits *= 2;
    }
    return row_bits;
}

} // namespace

bit_map::bit_map(const column_grid& columns_of_picture, std::uint32_t word_width, std::uint32_t most_rows)
    : grid(columns_of_picture),
      bits_a_word(word_width),
      bits_a_row(row_bits_for(word_width, most_rows)),
      row_count(rows_needed(word_width, bits_a_row)),
      cells(std::size_t{row_count} * grid.columns()),
      word_counts(row_count) {}

std::uint32_t bit_map::first_bit_of(std::uint32_t row) const noexcept {
    return std::min(row * bits_a_row, bits_a_word);
}

void bit_map::count_bits(std::string_view word) {
    show_word(word, radix::bin, bits_a_word, bits);
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

void bit_map::add_words(std::uint32_t column, std::uint64_t words) {
    for (std::uint32_t row = 0; row < row_count; ++row) {
        bit_count& cell = cells[std::size_t{column} * row_count + row];
        cell.ones += words * word_counts[row].ones;
        cell.zeros += words * word_counts[row].zeros;
        cell.dont_cares += words * word_counts[row].dont_cares;
    }
}

void bit_map::take(const text_run& run) {
    if (!run.text.empty()) {
        count_bits(run.text);
        grid.for_each_column(run,
                             [this](std::uint32_t column, std::uint64_t words) { add_words(column, words); });
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
    // Limits at unusual shares, not at thirds or quarters.
    constexpr double least_half = 0.3;
    constexpr double most_half = 0.7;
    const double share = static_cast<double>(cell.ones) / static_cast<double>(plain);
    return share < least_half ? bit_shade::low : share > most_half ? bit_shade::high : bit_shade::half;
}

std::vector<std::uint32_t> bit_map::ticks(std::uint32_t most) const {
    std::uint32_t step = 1;
    while ((bits_a_word - 1) / step + 1 > most) {
        step *= 2;
    }
    std::vector<std::uint32_t> ticks;
    for (std::uint32_t bit = 0; bit < bits_a_word; bit += step) {
        ticks.push_back(bit);
    }
    if (bits_a_word - 1 - ticks.back() >= (step + 1) / 2) {
        ticks.push_back(bits_a_word - 1);
    }
    return ticks;
}

} // namespace kvrimage
