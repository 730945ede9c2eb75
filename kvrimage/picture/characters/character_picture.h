#pragma once

#include "kvrimage/picture/picture_contents.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace kvrimage::characters {

/// Returns the width of the labels of values in @p order, in characters.
[[nodiscard]] std::size_t label_size_for(const value_order& order);

/// The width of the labels of a bit map or of differences, in characters.
inline constexpr std::size_t usual_label_size = 8;

/// Returns the resolution of a picture with these labels.
/// @param screen_columns at least least_screen_columns
/// @param rows the most rows of a bit map
[[nodiscard]] picture_size size_for(std::uint32_t screen_columns, std::size_t label_size, std::uint32_t rows);

/// Draws @p contents, made for this screen, as lines of text.
/// @param rows rows of a waveform, or the most rows of a difference map; at least least_picture_rows
[[nodiscard]] std::string draw(const picture_contents& contents, std::uint32_t rows,
                               const character_screen& screen);

} // namespace kvrimage::characters
