#pragma once

#include "kvrimage/picture/picture_contents.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace kvrimage::characters {

/// Characters of the labels beside the rows of values in @p order.
[[nodiscard]] std::size_t label_size_for(const value_order& order);

/// The same beside the bits of a map, or a difference.
inline constexpr std::size_t usual_label_size = 8;

/// How fine a picture with these labels is.
/// @param screen_columns at least least_screen_columns
/// @param rows of a bit map, at most
[[nodiscard]] picture_size size_for(std::uint32_t screen_columns, std::size_t label_size, std::uint32_t rows);

/// @p contents, made for this screen, in lines of text.
/// @param rows of a waveform, or, at most, of a difference map; at least least_picture_rows
[[nodiscard]] std::string draw(const picture_contents& contents, std::uint32_t rows,
                               const character_screen& screen);

} // namespace kvrimage::characters
