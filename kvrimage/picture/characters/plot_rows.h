#pragma once

#include "kvrimage/picture/bit_map.h"
#include "kvrimage/picture/characters/glyphs.h"
#include "kvrimage/picture/waveform.h"

#include <array>
#include <cstdint>
#include <string>

namespace kvrimage::characters {

/// Rows of a waveform or of a bit map; counted from below.
inline constexpr std::uint32_t plot_rows = 16;

/// The text of each row's label, "" for a row without one.
using row_labels = std::array<std::string, plot_rows>;

/// The rows of a waveform. Heights are eighths of a row, 1 for the lowest value.
class waveform_rows {
public:
    waveform_rows(const waveform& drawn, const glyph_set& characters);
    [[nodiscard]] cell at(std::uint32_t row, std::uint32_t column) const;
    [[nodiscard]] row_labels labels() const;

private:
    static constexpr std::uint32_t eighths_a_row = 8;

    [[nodiscard]] std::uint32_t height_of(std::uint64_t key) const;

    const waveform& wave;
    const glyph_set& glyphs;
    value_axis axis;
};

/// The rows of a bit map.
class bit_rows {
public:
    bit_rows(const bit_map& drawn, const glyph_set& characters) : map(drawn), glyphs(characters) {}
    [[nodiscard]] cell at(std::uint32_t row, std::uint32_t column) const;
    [[nodiscard]] row_labels labels() const;

private:
    const bit_map& map;
    const glyph_set& glyphs;
};

} // namespace kvrimage::characters
