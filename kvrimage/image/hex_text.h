#pragma once

#include <cstdint>
#include <string_view>

namespace kvrimage {

/// Writes the two upper-case hexadecimal digits of each byte to @p digits, which must have room for them.
/// @return the sum of the bytes modulo 2^32
unsigned encode_hex(std::string_view bytes, char* digits) noexcept;

/// The result of decoding pairs of digits.
struct decoded_hex {
    bool are_digits; ///< true if all characters are hexadecimal digits
    unsigned sum;    ///< sum of the bytes modulo 2^32
};

/// Decodes pairs of @p digits of either case to @p bytes, which must have room for half as many bytes. The
/// length of @p digits must be even. If a character is no hexadecimal digit, bytes and sum are unspecified.
[[nodiscard]] decoded_hex decode_and_sum(std::string_view digits, char* bytes) noexcept;

/// Does the same without the sum. Returns false if a character is no digit; @p bytes is then unspecified.
[[nodiscard]] inline bool decode_hex(std::string_view digits, char* bytes) noexcept {
    return decode_and_sum(digits, bytes).are_digits;
}

/// Returns the sum of the unsigned values of @p bytes modulo 2^32.
[[nodiscard]] unsigned sum_of_bytes(std::string_view bytes) noexcept;

/// Returns the value of at most eight hexadecimal @p digits of either case.
[[nodiscard]] std::uint32_t hex_value(std::string_view digits) noexcept;

} // namespace kvrimage
