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

/// Words of up to this many bits are drawn as bars of their values, which grow from zero; of wider ones, each
/// bit or, where there are too many, each byte or group of bytes is drawn in a map of bit positions over
/// addresses. Below both there is a strip that shows which addresses are set, where neighbours hold the same
/// word, and which words have don't-care bits.
inline constexpr std::uint32_t widest_waveform = 64;

/// What a picture shows.
struct picture_options {
    std::optional<address_range> range = std::nullopt; ///< the addresses to draw; nothing: all of the memory
    bool is_signed = false; ///< values are two's complement; without effect on a bit map
    /// What the picture is called: the part after the last "/", of any bytes. U+FFFD replaces bytes that are
    /// no UTF-8, control characters, and characters that change the direction of text. "": no name is shown.
    std::string name = {};
    std::string format_title = {}; ///< "MIF": precedes the number of words; "": nothing does. ASCII
    /// Of values that are two's complement, the bits right of the binary point; without effect on others.
    std::uint32_t fraction_bits = 0;
    /// How high a picture in characters is, at least least_picture_rows, and how many rows a bit map has at
    /// most, in SVG no more than most_svg_rows. Nothing: usual_rows and most_svg_rows.
    std::optional<std::uint32_t> rows = std::nullopt;
};

/// The fewest rows of a picture.
inline constexpr std::uint32_t least_picture_rows = 4;

/// The rows of a picture in characters, where nothing else is asked for.
inline constexpr std::uint32_t usual_rows = 16;

/// The most rows of a bit map in SVG.
inline constexpr std::uint32_t most_svg_rows = 128;

/// One of two memories in a picture of their differences.
struct compared_memory {
    std::string name = {};         ///< as picture_options::name
    std::string format_title = {}; ///< as picture_options::format_title
};

/// What a picture of the differences of two memories shows.
struct difference_options {
    /// The addresses to draw; nothing: from the lowest of both memories to the highest.
    std::optional<address_range> range = std::nullopt;
    compared_memory left = {};                        ///< A
    compared_memory right = {};                       ///< B
    std::optional<std::uint32_t> rows = std::nullopt; ///< as picture_options::rows; without effect on SVG
};

/// An SVG document in UTF-8, below 500 KB for any memory, in light or dark colours as its reader prefers
/// them. A column of pixels that stands for several words reaches from the least to the greatest of their
/// values. Values are labelled in hexadecimal, signed ones in decimal. Words that are not set leave a gap,
/// words with don't-care bits a mark. Where there is no room for each word, stretches in which no word is set
/// are left out, with a mark and the addresses on both sides of it, if they are four times as long as all
/// words that are set. The cost follows the number of runs; where they are more than 2^24, or have more than
/// 2^28 bits in a bit map, the picture is made of samples, and says so.
/// @throws std::out_of_range when the range of @p options is not in the memory, or ends before it begins
/// @throws std::invalid_argument when @p options has less rows than least_picture_rows
[[nodiscard]] KVRIMAGE_API std::string draw_svg(const memory_image& image,
                                                const picture_options& options = {});

/// What a piece of a picture in characters shows, so that the caller can colour it.
enum class character_style : std::uint8_t {
    plain,
    name,       ///< of the memory
    faint,      ///< axes, labels, notes, and what is not set
    value,      ///< of a waveform or of bits
    envelope,   ///< between the least and the greatest value of a column
    dont_care,  ///< bits
    set,        ///< words that differ
    same,       ///< a run of one word
    partly_set, ///< words of a column, some of which are not set
    changed,    ///< words that differ from those of another memory
    left_only,  ///< words that only the first memory has
    right_only, ///< words that only the second memory has
};

/// How a picture is shown in characters.
struct character_screen {
    std::uint32_t columns = 80; ///< of the whole picture, margins included; at least least_screen_columns
    bool has_blocks = false;    ///< block and line characters of Unicode, in UTF-8; else ASCII alone
    /// Returns a text in the colours of its style, for example between two escape sequences; nothing: no
    /// colours. It is called once for each stretch of one style in a line, and never for an empty one.
    std::function<std::string(character_style, std::string_view)> paint = {};
};

/// The narrowest screen for any picture.
inline constexpr std::uint32_t least_screen_columns = 40;

/// The same picture as lines of text, each with a line break and none with blanks at its end. No line has
/// more than `screen.columns` characters, except that of the notes and titles.
/// @throws std::out_of_range as draw_svg() does
/// @throws std::invalid_argument as draw_svg() does, and when @p screen has less than least_screen_columns
[[nodiscard]] KVRIMAGE_API std::string
draw_in_characters(const memory_image& image, const picture_options& options, const character_screen& screen);

/// The differences of two memories as for_each_difference() finds them, in SVG as draw_svg() makes it: which
/// part of the addresses of a column hold two words that differ, and which are set in A, @p left, or in B, @p
/// right, only, with the number of each. The cost follows the differences and what was set one by one.
/// @throws std::out_of_range when the range of @p options is not in the addresses of both memories together,
/// or ends before it begins
/// @throws std::invalid_argument as draw_svg() does
[[nodiscard]] KVRIMAGE_API std::string draw_difference_svg(const memory_image& left,
                                                           const memory_image& right,
                                                           const difference_options& options = {});

/// The same picture as lines of text, as draw_in_characters() makes them.
/// @throws std::out_of_range as draw_difference_svg() does
/// @throws std::invalid_argument as draw_in_characters() does
[[nodiscard]] KVRIMAGE_API std::string draw_difference_in_characters(const memory_image& left,
                                                                     const memory_image& right,
                                                                     const difference_options& options,
                                                                     const character_screen& screen);

} // namespace kvrimage
