#pragma once

#include <string_view>

namespace kvrimage {

/// The bytes of a character, or a byte that belongs to none.
struct utf8_character {
    std::string_view bytes;
    bool is_shown; ///< neither a control character nor one that changes the direction of text, and XML has it
};

/// What @p text, which must not be empty, begins with. A byte that does not begin a character of UTF-8 stands
/// alone and is not shown.
[[nodiscard]] utf8_character first_character(std::string_view text);

/// True for a byte that continues a character.
[[nodiscard]] constexpr bool is_continuation(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

} // namespace kvrimage
