#include "kvrimage/generate/pixel_format.h"

#include <algorithm>
#include <cstddef>

namespace kvrimage {

namespace {

/// Bits of each channel. Gray formats have all bits in `red`.
struct channel_bits {
    std::uint32_t red;
    std::uint32_t green;
    std::uint32_t blue;
};

/// Indexed by pixel_format.
constexpr std::array<channel_bits, pixel_format_names.size()> channels_of_formats = {
    {{3, 3, 2}, {4, 4, 4}, {5, 6, 5}, {8, 8, 8}, {8, 0, 0}, {4, 0, 0}, {1, 0, 0}}};

constexpr std::uint32_t full = 255;

channel_bits channels_of(pixel_format format) noexcept {
    return channels_of_formats[static_cast<std::size_t>(format)];
}

constexpr std::uint32_t highest(std::uint32_t bits) noexcept {
    return (1U << bits) - 1;
}

std::uint32_t reduced(std::uint32_t channel, std::uint32_t bits) noexcept {
    return (channel * highest(bits) + full / 2) / full;
}

/// Returns the channel of @p bits bits at bit @p shift of @p pixel, scaled to 8 bits.
std::uint8_t expanded(std::uint32_t pixel, std::uint32_t shift, std::uint32_t bits) noexcept {
    const std::uint32_t top = highest(bits);
    return static_cast<std::uint8_t>(((pixel >> shift & top) * full + top / 2) / top);
}

std::uint32_t brightness_of(const color& of) noexcept {
    constexpr std::uint32_t parts = 1000;
    return (299U * of.red + 587U * of.green + 114U * of.blue + parts / 2) / parts;
}

} // namespace

std::optional<pixel_format> pixel_format_of_name(std::string_view name) noexcept {
    const auto found = std::ranges::find(pixel_format_names, name);
    if (found == pixel_format_names.end()) {
        return std::nullopt;
    }
    return static_cast<pixel_format>(found - pixel_format_names.begin());
}

std::uint32_t bits_of(pixel_format format) noexcept {
    const channel_bits channels = channels_of(format);
    return channels.red + channels.green + channels.blue;
}

std::uint32_t pixel_of(const color& of, pixel_format format) noexcept {
    const channel_bits channels = channels_of(format);
    if (channels.green == 0) {
        return reduced(brightness_of(of), channels.red);
    }
    const std::uint32_t above_blue =
        reduced(of.red, channels.red) << channels.green | reduced(of.green, channels.green);
    return above_blue << channels.blue | reduced(of.blue, channels.blue);
}

color color_of(std::uint32_t pixel, pixel_format format) noexcept {
    const channel_bits channels = channels_of(format);
    if (channels.green == 0) {
        const std::uint8_t gray = expanded(pixel, 0, channels.red);
        return {gray, gray, gray};
    }
    return {expanded(pixel, channels.blue + channels.green, channels.red),
            expanded(pixel, channels.blue, channels.green), expanded(pixel, 0, channels.blue)};
}

} // namespace kvrimage
