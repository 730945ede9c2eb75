#pragma once

#include "kvrimage/picture/column_grid.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kvrimage {

/// An address beside the axis, and the word that it is of.
struct address_label {
    std::uint64_t offset;
    std::string text; ///< hexadecimal
    double mark;      ///< the middle of the word
    double begin;     ///< where the text begins
    std::uint32_t line;

    friend bool operator==(const address_label&, const address_label&) = default;
};

/// Where words and labels are, in the unit of the drawing: characters or pixels.
struct axis_scale {
    std::function<double(std::uint64_t offset)> middle_of; ///< of a word
    double origin;                                         ///< where the room of the grid begins
    double unit;                                           ///< how much a unit of room is
    double text_width;                                     ///< of a label
    double gap;                                            ///< between two labels of a line, at least
    double left;                                           ///< before which no label begins
    double right;                                          ///< after which none ends
};

/// Labels the offsets of a picture with the addresses of its memory.
class address_axis {
public:
    /// @param base_address of offset 0
    address_axis(const column_grid& columns, std::uint64_t base_address)
        : grid(columns),
          base(base_address) {}

    /// The characters of a label; all have as many.
    [[nodiscard]] std::size_t label_size() const;
    /// The addresses of the first and the last word of each stretch, and between them multiples of a power of
    /// two as far as there is room, which no two labels share. A label is beside its word, or as near as the
    /// sides of the drawing let it, in a picture of several stretches those of its own. The last address of
    /// one of several stretches has a second line; so has that of a single one that is too close to the
    /// first.
    [[nodiscard]] std::vector<address_label> labels(const axis_scale& scale) const;

private:
    column_grid grid;
    std::uint64_t base;
};

} // namespace kvrimage
