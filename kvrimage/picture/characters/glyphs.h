#pragma once

#include "kvrimage/picture/bit_map.h"
#include "kvrimage/picture/occupancy_strip.h"
#include "kvrimage/picture/picture.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage::characters {

/// What a character of a picture means, in the order of the legend. No character has two meanings in one
/// picture.
enum class meaning : std::uint8_t {
    nothing,
    value,
    negative_value, ///< of a bar that hangs from zero
    between,        ///< the least and the greatest value of a column
    share,          ///< of the words of a column
    no_ones,
    some_ones,
    all_ones,
    set,
    run,
    partly_set,
    dont_care,
    unset,
    left_out, ///< at a break
};

inline constexpr std::size_t meanings = static_cast<std::size_t>(meaning::left_out) + 1;

/// What a picture is drawn with. Each is one character, except the ellipsis and the samples.
struct glyph_set {
    std::array<std::string_view, 9> eighths; ///< of a cell filled from below: none to all
    std::array<std::string_view, 9> hanging; ///< the same from above
    std::string_view between;                ///< least and greatest value of a column
    std::array<std::string_view, 5> strip;   ///< by occupancy
    std::string_view run_begin;
    std::array<std::string_view, 7> shades; ///< by bit_shade
    std::string_view left_out;
    std::string_view side;
    std::string_view side_tick;
    std::string_view corner;
    std::string_view floor;
    std::string_view floor_tick;
    std::string_view ellipsis;
    std::array<std::string_view, meanings> samples; ///< of the legend, by meaning

    [[nodiscard]] std::string_view of(occupancy state) const noexcept {
        return strip[static_cast<std::size_t>(state)];
    }
    [[nodiscard]] std::string_view of(bit_shade shade) const noexcept {
        return shades[static_cast<std::size_t>(shade)];
    }
};

inline constexpr glyph_set block_glyphs = {
    {" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"},
    {" ", "▔", "▔", "▔", "▀", "▀", "▀", "█", "█"},
    "▒",
    {"·", "□", "■", "═", "x"},
    "╞",
    {"·", " ", "░", "▒", "▓", "█", "x"},
    "┊",
    "│",
    "┤",
    "└",
    "─",
    "┬",
    "…",
    {"", "▁▄█", "▔▀█", "▒", "▁▄█", "' '", "░▒▓", "█", "■", "╞═", "□", "x", "·", "┊"}};

inline constexpr glyph_set ascii_glyphs = {
    {" ", ".", ".", ".", ":", ":", ":", "#", "#"},
    {" ", "'", "'", "'", "\"", "\"", "\"", "#", "#"},
    "%",
    {"~", "o", "@", "=", "x"},
    "[",
    {"~", " ", ":", "*", "%", "#", "x"},
    "/",
    "|",
    "+",
    "+",
    "-",
    "+",
    "...",
    {"", ".:#", "'\"#", "%", ".:#", "' '", ":*%", "#", "@", "[=", "o", "x", "~", "/"}};

/// A glyph, and what it shows.
struct cell {
    character_style style;
    std::string_view glyph;
    meaning means = meaning::nothing;
};

} // namespace kvrimage::characters
