#pragma once

#include "kvrimage/export.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// A colour in 8 bits a channel.
struct color {
    std::uint8_t red = 0;   ///< 0 to 255
    std::uint8_t green = 0; ///< as `red`
    std::uint8_t blue = 0;  ///< as `red`

    /// The same channels.
    friend bool operator==(const color&, const color&) = default;
};

/// How a colour is held in a word. Red is above green, and green above blue.
enum class pixel_format : std::uint8_t {
    rgb332, ///< 3, 3 and 2 bits
    rgb444, ///< 4 bits each
    rgb565, ///< 5, 6 and 5 bits
    rgb888, ///< 8 bits each
    gray8,  ///< brightness in 8 bits
    gray4,  ///< brightness in 4 bits
    mono    ///< 1: bright, 0: dark
};

/// Their names, in the order of pixel_format: "rgb332".
inline constexpr std::array<std::string_view, 7> pixel_format_names = {"rgb332", "rgb444", "rgb565", "rgb888",
                                                                       "gray8",  "gray4",  "mono"};

/// The format called @p name; nothing when there is none.
[[nodiscard]] KVRIMAGE_API std::optional<pixel_format> pixel_format_of_name(std::string_view name) noexcept;

/// Bits of a pixel.
[[nodiscard]] KVRIMAGE_API std::uint32_t bits_of(pixel_format format) noexcept;

/// The nearest pixel: each channel of n bits is v * (2^n - 1) / 255, rounded. The brightness of a colour is
/// (299 * red + 587 * green + 114 * blue) / 1000, rounded.
[[nodiscard]] KVRIMAGE_API std::uint32_t pixel_of(const color& of, pixel_format format) noexcept;

/// The colour of @p pixel, of which the lowest bits count: each channel of n bits is v * 255 / (2^n - 1),
/// rounded.
[[nodiscard]] KVRIMAGE_API color color_of(std::uint32_t pixel, pixel_format format) noexcept;

} // namespace kvrimage
