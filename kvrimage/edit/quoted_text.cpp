#include "kvrimage/edit/quoted_text.h"

#include "kvrimage/image/hex_text.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kvrimage {

namespace {

constexpr std::array<std::pair<char, char>, 6> escapes = {
    {{'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'0', '\0'}, {'\\', '\\'}, {'"', '"'}}};

/// Returns the byte with two hexadecimal digits, or nothing if @p text does not begin with them.
std::optional<char> byte_of_digits(std::string_view text) {
    const std::string_view digits = text.substr(0, 2);
    if (digits.size() < 2 || digits.find_first_not_of(hex_digits) != std::string_view::npos) {
        return std::nullopt;
    }
    return static_cast<char>(hex_value(digits));
}

/// A decoded escape sequence.
struct escape {
    char byte;
    std::size_t length; ///< including the backslash
};

/// @param after the characters after the backslash
std::optional<escape> escape_of(std::string_view after) {
    if (after.starts_with('x')) {
        const auto byte = byte_of_digits(after.substr(1));
        return byte ? std::optional(escape{*byte, 4}) : std::nullopt;
    }
    const auto* const found =
        std::ranges::find_if(escapes, [after](const auto& each) { return after.starts_with(each.first); });
    return found != escapes.end() ? std::optional(escape{found->second, 2}) : std::nullopt;
}

} // namespace

quoted_text parse_quoted_text(std::string_view text) {
    quoted_text parsed;
    std::size_t at = 1;
    while (at < text.size() && text[at] != '"') {
        if (text[at] != '\\') {
            parsed.bytes += text[at++];
            continue;
        }
        const auto found = escape_of(text.substr(at + 1));
        if (!found) {
            parsed.length = at;
            parsed.fault = quoted_text_fault::bad_escape;
            return parsed;
        }
        parsed.bytes += found->byte;
        at += found->length;
    }
    parsed.length = std::min(at + 1, text.size());
    if (at >= text.size()) {
        parsed.fault = quoted_text_fault::not_closed;
    }
    return parsed;
}

text_as_words words_of_text(std::string_view bytes, std::uint32_t width) {
    text_as_words made = {{}, find_wide_byte(bytes, width)};
    for (std::size_t index = 0; !made.too_wide && index < bytes.size(); ++index) {
        made.words.push_back(word::of(static_cast<unsigned char>(bytes[index]), width));
    }
    return made;
}

} // namespace kvrimage
