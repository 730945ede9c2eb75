#include "kvrimage/picture/utf8_character.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace kvrimage {

namespace {

struct code_range {
    std::uint32_t first;
    std::uint32_t last;
};

/// Controls, directions and line ends, and the characters that XML does not have.
constexpr std::array<code_range, 7> hidden_codes = {{{0x00, 0x1F},
                                                     {0x7F, 0x9F},
                                                     {0x200E, 0x200F},
                                                     {0x2028, 0x202E},
                                                     {0x2066, 0x2069},
                                                     {0xFEFF, 0xFEFF},
                                                     {0xFFFE, 0xFFFF}}};

/// Halves of characters, which UTF-8 does not have.
constexpr code_range surrogates = {0xD800, 0xDFFF};

constexpr std::uint32_t last_code = 0x10FFFF;

bool is_character(std::uint32_t code, std::uint32_t least) {
    return code >= least && code <= last_code && (code < surrogates.first || code > surrogates.last);
}

bool is_shown_code(std::uint32_t code) {
    return std::none_of(hidden_codes.begin(), hidden_codes.end(), [code](const code_range& hidden) {
        return code >= hidden.first && code <= hidden.last;
    });
}

/// What the first byte of a character says: how many bytes it has, which of its bits belong to the
/// character, and the least character that needs as many.
struct lead_byte {
    unsigned mask;
    unsigned value;
    std::size_t length;
    std::uint32_t least;
};

constexpr std::array<lead_byte, 4> lead_bytes = {
    {{0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}}};

} // namespace

utf8_character first_character(std::string_view text) {
    const utf8_character stray{text.substr(0, 1), false};
    const auto first = static_cast<unsigned char>(text[0]);
    const auto* const lead =
        std::find_if(lead_bytes.begin(), lead_bytes.end(),
                     [first](const lead_byte& entry) { return (first & entry.mask) == entry.value; });
    if (lead == lead_bytes.end() || lead->length > text.size()) {
        return stray;
    }
    const std::string_view bytes = text.substr(0, lead->length);
    std::uint32_t code = first & ~lead->mask;
    for (const char byte : bytes.substr(1)) {
        if (!is_continuation(byte)) {
            return stray;
        }
        code = code << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    return is_character(code, lead->least) ? utf8_character{bytes, is_shown_code(code)} : stray;
}

} // namespace kvrimage
