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

/// A sum modulo 2^width, or what has to be added to it to make it 0.
struct additive_sum {
    std::uint32_t width = 32;     ///< bits, 1 to 64
    bool of_words = false;        ///< of words, else of their bytes
    bool is_complemented = false; ///< the two's complement of the sum
};

/// A way to make a few bits of all bits of a memory.
using checksum_kind = std::variant<crc_model, additive_sum>;

/// A checksum that has a name.
struct named_checksum {
    std::string name;   ///< "crc-32", "sum-16", "word-balance-32"
    checksum_kind what; ///< how it is computed
};

/// All of them: those of known_crcs(); sum-N and balance-N of bytes, word-sum-N and word-balance-N of words,
/// each for N = 8, 16, 32 and 64.
[[nodiscard]] KVRIMAGE_API const std::vector<named_checksum>& named_checksums();

/// The checksum called @p name; nothing when there is none.
[[nodiscard]] KVRIMAGE_API std::optional<checksum_kind> checksum_of_name(std::string_view name);

/// Which words of a memory a checksum takes in, and as which bytes.
struct checksum_options {
    std::vector<address_range> ranges = {}; ///< one after the other; none: all of the memory
    byte_order order = byte_order::little;  ///< of the bytes of a word
    /// Stands for words that are not set; nothing: they are left out.
    std::optional<word> unset = std::nullopt;
};

/// The checksum of the words of @p image in order of their addresses, each in (width + 7) / 8 bytes, the
/// surplus high bits 0. It takes time in proportion to the bytes; a part of a memory, or one whose unset
/// words count, is copied first unless it is held as bytes.
/// @return a word as wide as the checksum
/// @throws std::domain_error for a word with don't-care bits; what() names its address
/// @throws std::out_of_range for a range beyond the memory
/// @throws std::invalid_argument for a range that ends before it begins, where `unset` has another width than
/// the memory, and for parameters of @p what that do not fit
[[nodiscard]] KVRIMAGE_API word checksum_of(const memory_image& image, const checksum_kind& what,
                                            const checksum_options& options = {});

/// Calls @p take with the bytes that a checksum takes in, in order, for a check that is not among the ones
/// here. A block may be of any size, and is valid during the call.
/// @throws what checksum_of() throws for the memory and the options, and what @p take does
KVRIMAGE_API void for_each_counted_block(const memory_image& image, const checksum_options& options,
                                         const std::function<void(std::string_view bytes)>& take);

} // namespace kvrimage
