#pragma once

#include "kvr/numeric/character_block.h"
#include "kvrimage/image/byte_texts.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/operations/word_mapping.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace kvrimage {

inline constexpr std::size_t bytes_per_limb = bits_per_limb / bits_per_byte;

/// Reads words of up to 16 bytes as numbers.
class byte_number_reader {
public:
    /// The most bytes read at once. They fit the cache.
    static constexpr std::size_t most_at_once = std::size_t{1} << 15U;

    /// @param words words of at most widest_number_word bits
    explicit byte_number_reader(const byte_words& words)
        : size(words.bytes_per_word()),
          is_big(words.order() == byte_order::big),
          low_mask(limb_mask(size)),
          high_mask(size > bytes_per_limb ? limb_mask(size - bytes_per_limb) : 0) {}

    /// Calls @p take with the number of each word. @p words has at most most_at_once bytes.
    template <class Take>
    void read(std::string_view words, Take&& take) {
        words.copy(part.data(), words.size());
        if (is_big) {
            reverse_words(std::span(part).first(words.size()), size);
        }
        const char* const end = part.data() + words.size();
        for (const char* place = part.data(); place != end; place += size) {
            take(wide_number{kvr::load_eight(place) & low_mask,
                             kvr::load_eight(place + bytes_per_limb) & high_mask});
        }
    }

private:
    /// Returns the mask of the lowest @p bytes bytes of a limb, at most the whole limb.
    static std::uint64_t limb_mask(std::size_t bytes) noexcept {
        return bytes >= bytes_per_limb ? ~std::uint64_t{0} : (std::uint64_t{1} << bytes * bits_per_byte) - 1;
    }

    std::size_t size; ///< bytes of a word
    bool is_big;
    std::uint64_t low_mask;
    std::uint64_t high_mask;
    std::array<char, most_at_once + 2 * bytes_per_limb> part{}; ///< bytes read beyond the last word are
                                                                ///< masked out
};

} // namespace kvrimage
