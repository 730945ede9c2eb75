#pragma once

#include "kvr/numeric/digit_value.h"
#include "kvrimage/image/radix.h"

#include <cstddef>
#include <string_view>

namespace kvrimage {

/// Returns the base of the radix @p of: 2, 8, 10 or 16.
[[nodiscard]] constexpr unsigned base_of(radix of) noexcept {
    switch (of) {
    case radix::bin:
        return 2;
    case radix::oct:
        return 8;
    case radix::dec:
    case radix::uns:
        return 10;
    default: // radix::hex
        break;
    }
    return 16;
}

/// Returns "binary", "octal", "decimal" or "hexadecimal", for messages.
[[nodiscard]] constexpr std::string_view adjective_of(radix of) noexcept {
    switch (base_of(of)) {
    case 2:
        return "binary";
    case 8:
        return "octal";
    case 10:
        return "decimal";
    default:
        return "hexadecimal";
    }
}

/// Returns the index of the first character of @p text that is not a digit of @p digits_radix in upper or
/// lower case, else npos. Signs and don't-care digits are not digits.
[[nodiscard]] inline std::size_t find_bad_digit(std::string_view text, radix digits_radix) noexcept {
    const unsigned base = base_of(digits_radix);
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (kvr::digit_value(text[at]) >= base) {
            return at;
        }
    }
    return std::string_view::npos;
}

} // namespace kvrimage
