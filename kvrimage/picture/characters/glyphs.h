#pragma once

#include "kvrimage/picture/bit_map.h"
#include "kvrimage/picture/occupancy_strip.h"
#include "kvrimage/picture/picture.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace kvrimage::characters {

/// What a picture is drawn with. Each is one character, except the ellipsis.
struct glyph_set {
    std::array<std::string_view, 9> eighths; ///< of a cell filled from below: none to all
    std::string_view between;                ///< least and greatest value of a column
    std::array<std::string_view, 4> strip;   ///< by occupancy
    std::string_view run_begin;
    std::array<std::string_view, 7> shades; ///< by bit_shade
    std::string_view side;
    std::string_view side_tick;
    std::string_view corner;
    std::string_view floor;
    std::string_view floor_tick;
    std::string_view ellipsis;

    [[nodiscard]] std::string_view of(occupancy state) const noexcept {
        return strip[static_cast<std::size_t>(state)];
    }
    [[nodiscard]] std::string_view of(bit_shade shade) const noexcept {
        return shades[static_cast<std::size_t>(shade)];
    }
};

inline constexpr glyph_set block_glyphs = {{" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"},
                                           "▒",
                                           {"·", "▒", "█", "━"},
                                           "┣",
                                           {"·", " ", "░", "▒", "▓", "█", "x"},
                                           "│",
                                           "┤",
                                           "└",
                                           "─",
                                           "┬",
                                           "…"};

inline constexpr glyph_set ascii_glyphs = {{" ", ".", ".", ".", ":", ":", ":", "#", "#"},
                                           "|",
                                           {".", "+", "#", "="},
                                           "[",
                                           {".", " ", "-", "+", "*", "#", "x"},
                                           "|",
                                           "+",
                                           "+",
                                           "-",
                                           "+",
                                           "..."};

/// A glyph, and what it shows.
struct cell {
    character_style style;
    std::string_view glyph;
};

} // namespace kvrimage::characters
