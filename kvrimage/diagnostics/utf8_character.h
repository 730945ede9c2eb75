#pragma once

#include <cstddef>
#include <string_view>

namespace kvrimage {

/// The bytes of a character, and what they are.
struct utf8_character {
    std::string_view bytes;
    char32_t code; ///< 0 for a byte that belongs to no character
    bool is_shown; ///< neither a control character nor one that changes the direction of text, and XML has it
};

/// What @p text, which must not be empty, begins with. A byte that does not begin a character of UTF-8 stands
/// alone and is not shown.
[[nodiscard]] utf8_character first_character(std::string_view text);

/// True for a byte that continues a character.
[[nodiscard]] constexpr bool is_continuation(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// The last place at or before @p at (up to the size of @p text) where a character begins. Among bytes that
/// are no UTF-8 that is a few bytes back at most.
[[nodiscard]] std::size_t character_start(std::string_view text, std::size_t at) noexcept;

} // namespace kvrimage
