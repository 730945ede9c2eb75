#pragma once

#include "kvrimage/image/word_text.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrimage {

/// A number of many bits, of which words are parts.
class bit_block {
public:
    /// Makes it @p bits long, all of them 0.
    void clear(std::uint64_t bits) {
        // What is read or written across the last limb needs no test.
        limbs.assign(bits / bits_per_limb + 2, 0);
    }

    /// Sets the bits from @p position on, which are 0, to the number of the hexadecimal @p digits; false,
    /// with any bits, when one of them is a don't-care digit.
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

    /// Writes the @p width bits from @p position on as hexadecimal digits to @p place, all that the width
    /// needs.
    void write_to(char* place, std::uint64_t position, std::uint32_t width) const noexcept {
        std::size_t left = (width + bits_per_hex_digit - 1) / bits_per_hex_digit;
        for (; left > most_small_digits; left -= most_small_digits, position += bits_per_limb) {
            kvr::write_hex_limb(place + left - most_small_digits, limb_at(position));
            width -= bits_per_limb;
        }
        kvr::write_hex_digits(place, left, limb_at(position) & low_ones(width));
    }

private:
    /// @param count 1 to 64
    [[nodiscard]] static std::uint64_t low_ones(std::uint32_t count) noexcept {
        return ~std::uint64_t{0} >> (bits_per_limb - count);
    }
    [[nodiscard]] bool put_limb(std::uint64_t position, std::string_view digits) noexcept {
        std::uint64_t value = 0;
        if (!read_small_word(digits, value)) {
            return false;
        }
        const std::uint64_t shift = position % bits_per_limb;
        std::uint64_t* const limb = limbs.data() + position / bits_per_limb;
        limb[0] |= value << shift;
        limb[1] |= value >> 1U >> (bits_per_limb - 1 - shift); // no shift by 64
        return true;
    }
    [[nodiscard]] std::uint64_t limb_at(std::uint64_t position) const noexcept {
        const std::uint64_t shift = position % bits_per_limb;
        const std::uint64_t* const limb = limbs.data() + position / bits_per_limb;
        return limb[0] >> shift | limb[1] << 1U << (bits_per_limb - 1 - shift);
    }

    std::vector<std::uint64_t> limbs; ///< the least significant one first
};

} // namespace kvrimage
