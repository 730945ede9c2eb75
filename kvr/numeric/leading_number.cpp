#include "kvr/numeric/leading_number.h"

#include "kvr/numeric/digit_value.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <system_error>

namespace kvr {

namespace {

struct signed_text {
    bool negative;
    std::string_view magnitude;
};

signed_text split_sign(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    return {negative, text};
}

// "0x" is a prefix only if a digit follows; otherwise the number is the "0".
bool has_hexadecimal_prefix(std::string_view text) {
    if (text.size() < 3 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X')) {
        return false;
    }
    const std::string_view digits = text.substr(text[2] == '.' ? 3 : 2);
    return !digits.empty() && digit_value(digits.front()) < 16;
}

// Returns the exponent at the end of a number; 0 if there is none, and the nearest int if it is too large.
int trailing_exponent(std::string_view number, std::string_view markers) {
    const std::size_t marker = number.find_first_of(markers);
    return marker == std::string_view::npos ? 0 : leading_integer(number.substr(marker + 1));
}

// Classifies a number that no double can represent: true if it is too large, false if it is too small.
bool is_too_large(std::string_view number, std::chars_format format) {
    const bool hexadecimal = format == std::chars_format::hex;
    const std::string_view markers = hexadecimal ? "pP" : "eE";
    const std::string_view digits = number.substr(0, number.find_first_of(markers));
    const auto point = static_cast<double>(std::min(digits.find('.'), digits.size()));
    const auto leading_digit = static_cast<double>(digits.find_first_not_of("0."));
    const double scale = (point - leading_digit) * (hexadecimal ? 4 : 1);
    return scale + trailing_exponent(number, markers) > 0;
}

double magnitude_of(std::string_view text) {
    auto format = std::chars_format::general;
    if (has_hexadecimal_prefix(text)) {
        format = std::chars_format::hex;
        text.remove_prefix(2);
    }
    // std::from_chars accepts "-" where a second sign is invalid: at the start, and in "p+-1".
    if (!text.empty() && text.front() == '-') {
        return 0;
    }
    text = text.substr(0, text.find("+-"));
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, format);
    if (error != std::errc::result_out_of_range) {
        return value;
    }
    const std::string_view number = text.substr(0, static_cast<std::size_t>(end - text.data()));
    return is_too_large(number, format) ? std::numeric_limits<double>::infinity() : 0;
}

} // namespace

int leading_integer(std::string_view text) {
    const auto [negative, digits] = split_sign(text);
    constexpr int largest = std::numeric_limits<int>::max();
    constexpr int smallest = std::numeric_limits<int>::min();
    long long value = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9' || value > largest) {
            break;
        }
        value = value * 10 + (digit - '0');
    }
    return static_cast<int>(negative ? std::max<long long>(-value, smallest)
                                     : std::min<long long>(value, largest));
}

double leading_float(std::string_view text) {
    const auto [negative, magnitude] = split_sign(text);
    const double value = magnitude_of(magnitude);
    return negative ? -value : value;
}

} // namespace kvr
