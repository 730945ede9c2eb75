#pragma once

#include "kvrimage/image/word_text.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrimage {

/// @param count 1 to 64
[[nodiscard]] inline std::uint64_t low_ones_of_limb(std::uint32_t count) noexcept {
    return ~std::uint64_t{0} >> (bits_per_limb - count);
}

/// A block of many bits that holds words side by side.
class bit_block {
public:
    /// Resizes the block to @p bits bits, all 0.
    void clear(std::uint64_t bits) {
        // One extra limb, so that accesses across the last limb need no test.
        limbs.assign(bits / bits_per_limb + 2, 0);
    }

    /// Stores the number with the hexadecimal @p digits at the bits from @p position on, which must be 0.
    /// Returns false if a digit is a don't-care digit; the bits are then unspecified.
    [[nodiscard]] bool put(std::uint64_t position, std::string_view digits) noexcept {
        while (digits.size() > most_small_digits) {
            const std::size_t above = digits.size() - most_small_digits;
            if (!put_limb(position, digits.substr(above))) {
                return false;
            }
            digits = digits.substr(0, above);
            position += bits_per_limb;
        }
        return put_limb(position, digits);
    }

    /// Writes the @p width bits from @p position on to @p place as ceil(width / 4) hexadecimal digits.
    void write_to(char* place, std::uint64_t position, std::uint32_t width) const noexcept {
        std::size_t left = (width + bits_per_hex_digit - 1) / bits_per_hex_digit;
        for (; left > most_small_digits; left -= most_small_digits, position += bits_per_limb) {
            kvr::write_hex_limb(place + left - most_small_digits, limb_at(position));
            width -= bits_per_limb;
        }
        kvr::write_hex_digits(place, left, limb_at(position) & low_ones_of_limb(width));
    }

private:
    [[nodiscard]] bool put_limb(std::uint64_t position, std::string_view digits) noexcept {
        std::uint64_t value = 0;
        if (!read_small_word(digits, value)) {
            return false;
        }
        const std::uint64_t shift = position % bits_per_limb;
        std::uint64_t* const limb = limbs.data() + position / bits_per_limb;
        limb[0] |= value << shift;
        limb[1] |= value >> 1U >> (bits_per_limb - 1 - shift); // avoids a shift by 64
        return true;
    }
    [[nodiscard]] std::uint64_t limb_at(std::uint64_t position) const noexcept {
        const std::uint64_t shift = position % bits_per_limb;
        const std::uint64_t* const limb = limbs.data() + position / bits_per_limb;
        return limb[0] >> shift | limb[1] << 1U << (bits_per_limb - 1 - shift);
    }

    std::vector<std::uint64_t> limbs; ///< least significant limb first
};

} // namespace kvrimage
