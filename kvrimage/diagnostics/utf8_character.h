#pragma once

#include <cstddef>
#include <string_view>

namespace kvrimage {

/// The first character of a text.
struct utf8_character {
    std::string_view bytes;
    char32_t code; ///< 0 for an invalid byte
    bool is_shown; ///< false for control characters, direction marks and characters that XML does not allow
};

/// Decodes the first character of @p text, which must not be empty. An invalid byte becomes a character of
/// its own with `is_shown` false.
[[nodiscard]] utf8_character first_character(std::string_view text);

/// Returns whether @p byte is a UTF-8 continuation byte.
[[nodiscard]] constexpr bool is_continuation(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Returns the last position at or before @p at (at most the size of @p text) where a character begins. Goes
/// back at most three bytes, also in invalid UTF-8.
[[nodiscard]] std::size_t character_start(std::string_view text, std::size_t at) noexcept;

} // namespace kvrimage
