#pragma once

#include "kvrimage/picture/bit_map.h"
#include "kvrimage/picture/characters/glyphs.h"
#include "kvrimage/picture/difference_map.h"
#include "kvrimage/picture/waveform.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kvrimage::characters {

// Rows count from the bottom.

/// The label of each row; "" if it has none.
using row_labels = std::vector<std::string>;

/// The rows of a waveform. Heights are in eighths of a row. Bars grow from the row border nearest to zero;
/// each value has at least one eighth.
class waveform_rows {
public:
    /// @param count at least least_picture_rows
    waveform_rows(const waveform& drawn, const glyph_set& characters, std::uint32_t count);
    [[nodiscard]] std::uint32_t rows() const noexcept { return row_count; }
    [[nodiscard]] cell at(std::uint32_t row, std::uint32_t column) const;
    [[nodiscard]] row_labels labels() const;

private:
    static constexpr std::uint32_t eighths_a_row = 8;

    [[nodiscard]] bool hangs(std::uint64_t key) const noexcept;
    [[nodiscard]] std::uint32_t end_of_bar(std::uint64_t key) const;
    [[nodiscard]] std::uint32_t row_of(std::uint64_t key) const;
    [[nodiscard]] cell standing(std::uint32_t row, const value_bounds& bounds) const;
    [[nodiscard]] cell hanging(std::uint32_t row, const value_bounds& bounds) const;

    const waveform& wave;
    const glyph_set& glyphs;
    value_axis axis;
    std::uint64_t base_key; ///< the key from which bars grow
    std::uint32_t row_count;
    std::uint32_t base; ///< the row above the border from which bars grow
};

/// The rows of a bit map.
class bit_rows {
public:
    bit_rows(const bit_map& drawn, const glyph_set& characters) : map(drawn), glyphs(characters) {}
    [[nodiscard]] std::uint32_t rows() const noexcept { return map.rows(); }
    [[nodiscard]] cell at(std::uint32_t row, std::uint32_t column) const;
    [[nodiscard]] row_labels labels() const;

private:
    const bit_map& map;
    const glyph_set& glyphs;
};

/// The rows of a difference map: bars for each kind of difference, one below the other, separated by a row.
class difference_rows {
public:
    /// @param most at least least_picture_rows
    difference_rows(const difference_map& drawn, const glyph_set& characters, std::uint32_t most);
    [[nodiscard]] std::uint32_t rows() const noexcept;
    [[nodiscard]] cell at(std::uint32_t row, std::uint32_t column) const;
    [[nodiscard]] row_labels labels() const;

private:
    const difference_map& map;
    const glyph_set& glyphs;
    std::uint32_t lane_rows;
};

} // namespace kvrimage::characters
