#pragma once

#include "kvrimage/generate/pixel_format.h"

#include <array>
#include <cstdint>
#include <vector>

namespace kvrimage {

/// Error diffusion as described at picture_words(). It processes a picture pixel by pixel and spreads the
/// error of each over its neighbors.
class dithering {
public:
    /// @param is_wanted false leaves the pixels unchanged
    dithering(std::uint32_t columns_of_picture, bool is_wanted);

    /// Returns the color to show at the next pixel. @p wanted is the exact color.
    [[nodiscard]] color next(const color& wanted);
    /// Reports the color shown there.
    void show(const color& shown);

private:
    using channels = std::array<int, 3>;

    std::uint32_t columns;
    std::uint32_t column = 0;
    channels exact{}; ///< exact value of the current pixel, including the errors of its neighbors
    // In sixteenths, with one extra pixel before the first column and one after the last.
    std::vector<channels> of_row;
    std::vector<channels> of_row_below;
};

} // namespace kvrimage
