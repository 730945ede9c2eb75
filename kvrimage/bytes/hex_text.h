#pragma once

#include <cstdint>
#include <string_view>

namespace kvrimage {

/// Writes the two upper-case hexadecimal digits of each of @p bytes to @p digits, which has room for them.
/// @return the sum of the bytes, modulo 2^32
unsigned encode_hex(std::string_view bytes, char* digits) noexcept;

/// What pairs of digits spell.
struct decoded_hex {
    bool are_digits; ///< no character is anything else
    unsigned sum;    ///< of the bytes, modulo 2^32
};

/// Writes the bytes that pairs of @p digits, of either case, spell, half as many, to @p bytes, which has room
/// for them. Bytes and sum have no meaning when a character is no hexadecimal digit. @p digits has an even
/// length.
[[nodiscard]] decoded_hex decode_and_sum(std::string_view digits, char* bytes) noexcept;

/// The same without the sum: false, with any bytes, when a character is no digit.
[[nodiscard]] inline bool decode_hex(std::string_view digits, char* bytes) noexcept {
    return decode_and_sum(digits, bytes).are_digits;
}

/// The sum of the numbers that @p bytes are, modulo 2^32.
[[nodiscard]] unsigned sum_of_bytes(std::string_view bytes) noexcept;

/// The value of hexadecimal @p digits, of either case, eight at most.
[[nodiscard]] std::uint32_t hex_value(std::string_view digits) noexcept;

} // namespace kvrimage
