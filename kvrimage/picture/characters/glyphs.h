#pragma once

#include "kvrimage/picture/bit_map.h"
#include "kvrimage/picture/occupancy_strip.h"
#include "kvrimage/picture/picture.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage::characters {

/// The meanings of characters in a picture, in the order of the legend. Within a picture, each character has
/// one meaning.
enum class meaning : std::uint8_t {
    nothing,
    value,
    negative_value, ///< in a bar below zero
    between,        ///< between the least and the greatest value of a column
    share,          ///< share of the words of a column
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

/// The characters of pictures. Each is one character, except the ellipsis and the samples.
struct glyph_set {
    std::array<std::string_view, 9> eighths; ///< a cell filled from below, from 0 to 8 eighths
    std::array<std::string_view, 9> hanging; ///< a cell filled from above
    std::string_view between;                ///< between the least and the greatest value of a column
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
    std::array<std::string_view, meanings> samples; ///< samples in the legend, by meaning

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

/// A glyph with its style and meaning.
struct cell {
    character_style style;
    std::string_view glyph;
    meaning means = meaning::nothing;
};

} // namespace kvrimage::characters
