#pragma once

#include <cstddef>
#include <string_view>

namespace kvrimage {

/// Writes the two upper-case hexadecimal digits of each of @p bytes to @p digits, which has room for them.
void encode_hex(std::string_view bytes, char* digits) noexcept;

/// Writes the bytes that pairs of @p digits spell, half as many, to @p bytes, which has room for them. False,
/// with any bytes, when a character is no hexadecimal digit (of either case). @p digits has an even length.
[[nodiscard]] bool decode_hex(std::string_view digits, char* bytes) noexcept;

/// The sum of the numbers that @p bytes are, modulo 2^32.
[[nodiscard]] unsigned sum_of_bytes(std::string_view bytes) noexcept;

} // namespace kvrimage
