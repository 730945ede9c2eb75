#include "kvr/numeric/value_syntax.h"

#include "kvr/numeric/digit_value.h"

#include <algorithm>
#include <string_view>

bool kvr_is_integer_value(const std::string& text) {
    const std::size_t sign = text.starts_with('-') ? 1 : 0;
    return std::ranges::all_of(std::string_view(text).substr(sign), kvr::is_decimal_digit);
}

bool kvr_is_float_value(const std::string& text) {
    const std::size_t dot = text.find('.');
    if (dot == std::string::npos || dot + 1 == text.size()) {
        return false;
    }
    const std::string_view view = text;
    return std::ranges::all_of(view.substr(0, dot), kvr::is_decimal_digit) &&
           std::ranges::all_of(view.substr(dot + 1), kvr::is_decimal_digit);
}

bool kvr_is_hex_value(const std::string& text, int width) {
    return text.size() == static_cast<unsigned int>(width) >> 2 &&
           std::ranges::all_of(text, [](char character) { return kvr::digit_value(character) < 16; });
}

bool kvr_is_binary_value(const std::string& text, int width) {
    return text.size() == static_cast<unsigned int>(width) &&
           std::ranges::all_of(text, [](char character) { return character == '0' || character == '1'; });
}
