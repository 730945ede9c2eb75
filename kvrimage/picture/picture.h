#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/address_range.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

/// The widest words, in bits, whose values are drawn as bars that grow from zero. For wider words, a map
/// shows the bits over the addresses, one row for each bit, or for a byte or a group of bytes if there are
/// too many. Below both, a strip shows which addresses are set, which adjacent words are equal, and which
/// words have don't-care bits.
inline constexpr std::uint32_t widest_waveform = 64;

/// What a picture shows.
struct picture_options {
    std::optional<address_range> range = std::nullopt; ///< the addresses to draw; without it the whole memory
    bool is_signed = false; ///< values are two's complement; no effect on a bit map
    /// Name in the picture: the part after the last "/", of any bytes. U+FFFD replaces invalid UTF-8, control
    /// characters, and characters that change the direction of text. "": no name.
    std::string name = {};
    std::string format_title = {}; ///< "MIF": shown before the number of words; may be "". ASCII only
    /// Bits after the binary point of two's complement values; no effect on others.
    std::uint32_t fraction_bits = 0;
    /// Height of a picture in characters, at least least_picture_rows, and the most rows of a bit map (in SVG
    /// at most most_svg_rows). The default is usual_rows for characters and most_svg_rows for SVG.
    std::optional<std::uint32_t> rows = std::nullopt;
};

/// The fewest rows of a picture.
inline constexpr std::uint32_t least_picture_rows = 4;

/// The default rows of a picture in characters.
inline constexpr std::uint32_t usual_rows = 16;

/// The most rows of a bit map in SVG.
inline constexpr std::uint32_t most_svg_rows = 128;

/// One of two memories in a picture of their differences.
struct compared_memory {
    std::string name = {};         ///< like picture_options::name
    std::string format_title = {}; ///< like picture_options::format_title
};

/// What a picture of the differences of two memories shows.
struct difference_options {
    /// The addresses to draw; without it from the lowest to the highest address of both memories.
    std::optional<address_range> range = std::nullopt;
    compared_memory left = {};                        ///< A
    compared_memory right = {};                       ///< B
    std::optional<std::uint32_t> rows = std::nullopt; ///< like picture_options::rows; no effect on SVG
};

/// Draws @p image as an SVG document in UTF-8, below 500 KB for any memory. Its colors follow the light or
/// dark preference of the reader. A pixel column that covers several words extends from their least to their
/// greatest value. Values are labeled in hexadecimal, signed ones in decimal. Words that are not set leave a
/// gap; words with don't-care bits are marked. If not every word has a column of its own, stretches without
/// words are left out if they are four times as long as all words that are set. A mark and the addresses on
/// both sides show each break. Takes time proportional to the number of runs. Above 2^24 runs, or 2^28 bits
/// of runs in a bit map, the picture uses samples and says so.
/// @throws std::out_of_range if the range of @p options exceeds the memory, or ends before it begins
/// @throws std::invalid_argument if @p options has fewer rows than least_picture_rows
[[nodiscard]] KVRIMAGE_API std::string draw_svg(const memory_image& image,
                                                const picture_options& options = {});

/// What a piece of a picture in characters shows, for the caller to color.
enum class character_style : std::uint8_t {
    plain,
    name,       ///< the name of the memory
    faint,      ///< axes, labels, notes, and what is not set
    value,      ///< values of a waveform, bits
    envelope,   ///< the range between the least and the greatest value of a column
    dont_care,  ///< don't-care bits
    set,        ///< words that differ from each other
    same,       ///< a run of one word
    partly_set, ///< words of a column in which some are not set
    changed,    ///< words that differ from those of the other memory
    left_only,  ///< words that only the first memory has
    right_only, ///< words that only the second memory has
};

/// The screen for a picture in characters.
struct character_screen {
    std::uint32_t columns = 80; ///< width of the whole picture with its margins, at least
                                ///< least_screen_columns
    bool has_blocks = false;    ///< uses block and line characters of Unicode, in UTF-8; otherwise ASCII
    /// Returns a text in the colors of its style, for example between two escape sequences; empty: no colors.
    /// It is called once for each stretch of one style in a line, never with an empty text.
    std::function<std::string(character_style, std::string_view)> paint = {};
};

/// The narrowest screen.
inline constexpr std::uint32_t least_screen_columns = 40;

/// Draws the same picture as lines of text. Each line ends with a line break and has no trailing blanks. Only
/// titles and notes may have more than `screen.columns` characters.
/// @throws std::out_of_range as draw_svg() does
/// @throws std::invalid_argument as draw_svg() does, and if @p screen has fewer columns than
/// least_screen_columns
[[nodiscard]] KVRIMAGE_API std::string
draw_in_characters(const memory_image& image, const picture_options& options, const character_screen& screen);

/// Draws the differences of two memories, as for_each_difference() reports them, as an SVG document like that
/// of draw_svg(). For each column it shows the share of addresses at which two words differ, or only A
/// (@p left) or only B (@p right) has a word, with the total of each. Takes time proportional to the
/// differences and the words that were set one by one.
/// @throws std::out_of_range if the range of @p options exceeds the addresses of both memories, or ends
/// before it begins
/// @throws std::invalid_argument as draw_svg() does
[[nodiscard]] KVRIMAGE_API std::string draw_difference_svg(const memory_image& left,
                                                           const memory_image& right,
                                                           const difference_options& options = {});

/// Draws the same picture as lines of text, like draw_in_characters().
/// @throws std::out_of_range as draw_difference_svg() does
/// @throws std::invalid_argument as draw_in_characters() does
[[nodiscard]] KVRIMAGE_API std::string draw_difference_in_characters(const memory_image& left,
                                                                     const memory_image& right,
                                                                     const difference_options& options,
                                                                     const character_screen& screen);

} // namespace kvrimage
