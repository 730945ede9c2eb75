#include "kvr/numeric/scanned_number.h"

#include "kvr/numeric/digit_value.h"

#include <limits>

namespace kvr {

namespace {

bool is_white_space(char character) noexcept {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

/// Returns the position of the first digit after white space, sign and hexadecimal prefix.
std::size_t skip_to_digits(std::string_view text, unsigned base, bool& negative) noexcept {
    std::size_t at = 0;
    while (at < text.size() && is_white_space(text[at])) {
        ++at;
    }
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        negative = text[at] == '-';
        ++at;
    }
    const bool has_prefix = base == 16 && text.size() - at > 2 && text[at] == '0' &&
                            (text[at + 1] == 'x' || text[at + 1] == 'X') && digit_value(text[at + 2]) < base;
    return has_prefix ? at + 2 : at;
}

} // namespace

scanned_number scan_number(std::string_view text, unsigned base) noexcept {
    scanned_number number;
    const std::size_t first_digit = skip_to_digits(text, base, number.negative);
    std::uint64_t magnitude = 0;
    std::size_t at = first_digit;
    for (; at < text.size() && digit_value(text[at]) < base; ++at) {
        magnitude = magnitude * base + digit_value(text[at]);
        number.fits = number.fits && magnitude <= std::numeric_limits<std::uint32_t>::max();
    }
    number.magnitude =
        number.fits ? static_cast<std::uint32_t>(magnitude) : std::numeric_limits<std::uint32_t>::max();
    number.characters = at == first_digit ? 0 : at;
    number.negative = number.negative && at != first_digit;
    return number;
}

} // namespace kvr
