#pragma once

#include "kvrimage/picture/address_axis.h"
#include "kvrimage/picture/bit_map.h"
#include "kvrimage/picture/occupancy_strip.h"
#include "kvrimage/picture/picture.h"
#include "kvrimage/picture/waveform.h"

#include <cstdint>
#include <string>
#include <variant>

namespace kvrimage {

/// How fine a picture can be.
struct picture_size {
    std::uint32_t most_columns;
    std::uint32_t most_bit_rows;      ///< of a bit map
    std::uint32_t most_strip_columns; ///< a part of most_columns
};

/// What is in a picture, in whatever way it is drawn.
struct picture_contents {
    std::string name;           ///< fit to be shown; may be ""
    std::string title;          ///< "MIF, 256 words of 16 bits"
    std::string vertical_title; ///< "value (unsigned, 16 bits)" or "bit position"
    std::string note;           ///< what a user needs to know to understand the picture; may be ""
    column_grid grid;
    address_axis addresses;
    occupancy_strip strip;
    std::variant<waveform, bit_map> words;
};

/// @throws std::out_of_range as draw_svg() does
[[nodiscard]] picture_contents contents_of(const memory_image& image, const picture_options& options,
                                           const picture_size& size);

} // namespace kvrimage
