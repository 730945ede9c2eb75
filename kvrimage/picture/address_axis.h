#pragma once

#include "kvrimage/picture/column_grid.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kvrimage {

/// An address on the axis, with the word it belongs to.
struct address_label {
    std::uint64_t offset;
    std::string text; ///< hexadecimal
    double mark;      ///< the middle of the word
    double begin;     ///< the start of the text
    std::uint32_t line;

    friend bool operator==(const address_label&, const address_label&) = default;
};

/// Positions of words and labels, in units of the drawing: characters or pixels.
struct axis_scale {
    std::function<double(std::uint64_t offset)> middle_of; ///< the middle of a word
    double origin;                                         ///< the start of the grid
    double unit;                                           ///< size of a unit of room
    double text_width;                                     ///< width of a label
    double gap;                                            ///< the smallest gap between two labels on a line
    double left;                                           ///< the left limit of labels
    double right;                                          ///< the right limit of labels
};

/// Labels the offsets of a picture with the addresses of its memory.
class address_axis {
public:
    /// @param base_address the address of offset 0
    address_axis(const column_grid& columns, std::uint64_t base_address)
        : grid(columns),
          base(base_address) {}

    /// Returns the number of characters of a label, which is the same for all.
    [[nodiscard]] std::size_t label_size() const;
    /// Returns labels for the first and the last word of each stretch and, if there is room, for multiples of
    /// a power of two between them. Labels never overlap. A label is centered on its word, or as close as the
    /// sides of the drawing, or of its stretch if there are several, permit. The last address of one of
    /// several stretches goes to a second line. So does that of a single stretch if it is too close to the
    /// first address.
    [[nodiscard]] std::vector<address_label> labels(const axis_scale& scale) const;

private:
    column_grid grid;
    std::uint64_t base;
};

} // namespace kvrimage
