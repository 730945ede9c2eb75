#include "kvrimage/picture/characters/plot_rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace kvrimage::characters {

waveform_rows::waveform_rows(const waveform& drawn, const glyph_set& characters)
    : wave(drawn),
      glyphs(characters),
      axis(drawn.axis()) {}

std::uint32_t waveform_rows::height_of(std::uint64_t key) const {
    constexpr double highest = plot_rows * eighths_a_row - 1;
    return 1 + static_cast<std::uint32_t>(std::lround(axis.position_of(key) * highest));
}

cell waveform_rows::at(std::uint32_t row, std::uint32_t column) const {
    const auto& bounds = wave.columns()[column];
    const std::uint32_t floor = row * eighths_a_row;
    const std::uint32_t ceiling = floor + eighths_a_row;
    const std::uint32_t top = bounds ? height_of(bounds->highest) : 0;
    const std::uint32_t solid = bounds ? height_of(bounds->lowest) : 0;
    if (top >= ceiling && solid < floor + eighths_a_row / 2) {
        return {character_style::envelope, glyphs.between};
    }
    return {character_style::value, glyphs.eighths[std::clamp(top, floor, ceiling) - floor]};
}

row_labels waveform_rows::labels() const {
    constexpr std::uint32_t most_ticks = 5;
    row_labels labels;
    for (const value_tick& tick : ticks_of(wave.order(), axis, most_ticks)) {
        labels[(height_of(tick.key) - 1) / eighths_a_row] = tick.label;
    }
    // The ends are exact, and no other label is beside them.
    labels[1].clear();
    labels[plot_rows - 2].clear();
    labels.front() = wave.order().text_of(axis.lowest);
    labels.back() = wave.order().text_of(axis.highest);
    return labels;
}

cell bit_rows::at(std::uint32_t row, std::uint32_t column) const {
    const bit_shade shade = map.shade(row, column);
    const character_style style = shade == bit_shade::unset       ? character_style::faint
                                  : shade == bit_shade::dont_care ? character_style::dont_care
                                                                  : character_style::value;
    return {style, glyphs.of(shade)};
}

row_labels bit_rows::labels() const {
    row_labels labels;
    for (const std::uint32_t bit : map.ticks(plot_rows / 2)) {
        labels[map.row_of(bit)] = fmt::format("{}", bit);
    }
    labels[plot_rows - 2].clear();
    labels.back() = fmt::format("{}", map.width() - 1);
    return labels;
}

} // namespace kvrimage::characters
