#pragma once

#include "kvrimage/image/word.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// What is wrong with a text between quotes.
enum class quoted_text_fault : std::uint8_t {
    not_closed, ///< the quote at its end is missing
    bad_escape  ///< a backslash that begins none of the escapes
};

/// The escapes, for messages.
inline constexpr std::string_view quoted_text_escapes = R"(\n \r \t \0 \\ \" \xNN)";

/// A text between quotes, with its escapes undone.
struct quoted_text {
    std::string bytes;                      ///< without what is wrong
    std::size_t length = 0;                 ///< of what was parsed, quotes included; with a fault up to it
    std::optional<quoted_text_fault> fault; ///< nothing: none
};

/// Parses what @p text, of which the first character is '"', begins with. A backslash begins one of the
/// escapes of C that quoted_text_escapes lists; \xNN has two digits and stands for a byte. All other bytes
/// stand for themselves.
[[nodiscard]] quoted_text parse_quoted_text(std::string_view text);

/// The words of a text.
struct text_as_words {
    std::vector<word> words; ///< one for each byte
    std::optional<std::size_t>
        too_wide; ///< the first byte that a word does not hold; there are no words then
};

/// Each of @p bytes as a word of @p width bits.
[[nodiscard]] text_as_words words_of_text(std::string_view bytes, std::uint32_t width);

} // namespace kvrimage
