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

/// Words of up to this many bits are drawn as a waveform of their values; of wider ones, each bit is drawn in
/// a map of bit positions over addresses. Below both there is a strip that shows which addresses are set, and
/// where neighbours hold the same word.
inline constexpr std::uint32_t widest_waveform = 64;

/// What a picture shows.
struct picture_options {
    std::optional<address_range> range = std::nullopt; ///< the addresses to draw; nothing: all of the memory
    bool is_signed = false; ///< values are two's complement; without effect on a bit map
    /// What the picture is called: the part after the last "/", of any bytes. U+FFFD replaces bytes that are
    /// no UTF-8, control characters, and characters that change the direction of text. "": no name is shown.
    std::string name = {};
    std::string format_title = {}; ///< "MIF": precedes the number of words; "": nothing does. ASCII
};

/// An SVG document in UTF-8, below 500 KB for any memory. A column of pixels that stands for several words
/// reaches from the least to the greatest of their values. Words that are not set leave a gap; so do, in a
/// waveform, words with don't-care bits. The cost follows the number of runs; where they are more than 2^24,
/// or have more than 2^28 bits in a bit map, the picture is made of samples, and says so.
/// @throws std::out_of_range when the range of @p options is not in the memory, or ends before it begins
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
/// @throws std::invalid_argument when @p screen has less than least_screen_columns
[[nodiscard]] KVRIMAGE_API std::string
draw_in_characters(const memory_image& image, const picture_options& options, const character_screen& screen);

} // namespace kvrimage
