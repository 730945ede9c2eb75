#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/radix.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace kvrimage {

// Bulk conversion of words to arrays of unsigned integers.

/// Copies the words from address @p first on to @p out. Words that are not set become @p unset, truncated to
/// the integer type. The function works on whole rows of texts or bytes, much faster than a call for each
/// word.
/// @throws std::domain_error for a word with don't-care bits, after the words before it were copied, and for
/// words wider than the integers
/// @throws std::out_of_range if the addresses exceed the memory
///@{
KVRIMAGE_API void copy_numbers(const memory_image& image, std::uint64_t first, std::span<std::uint8_t> out,
                               std::uint64_t unset = 0);
KVRIMAGE_API void copy_numbers(const memory_image& image, std::uint64_t first, std::span<std::uint16_t> out,
                               std::uint64_t unset = 0);
KVRIMAGE_API void copy_numbers(const memory_image& image, std::uint64_t first, std::span<std::uint32_t> out,
                               std::uint64_t unset = 0);
KVRIMAGE_API void copy_numbers(const memory_image& image, std::uint64_t first, std::span<std::uint64_t> out,
                               std::uint64_t unset = 0);
///@}

/// Writes for each word of @p image, from the lowest address on, whether it is set.
/// @throws std::invalid_argument if the size of @p out differs from the depth
KVRIMAGE_API void copy_is_set(const memory_image& image, std::span<bool> out);

/// A view of an existing array of unsigned integers.
struct number_array {
    const void* numbers;                ///< the first number, at any alignment
    std::uint32_t bytes;                ///< bytes of a number: 1, 2, 4 or 8
    byte_order order;                   ///< byte order of the numbers
    std::uint64_t count;                ///< number of elements
    std::shared_ptr<const void> keeper; ///< owner: the numbers stay valid and unchanged while a copy of it
                                        ///< exists
};

/// Returns a view of all words of @p image without copying them, or nothing if the memory stores them in
/// another form. The words must have 1, 2, 4 or 8 bytes and must all be set. They must still be stored as
/// bytes, as read from a byte file or passed to image_of_bytes(). Surplus bits are 0.
[[nodiscard]] KVRIMAGE_API std::optional<number_array> numbers_in_place(const memory_image& image);

} // namespace kvrimage
