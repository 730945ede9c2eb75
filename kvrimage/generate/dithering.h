#pragma once

#include "kvrimage/generate/pixel_format.h"

#include <array>
#include <cstdint>
#include <vector>

namespace kvrimage {

/// Goes over a picture pixel by pixel and hands on what each could not show to its neighbours, as
/// picture_words() says.
class dithering {
public:
    /// @param is_wanted false: pixels stay as they are
    dithering(std::uint32_t columns_of_picture, bool is_wanted);

    /// The colour to show at the next pixel, which wants to be @p wanted.
    [[nodiscard]] color next(const color& wanted);
    /// Says what is shown there.
    void show(const color& shown);

private:
    using channels = std::array<int, 3>;

    std::uint32_t columns;
    std::uint32_t column = 0;
    channels exact{}; ///< of the pixel at hand, with what its neighbours have handed on
    // With a pixel before the first and one after the last column, in sixteenths.
    std::vector<channels> of_row;
    std::vector<channels> of_row_below;
};

} // namespace kvrimage
