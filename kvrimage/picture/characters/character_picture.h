#pragma once

#include "kvrimage/picture/picture_contents.h"

#include <cstdint>
#include <string>

namespace kvrimage::characters {

/// How fine a picture of words of @p width bits is.
/// @param screen_columns at least least_screen_columns
[[nodiscard]] picture_size size_for(std::uint32_t screen_columns, std::uint32_t width);

/// @p contents, of words of @p width bits and made for this screen, in lines of text.
[[nodiscard]] std::string draw(const picture_contents& contents, std::uint32_t width,
                               const character_screen& screen);

} // namespace kvrimage::characters
