#pragma once

#include "kvrimage/formats/format.h"
#include "kvrimage/image/address_range.h"
#include "kvrimage/image/bit_field.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kvrimage {

/// New bits for a field of words.
struct field_change {
    address_range addresses;
    bit_field field;
    std::vector<word> values; ///< in order, from the first again when they are used up
};

/// What a field_change comes to.
struct field_assignments {
    std::vector<assignment> assignments; ///< whole words, in the order of their addresses
    std::optional<std::uint64_t>
        not_set;               ///< the first address that has no word; there are no assignments then
    bool are_too_many = false; ///< words that do not repeat; there are no assignments then
};

/// Words of assignments that do not repeat, at most.
inline constexpr std::uint64_t most_words_with_fields = std::uint64_t{1} << 24U;

/// The words of @p image with the new bits. Where the words of a stretch repeat, so do those of its
/// assignment: the cost follows what the image holds, not the number of addresses.
/// @throws std::out_of_range when the addresses are beyond the memory
/// @throws std::invalid_argument when there are no values, they have another width than the field, or it does
/// not lie in the words
[[nodiscard]] field_assignments assignments_of(const memory_image& image, const field_change& change);

} // namespace kvrimage
