#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/radix.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace kvrimage {

// The words of a memory as arrays of unsigned integers, many at once.

/// Copies the words from address @p first on to @p out; words that are not set become @p unset, cut to the
/// integers. The time is that of the memory's texts or bytes, not of a call for each word.
/// @throws std::domain_error for a word with don't-care bits, with the words before it copied, and for words
/// that are wider than the integers
/// @throws std::out_of_range beyond the memory
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

/// Sets each element of @p out, one for each word of @p image from the lowest address on, to whether the word
/// is set.
/// @throws std::invalid_argument when @p out has not as many elements as the memory has words
KVRIMAGE_API void copy_is_set(const memory_image& image, std::span<bool> out);

/// An array of unsigned integers that exists already.
struct number_array {
    const void* numbers;                ///< the first one, at any alignment
    std::uint32_t bytes;                ///< of each: 1, 2, 4 or 8
    byte_order order;                   ///< of these bytes
    std::uint64_t count;                ///< how many
    std::shared_ptr<const void> keeper; ///< as long as a copy of it exists the numbers stay as they are
};

/// All words of @p image where they stand; nothing when the memory holds them in another form. It does for
/// words of 1, 2, 4 or 8 bytes, whose surplus bits are 0, that are all set, as long as they are those that a
/// file of bytes had, or that image_of_bytes() was given.
[[nodiscard]] KVRIMAGE_API std::optional<number_array> numbers_in_place(const memory_image& image);

} // namespace kvrimage
