#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/operations/checksum/crc.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kvrimage {

/// A sum modulo 2^width, or its two's complement.
struct additive_sum {
    std::uint32_t width = 32;     ///< width in bits, 1 to 64
    bool of_words = false;        ///< adds words instead of bytes
    bool is_complemented = false; ///< gives the two's complement, which balances the sum to 0
};

/// The algorithm of a checksum.
using checksum_kind = std::variant<crc_model, additive_sum>;

/// A checksum with a name.
struct named_checksum {
    std::string name;   ///< "crc-32", "sum-16", "word-balance-32"
    checksum_kind what; ///< the algorithm
};

/// Returns all named checksums: those of known_crcs(), sum-N and balance-N of bytes, and word-sum-N and
/// word-balance-N of words, for N = 8, 16, 32 and 64.
[[nodiscard]] KVRIMAGE_API const std::vector<named_checksum>& named_checksums();

/// Returns the checksum with @p name, or nothing if there is none.
[[nodiscard]] KVRIMAGE_API std::optional<checksum_kind> checksum_of_name(std::string_view name);

/// Which words a checksum covers, and their byte order.
struct checksum_options {
    std::vector<address_range> ranges = {}; ///< ranges in the order of computation; empty: the whole memory
    byte_order order = byte_order::little;  ///< byte order within a word
    /// Value of words that are not set. Without it they are skipped.
    std::optional<word> unset = std::nullopt;
};

/// Returns the checksum of the words of @p image in order of addresses. Each word contributes (width + 7) / 8
/// bytes, with surplus high bits 0. Takes time proportional to the bytes. A range, or a memory with `unset`,
/// is copied first unless the words are stored as bytes.
/// @return a word of the width of the checksum
/// @throws std::domain_error for a word with don't-care bits; what() names its address
/// @throws std::out_of_range if a range exceeds the memory
/// @throws std::invalid_argument if a range ends before it begins, if the width of `unset` differs from that
/// of the memory, or if the parameters of @p what are invalid
[[nodiscard]] KVRIMAGE_API word checksum_of(const memory_image& image, const checksum_kind& what,
                                            const checksum_options& options = {});

/// Calls @p take with the bytes that a checksum covers, in order, for algorithms that are not offered here. A
/// block has any size and is valid during the call only.
/// @throws std::domain_error, std::out_of_range, std::invalid_argument as checksum_of() does for the memory
/// and the options. Exceptions of @p take pass through.
KVRIMAGE_API void for_each_counted_block(const memory_image& image, const checksum_options& options,
                                         const std::function<void(std::string_view bytes)>& take);

} // namespace kvrimage
