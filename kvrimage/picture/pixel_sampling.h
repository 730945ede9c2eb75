#pragma once

#include "kvrimage/generate/pixel_format.h"
#include "kvrimage/image/address_range.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/picture/pixel_picture.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace kvrimage {

/// The sampled pixels of a picture: the first pixel of each square of `step` columns and rows.
struct sampled_pixels {
    std::uint64_t first = 0;     ///< address of the first word
    std::uint32_t row_words = 0; ///< words in a row of the picture
    std::uint32_t columns = 0;   ///< columns shown
    std::uint32_t step = 1;
    std::vector<std::optional<color>> pixels; ///< row by row; nothing is a gap

    [[nodiscard]] std::uint32_t rows() const noexcept {
        return static_cast<std::uint32_t>(pixels.size() / columns);
    }
    /// Returns a pixel, or a gap below the last row.
    [[nodiscard]] std::optional<color> at(std::uint32_t row, std::uint32_t column) const {
        return row < rows() ? pixels[std::size_t{row} * columns + column] : std::nullopt;
    }
    [[nodiscard]] std::uint64_t first_of_last_row() const noexcept {
        return first + std::uint64_t{row_words} * step * (rows() - 1);
    }
};

/// The most columns and pixels to show, both at least 1.
struct pixel_room {
    std::uint32_t columns;
    std::uint64_t pixels;
};

/// @param range must lie in the memory
/// @throws std::invalid_argument if @p layout has no columns, or if its pixels have more bits than the words
[[nodiscard]] sampled_pixels sample_pixels(const memory_image& image, const address_range& range,
                                           const pixel_layout& layout, const pixel_room& room);

} // namespace kvrimage
