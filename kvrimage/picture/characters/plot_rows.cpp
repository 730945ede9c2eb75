#include "kvrimage/picture/characters/plot_rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace kvrimage::characters {

namespace {

constexpr std::uint32_t kinds = difference_kinds.size();

/// Returns the row border nearest to @p key. If there are keys on both sides, so are rows.
std::uint32_t border_at(const value_axis& axis, std::uint64_t key, std::uint32_t rows) {
    if (key == axis.lowest || key == axis.highest) {
        return key == axis.lowest ? 0 : rows;
    }
    return std::clamp(static_cast<std::uint32_t>(std::lround(axis.position_of(key) * rows)), 1U, rows - 1);
}

/// Returns @p distance / @p all, exact at both ends for any numbers.
double part_of(std::uint64_t distance, std::uint64_t all) {
    return static_cast<double>(distance) / static_cast<double>(all);
}

/// Scales @p share, 0 to 1, to 1 to @p all eighths.
std::uint32_t eighths_for(double share, std::uint32_t all) {
    return 1 + static_cast<std::uint32_t>(std::lround(share * (all - 1)));
}

} // namespace

waveform_rows::waveform_rows(const waveform& drawn, const glyph_set& characters, std::uint32_t count)
    : wave(drawn),
      glyphs(characters),
      axis(drawn.axis()),
      base_key(axis.bar_base(drawn.order())),
      row_count(count),
      base(border_at(axis, base_key, count)) {}

/// If all values are below zero, zero hangs too.
bool waveform_rows::hangs(std::uint64_t key) const noexcept {
    return key < base_key || base_key == axis.highest;
}

std::uint32_t waveform_rows::end_of_bar(std::uint64_t key) const {
    const std::uint32_t border = base * eighths_a_row;
    if (hangs(key)) {
        return border - eighths_for(part_of(base_key - key, base_key - axis.lowest), border);
    }
    return border +
           eighths_for(part_of(key - base_key, axis.highest - base_key), row_count * eighths_a_row - border);
}

std::uint32_t waveform_rows::row_of(std::uint64_t key) const {
    return (end_of_bar(key) - (hangs(key) ? 0 : 1)) / eighths_a_row;
}

/// Returns a cell above the border.
cell waveform_rows::standing(std::uint32_t row, const value_bounds& bounds) const {
    const std::uint32_t floor = row * eighths_a_row;
    const std::uint32_t ceiling = floor + eighths_a_row;
    const std::uint32_t top = hangs(bounds.highest) ? 0 : end_of_bar(bounds.highest);
    const std::uint32_t solid = hangs(bounds.lowest) ? 0 : end_of_bar(bounds.lowest);
    if (top >= ceiling && solid < floor + eighths_a_row / 2) {
        return {character_style::envelope, glyphs.between, meaning::between};
    }
    const std::uint32_t filled = std::clamp(top, floor, ceiling) - floor;
    return {character_style::value, glyphs.eighths[filled], filled == 0 ? meaning::nothing : meaning::value};
}

/// Returns a cell below the border.
cell waveform_rows::hanging(std::uint32_t row, const value_bounds& bounds) const {
    const std::uint32_t floor = row * eighths_a_row;
    const std::uint32_t ceiling = floor + eighths_a_row;
    const std::uint32_t none = base * eighths_a_row;
    const std::uint32_t bottom = hangs(bounds.lowest) ? end_of_bar(bounds.lowest) : none;
    const std::uint32_t solid = hangs(bounds.highest) ? end_of_bar(bounds.highest) : none;
    if (bottom <= floor && solid > ceiling - eighths_a_row / 2) {
        return {character_style::envelope, glyphs.between, meaning::between};
    }
    const std::uint32_t filled = ceiling - std::clamp(bottom, floor, ceiling);
    return {character_style::value, glyphs.hanging[filled],
            filled == 0 ? meaning::nothing : meaning::negative_value};
}

