#pragma once

#include "tools/kvrmem/plot/plot_picture.h"
#include "tools/kvrmem/surroundings/terminal.h"

#include <cstdint>
#include <string>

namespace kvrmem {

/// Where and how a picture is shown in characters.
struct character_screen {
    std::uint32_t columns; ///< of the whole picture, margins included; see least_screen_columns
    bool has_blocks;       ///< else ASCII alone
    const painter& paint;
};

/// The narrowest screen for any picture.
inline constexpr std::uint32_t least_screen_columns = 40;

/// Rows of the waveform or of the bit map.
inline constexpr std::uint32_t screen_rows = 16;

/// How many columns a picture of words of @p width bits has room for.
[[nodiscard]] picture_size size_for_screen(std::uint32_t screen_columns, std::uint32_t width);

/// @p picture, made for this screen, in lines of text.
[[nodiscard]] std::string draw_in_characters(const plot_picture& picture, const character_screen& screen);

} // namespace kvrmem
