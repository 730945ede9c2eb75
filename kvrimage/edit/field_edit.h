#pragma once

#include "kvrimage/exchange/assignment.h"
#include "kvrimage/image/address_range.h"
#include "kvrimage/image/bit_field.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kvrimage {

/// New values for a bit field of words.
struct field_change {
    address_range addresses;
    bit_field field;
    std::vector<word> values; ///< in order, repeated as often as needed
};

/// The result of a field_change.
struct field_assignments {
    std::vector<assignment> assignments; ///< whole words, in order of addresses
    std::optional<std::uint64_t>
        not_set;               ///< the first address that has no word; there are no assignments then
    bool are_too_many = false; ///< too many words without repetition; then there are no assignments
};

/// The most words without repetition in all assignments.
inline constexpr std::uint64_t most_words_with_fields = std::uint64_t{1} << 24U;

/// Returns assignments that set the field in the words of @p image. If the words of a stretch repeat, so do
/// those of its assignment. So the time depends on the stored content, not on the number of addresses.
/// @throws std::out_of_range if the addresses exceed the memory
/// @throws std::invalid_argument if there are no values, if their width differs from that of the field, or if
/// the field exceeds the words
[[nodiscard]] field_assignments assignments_of(const memory_image& image, const field_change& change);

} // namespace kvrimage
