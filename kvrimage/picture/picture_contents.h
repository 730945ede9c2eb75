#pragma once

#include "kvrimage/picture/address_axis.h"
#include "kvrimage/picture/bit_map.h"
#include "kvrimage/picture/difference_map.h"
#include "kvrimage/picture/islands.h"
#include "kvrimage/picture/occupancy_strip.h"
#include "kvrimage/picture/picture.h"
#include "kvrimage/picture/waveform.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kvrimage {

/// The resolution of a picture.
struct picture_size {
    std::uint32_t most_columns;
    std::uint32_t most_bit_rows;      ///< rows of a bit map
    std::uint32_t most_strip_columns; ///< a divisor of most_columns
    double columns_a_character;       ///< columns of the strip for a character of an address
    std::uint32_t break_columns;      ///< columns of the strip for a break
};

/// The contents of a picture, independent of how it is drawn.
struct picture_contents {
    std::string name;               ///< ready to be shown; may be ""
    std::string title;              ///< "MIF, 256 words of 16 bits, all set"
    std::string vertical_title;     ///< "value (unsigned, 16 bits)", "bit position" or "words that differ"
    std::vector<std::string> notes; ///< explanations for the user, one for each line
    column_grid grid;
    address_axis addresses;
    occupancy_strip strip;
    std::variant<waveform, bit_map, difference_map> words;
};

/// The columns of a picture and those of its strip, which show the same stretches.
struct picture_grids {
    column_grid columns;
    column_grid strip;
};

/// @param base_address the address of offset 0
[[nodiscard]] picture_grids grids_for(std::uint64_t first, std::uint64_t last, const set_words& set,
                                      std::uint64_t base_address, const picture_size& size);

/// Returns "2 breaks leave out 65536 unset words", or "" if there is no break.
[[nodiscard]] std::string note_on_breaks(const column_grid& grid);

/// Returns ", 12 set", ", all set" or ", none set", of @p words words.
[[nodiscard]] std::string set_note(std::uint64_t set, std::uint64_t words);

/// Returns the addresses to draw.
/// @throws std::out_of_range as draw_svg() does
[[nodiscard]] address_range drawn_addresses(const memory_image& image, const picture_options& options);

/// @throws std::out_of_range if @p range exceeds @p all, or ends before it begins
[[nodiscard]] address_range drawn_addresses(const address_range& all,
                                            const std::optional<address_range>& range);

/// Returns "MIF, 256 words of 16 bits". The addresses are included unless the number of words implies them.
[[nodiscard]] std::string title_of_picture(const memory_image& image, std::string_view format_title,
                                           const address_range& range);

/// @throws std::out_of_range as draw_svg() does
[[nodiscard]] picture_contents contents_of(const memory_image& image, const picture_options& options,
                                           const picture_size& size);

/// @throws std::out_of_range as draw_difference_svg() does
[[nodiscard]] picture_contents contents_of_difference(const memory_image& left, const memory_image& right,
                                                      const difference_options& options,
                                                      const picture_size& size);

} // namespace kvrimage