cell waveform_rows::at(std::uint32_t row, std::uint32_t column) const {
    if (wave.is_dont_care(column)) {
        return {character_style::dont_care, glyphs.of(bit_shade::dont_care), meaning::dont_care};
    }
    const auto& bounds = wave.columns()[column];
    if (!bounds) {
        return {character_style::value, " "};
    }
    return row >= base ? standing(row, *bounds) : hanging(row, *bounds);
}

row_labels waveform_rows::labels() const {
    const std::uint32_t most_ticks = std::max(row_count / 3, least_picture_rows);
    row_labels labels(row_count);
    for (const value_tick& tick : ticks_of(wave.order(), axis, most_ticks)) {
        labels[row_of(tick.key)] = tick.label;
    }
    // The ends are exact. No other label may be next to them, except zero.
    const std::uint64_t zero = wave.order().key_of_zero();
    const auto clear = [&](std::uint32_t row) {
        if (base_key != zero || row != row_of(zero)) {
            labels[row].clear();
        }
    };
    clear(1);
    clear(row_count - 2);
    labels.front() = wave.order().text_of(axis.lowest);
    labels.back() = wave.order().text_of(axis.highest);
    return labels;
}

cell bit_rows::at(std::uint32_t row, std::uint32_t column) const {
    // Indexed by bit_shade.
    constexpr std::array<cell, 7> kinds_of_cells = {{{character_style::faint, "", meaning::unset},
                                                     {character_style::value, "", meaning::no_ones},
                                                     {character_style::value, "", meaning::some_ones},
                                                     {character_style::value, "", meaning::some_ones},
                                                     {character_style::value, "", meaning::some_ones},
                                                     {character_style::value, "", meaning::all_ones},
                                                     {character_style::dont_care, "", meaning::dont_care}}};
    const bit_shade shade = map.shade(row, column);
    cell shown = kinds_of_cells[static_cast<std::size_t>(shade)];
    shown.glyph = glyphs.of(shade);
    return shown;
}

row_labels bit_rows::labels() const {
    row_labels labels(rows());
    for (const std::uint32_t bit : map.ticks(std::max(rows() / 2, 1U))) {
        labels[map.row_of(bit)] = fmt::format("{}", bit);
    }
    if (rows() > 2) {
        labels[rows() - 2].clear();
    }
    labels.back() = fmt::format("{}", map.width() - 1);
    labels.front().assign(1, '0');
    return labels;
}

difference_rows::difference_rows(const difference_map& drawn, const glyph_set& characters, std::uint32_t most)
    : map(drawn),
      glyphs(characters),
      lane_rows(std::max((most - (kinds - 1)) / kinds, 1U)) {}

std::uint32_t difference_rows::rows() const noexcept {
    return kinds * (lane_rows + 1) - 1;
}

cell difference_rows::at(std::uint32_t row, std::uint32_t column) const {
    constexpr std::array styles = {character_style::changed, character_style::left_only,
                                   character_style::right_only};
    constexpr std::uint32_t eighths_a_row = 8;
    const std::uint32_t lane = kinds - 1 - row / (lane_rows + 1); // the first kind is on top
    const std::uint32_t row_in_lane = row % (lane_rows + 1);
    const difference_kind kind = difference_kinds[lane];
    if (row_in_lane == lane_rows || map.count(kind, column) == 0) {
        return {character_style::plain, " "};
    }
    const double share = map.share(kind, column) * lane_rows * eighths_a_row;
    const std::uint32_t height = std::max(static_cast<std::uint32_t>(std::lround(share)), 1U);
    const std::uint32_t floor = row_in_lane * eighths_a_row;
    const std::uint32_t filled = std::clamp(height, floor, floor + eighths_a_row) - floor;
    return {styles[lane], glyphs.eighths[filled], filled == 0 ? meaning::nothing : meaning::share};
}

row_labels difference_rows::labels() const {
    constexpr std::array names = {"changed", "only A", "only B"};
    row_labels labels(rows());
    for (std::uint32_t lane = 0; lane < kinds; ++lane) {
        labels[(kinds - 1 - lane) * (lane_rows + 1)] = names[lane];
    }
    return labels;
}

} // namespace kvrimage::characters
