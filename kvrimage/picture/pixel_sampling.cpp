#include "kvrimage/picture/pixel_sampling.h"

#include <fmt/format.h>

#include <stdexcept>

namespace kvrimage {

namespace {

constexpr std::uint64_t quotient_up(std::uint64_t dividend, std::uint64_t divisor) noexcept {
    return dividend / divisor + (dividend % divisor != 0 ? 1 : 0);
}

std::optional<color> color_at(const memory_image& image, std::uint64_t address, pixel_format format) {
    const std::optional<word> value = image[address];
    const std::optional<std::uint64_t> pixel = value ? value->to_unsigned() : std::nullopt;
    if (!pixel) {
        return std::nullopt;
    }
    return color_of(static_cast<std::uint32_t>(*pixel), format);
}

} // namespace

sampled_pixels sample_pixels(const memory_image& image, const address_range& range,
                             const pixel_layout& layout, const pixel_room& room) {
    if (layout.columns == 0 || bits_of(layout.format) > image.width()) {
        throw std::invalid_argument(fmt::format("rows of {} pixels of {} bits, in words of {}",
                                                layout.columns, bits_of(layout.format), image.width()));
    }
    const std::uint64_t words = range.last - range.first + 1;
    const std::uint64_t all_rows = quotient_up(words, layout.columns);
    std::uint32_t step = 1;
    while (quotient_up(layout.columns, step) > room.columns ||
           quotient_up(layout.columns, step) * quotient_up(all_rows, step) > room.pixels) {
        ++step;
    }
    sampled_pixels shown{
        range.first, layout.columns, static_cast<std::uint32_t>(quotient_up(layout.columns, step)), step, {}};
    for (std::uint64_t row = 0; row < all_rows; row += step) {
        for (std::uint64_t column = 0; column < layout.columns; column += step) {
            const std::uint64_t offset = row * layout.columns + column;
            shown.pixels.push_back(offset < words ? color_at(image, range.first + offset, layout.format)
                                                  : std::nullopt);
        }
    }
    return shown;
}

} // namespace kvrimage
