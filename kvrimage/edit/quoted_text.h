#pragma once

#include "kvrimage/image/word.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// The faults of a quoted text.
enum class quoted_text_fault : std::uint8_t {
    not_closed, ///< the closing quote is missing
    bad_escape  ///< unknown escape sequence
};

/// The escape sequences, for messages.
inline constexpr std::string_view quoted_text_escapes = R"(\n \r \t \0 \\ \" \xNN)";

/// A quoted text with its escape sequences decoded.
struct quoted_text {
    std::string bytes;      ///< decoded bytes, up to the fault if there is one
    std::size_t length = 0; ///< length of the parsed text with its quotes, up to the fault if there is one
    std::optional<quoted_text_fault> fault; ///< nothing on success
};

/// Parses the quoted text at the start of @p text, whose first character is '"'. quoted_text_escapes lists
/// the escape sequences, which are those of C; \xNN has two digits and gives one byte. All other bytes are
/// taken literally.
[[nodiscard]] quoted_text parse_quoted_text(std::string_view text);

/// The words of a text.
struct text_as_words {
    std::vector<word> words; ///< one for each byte
    std::optional<std::size_t>
        too_wide; ///< index of the first byte that does not fit a word; then there are no words
};

/// Converts each byte of @p bytes to a word of @p width bits.
[[nodiscard]] text_as_words words_of_text(std::string_view bytes, std::uint32_t width);

} // namespace kvrimage
