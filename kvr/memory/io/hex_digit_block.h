#pragma once

#include "kvr/memory/io/copy_padded.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace kvr {

enum class letter_case { lower, upper };

/// A buffer for digits, with padding for copy_padded().
struct hex_digit_block {
    static constexpr std::size_t capacity = 2048;
    std::array<char, capacity + copy_padding> digits;
};

/// Copies @p text, at most hex_digit_block::capacity characters, to @p block with its letters in @p letters.
/// Returns true if all characters are hexadecimal digits; otherwise the copy is unspecified.
[[nodiscard]] bool copy_hex_digits(std::string_view text, letter_case letters,
                                   hex_digit_block& block) noexcept;

/// True if @p text has only "0" to "9" and "A" to "F".
[[nodiscard]] bool are_upper_hex_digits(std::string_view text) noexcept;

} // namespace kvr
