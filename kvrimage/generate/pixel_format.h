#pragma once

#include "kvrimage/export.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// A color with 8 bits in each channel.
struct color {
    std::uint8_t red = 0;   ///< 0 to 255
    std::uint8_t green = 0; ///< 0 to 255
    std::uint8_t blue = 0;  ///< 0 to 255

    /// Compares all channels.
    friend bool operator==(const color&, const color&) = default;
};

/// How a pixel is stored in a word. Red has the highest bits, blue the lowest.
enum class pixel_format : std::uint8_t {
    rgb332, ///< 3, 3 and 2 bits
    rgb444, ///< 4 bits each
    rgb565, ///< 5, 6 and 5 bits
    rgb888, ///< 8 bits each
    gray8,  ///< brightness in 8 bits
    gray4,  ///< brightness in 4 bits
    mono    ///< 1: bright, 0: dark
};

/// Names of the formats, indexed by pixel_format.
inline constexpr std::array<std::string_view, 7> pixel_format_names = {"rgb332", "rgb444", "rgb565", "rgb888",
                                                                       "gray8",  "gray4",  "mono"};

/// Returns the format with @p name, or nothing if there is none.
[[nodiscard]] KVRIMAGE_API std::optional<pixel_format> pixel_format_of_name(std::string_view name) noexcept;

/// Returns the bits of a pixel.
[[nodiscard]] KVRIMAGE_API std::uint32_t bits_of(pixel_format format) noexcept;

/// Returns the pixel nearest to a color. A channel of n bits is v * (2^n - 1) / 255, rounded. Brightness is
/// (299 * red + 587 * green + 114 * blue) / 1000, rounded.
[[nodiscard]] KVRIMAGE_API std::uint32_t pixel_of(const color& of, pixel_format format) noexcept;

/// Returns the color of @p pixel; bits above those of the format are ignored. A channel of n bits becomes v *
/// 255 / (2^n - 1), rounded.
[[nodiscard]] KVRIMAGE_API color color_of(std::uint32_t pixel, pixel_format format) noexcept;

} // namespace kvrimage
