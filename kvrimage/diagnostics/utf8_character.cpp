#include "kvrimage/diagnostics/utf8_character.h"

#include "kvrimage/diagnostics/character_ranges.h"

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

/// Control characters, direction marks, line separators, and characters that XML does not allow.
constexpr auto hidden_characters = std::to_array<character_range>({{0x00, 0x1F},
                                                                   {0x7F, 0x9F},
                                                                   {0x200E, 0x200F},
                                                                   {0x2028, 0x202E},
                                                                   {0x2066, 0x2069},
                                                                   {0xFEFF, 0xFEFF},
                                                                   {0xFFFE, 0xFFFF}});
static_assert(is_in_order(hidden_characters));

/// UTF-16 surrogates: invalid in UTF-8.
constexpr character_range surrogates = {0xD800, 0xDFFF};

constexpr char32_t last_character = 0x10FFFF;

bool is_character(char32_t code, char32_t least) {
    return code >= least && code <= last_character && (code < surrogates.first || code > surrogates.last);
}

/// The properties of a character's first byte: the length in bytes, the mask of its non-payload bits, and the
/// smallest character that needs this length.
struct lead_byte {
    unsigned mask;
    unsigned value;
    std::size_t length;
    char32_t least;
};

constexpr std::array<lead_byte, 4> lead_bytes = {
    {{0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}}};

} // namespace

utf8_character first_character(std::string_view text) {
    const utf8_character stray{text.substr(0, 1), 0, false};
    const auto first = static_cast<unsigned char>(text[0]);
    const auto lead = std::ranges::find_if(
        lead_bytes, [first](const lead_byte& entry) { return (first & entry.mask) == entry.value; });
    if (lead == lead_bytes.end()) {
        return stray;
    }
    // The code of a character that the end of the text cuts off is too small for the length.
    const std::string_view bytes = text.substr(0, lead->length);
    char32_t code = first & ~lead->mask;
    for (const char byte : bytes.substr(1)) {
        if (!is_continuation(byte)) {
            return stray;
        }
        code = code << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    return is_character(code, lead->least) ? utf8_character{bytes, code, !is_in(hidden_characters, code)}
                                           : stray;
}

std::size_t character_start(std::string_view text, std::size_t at) noexcept {
    constexpr std::size_t most_continuations = 3;
    std::size_t start = at;
    while (start > 0 && start < text.size() && is_continuation(text[start]) &&
           at - start < most_continuations) {
        --start;
    }
    return start;
}

} // namespace kvrimage
