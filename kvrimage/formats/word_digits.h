#pragma once

#include "kvr/numeric/digit_value.h"
#include "kvrimage/image/radix.h"

#include <cstddef>
#include <string_view>

namespace kvrimage {

/// How many digits @p of has: 2, 8, 10 or 16.
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

/// "binary", "octal", "decimal", "hexadecimal": for messages.
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

/// The first character of @p text that is no digit of @p digits_radix, of either case; npos when all are. A
/// sign and a don't-care digit are none.
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
