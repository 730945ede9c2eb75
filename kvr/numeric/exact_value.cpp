#include "kvr/numeric/exact_value.h"

#include "kvr/numeric/binary_digits.h"
#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/magnitude.h"
#include "kvr/numeric/small_word.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <limits>
#include <utility>

namespace kvr {

namespace {

using kind = exact_word_error::kind;
using fault = std::optional<exact_word_error>;

/// A text that has digits only, after the sign.
struct digit_text {
    std::string_view digits; ///< without the sign
    std::size_t position;    ///< index of the first digit in the text
    bool is_negative;
    bool has_dont_care;
};

fault fault_at(kind what, std::size_t position) {
    return exact_word_error{what, position, 0};
}

/// Checks a character that is no known digit of the radix. Returns its fault, if any.
fault check_odd_digit(char digit, std::size_t position, const exact_conversion& conversion) {
    if (digit_value(digit) != dont_care_digit || is_decimal(conversion.from)) {
        return fault_at(kind::invalid_digit, position);
    }
    if (conversion.dont_cares == dont_care_digits::refused || is_decimal(conversion.to)) {
        return fault_at(kind::dont_care, position);
    }
    return std::nullopt;
}

fault scan_digits(digit_text& scanned, std::string_view text, const exact_conversion& conversion) {
    const bool is_negative = conversion.from == RADIX_DEC && text.starts_with('-');
    const std::size_t start = is_negative ? 1 : 0;
    scanned = {text.substr(start), start, is_negative, false};
    if (scanned.digits.empty()) {
        return fault_at(kind::empty, text.size());
    }
    const unsigned base = is_decimal(conversion.from) ? 10 : 1U << bits_per_digit(conversion.from);
    for (std::size_t position = start; position < text.size(); ++position) {
        if (digit_value(text[position]) < base) {
            continue;
        }
        if (const fault found = check_odd_digit(text[position], position, conversion)) {
            return found;
        }
        scanned.has_dont_care = true;
    }
    return std::nullopt;
}

fault check_width(const digit_text& scanned, std::uint64_t bits_needed, std::size_t width) {
    if (bits_needed <= width) {
        return std::nullopt;
    }
    const std::size_t first = scanned.digits.find_first_not_of('0');
    return exact_word_error{kind::too_wide, scanned.position + first, bits_needed};
}

/// Returns the smallest width for digits of @p bits bits each. A don't-care digit needs one bit only.
std::uint64_t width_of_digits(std::string_view digits, unsigned bits) {
    const std::size_t first = digits.find_first_not_of('0');
    if (first == std::string_view::npos) {
        return 0;
    }
    const unsigned value = digit_value(digits[first]);
    const int top_bits =
        value == dont_care_digit ? 1 : std::numeric_limits<unsigned>::digits - std::countl_zero(value);
    return (digits.size() - 1 - first) * std::uint64_t{bits} + static_cast<unsigned>(top_bits);
}

void append_number(std::string& result, magnitude& number, const exact_conversion& conversion) {
    if (!is_decimal(conversion.to)) {
        const unsigned bits = bits_per_digit(conversion.to);
        number.append_digits(result, bits, digit_count(conversion.width, bits));
        return;
    }
    if (conversion.to == RADIX_DEC && number.bit(conversion.width - 1)) {
        number.invert_low_bits(conversion.width);
        number.increment();
        result += '-';
    }
    number.append_decimal(result);
}

fault append_from_decimal(std::string& result, const digit_text& scanned,
                          const exact_conversion& conversion) {
    magnitude number = magnitude::of_decimal(scanned.digits);
    // "-0" is 0; any other -n is the inversion of n - 1.
    const bool is_below_zero = scanned.is_negative && number.bit_length() != 0;
    if (is_below_zero) {
        number.decrement();
    }
    const unsigned sign_bits = conversion.from == RADIX_DEC ? 1 : 0;
    if (const fault found = check_width(scanned, number.bit_length() + sign_bits, conversion.width)) {
        return found;
    }
    if (is_below_zero) {
        number.invert_low_bits(conversion.width);
    }
    append_number(result, number, conversion);
    return std::nullopt;
}

/// Appends digits from a radix to itself; each digit is unchanged.
void append_same_digits(std::string& result, std::string_view digits, std::size_t count) {
    const std::size_t kept = std::min(digits.size(), count);
    result.append(count - kept, '0');
    for (const char digit : digits.substr(digits.size() - kept)) {
        const unsigned value = digit_value(digit);
        result += value == dont_care_digit ? 'X' : upper_case_digits[value];
    }
}

/// Returns exactly @p width characters, "0", "1" and "X".
std::string bits_with_dont_cares(std::string_view digits, unsigned bits, std::size_t width) {
    std::string expanded;
    if (bits == 1) {
        append_same_digits(expanded, digits, width);
        return expanded;
    }
    expanded = grouped_radix_to_binary_string(digits, static_cast<int>(bits));
    const std::size_t kept = std::min(expanded.size(), width);
    return std::string(width - kept, '0').append(expanded, expanded.size() - kept, kept);
}

/// Returns the index of a don't-care bit that shares its digit of @p group_size bits with known bits, or
/// npos.
std::size_t find_mixed_bit(std::string_view bits, std::size_t group_size) {
    std::size_t end = (bits.size() - 1) % group_size + 1;
    for (std::size_t start = 0; start < bits.size(); start = end, end += group_size) {
        const std::string_view group = bits.substr(start, end - start);
        const auto dont_cares = static_cast<std::size_t>(std::ranges::count(group, 'X'));
        if (dont_cares != 0 && dont_cares != group.size()) {
            return start + group.find('X');
        }
    }
    return std::string_view::npos;
}

fault append_with_dont_cares(std::string& result, const digit_text& scanned,
                             const exact_conversion& conversion) {
    const unsigned from_bits = bits_per_digit(conversion.from);
    const unsigned to_bits = bits_per_digit(conversion.to);
    const std::string bits = bits_with_dont_cares(scanned.digits, from_bits, conversion.width);
    const std::size_t mixed = find_mixed_bit(bits, to_bits);
    if (mixed != std::string::npos) {
        const std::size_t digits_behind = (bits.size() - 1 - mixed) / from_bits;
        return fault_at(kind::dont_care, scanned.digits.size() - 1 - digits_behind);
    }
    result += to_bits == 1 ? bits : binary_to_grouped_radix_string(bits, static_cast<int>(to_bits));
    return std::nullopt;
}

fault append_from_digits(std::string& result, const digit_text& scanned, const exact_conversion& conversion) {
    const unsigned bits = bits_per_digit(conversion.from);
    if (const fault found = check_width(scanned, width_of_digits(scanned.digits, bits), conversion.width)) {
        return found;
    }
    if (conversion.from == conversion.to) {
        append_same_digits(result, scanned.digits, digit_count(conversion.width, bits));
        return std::nullopt;
    }
    if (scanned.has_dont_care) {
        return append_with_dont_cares(result, scanned, conversion);
    }
    magnitude number = magnitude::of_digits(scanned.digits, bits);
    append_number(result, number, conversion);
    return std::nullopt;
}

} // namespace

std::optional<exact_word_error> append_exact_word(std::string& result, std::string_view text,
                                                  const exact_conversion& conversion) {
    assert(conversion.width != 0);
    assert(is_decimal(conversion.from) || bits_per_digit(conversion.from) != 0);
    assert(is_decimal(conversion.to) || bits_per_digit(conversion.to) != 0);
    const bool is_hex_to_hex = conversion.from == RADIX_HEX && conversion.to == RADIX_HEX;
    if (is_hex_to_hex ? append_same_hex_digits(result, text, conversion.width)
                      : append_small_exact_word(result, text, conversion)) {
        return std::nullopt;
    }
    return append_exact_word_plainly(result, text, conversion);
}

std::optional<exact_word_error> append_exact_word_plainly(std::string& result, std::string_view text,
                                                          const exact_conversion& conversion) {
    digit_text scanned{};
    if (const fault found = scan_digits(scanned, text, conversion)) {
        return found;
    }
    return is_decimal(conversion.from) ? append_from_decimal(result, scanned, conversion)
                                       : append_from_digits(result, scanned, conversion);
}

std::optional<exact_word_error> exact_bits(std::string_view text, KVR_MEMORY_RADIXES radix,
                                           std::uint32_t width, std::string& bits,
                                           dont_care_digits dont_cares) {
    std::string result;
    const fault found = append_exact_word(result, text, {radix, RADIX_BIN, width, dont_cares});
    if (!found) {
        bits = std::move(result);
    }
    return found;
}

std::optional<exact_word_error> exact_text(std::string_view bits, KVR_MEMORY_RADIXES radix,
                                           std::string& text) {
    if (bits.empty()) {
        return fault_at(kind::empty, 0);
    }
    std::string result;
    const fault found = append_exact_word(result, bits, {RADIX_BIN, radix, bits.size()});
    if (!found) {
        text = std::move(result);
    }
    return found;
}

} // namespace kvr
