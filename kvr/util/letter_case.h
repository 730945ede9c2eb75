#pragma once

#include <string>
#include <string_view>

/// Letter case of ASCII text. Only "A" to "Z" and "a" to "z" have one, whatever the locale says.
namespace kvr {

/// @p character with "A" to "Z" turned into "a" to "z", as an unsigned byte.
constexpr unsigned char fold_case(char character) {
    const auto byte = static_cast<unsigned char>(character);
    const bool upper = byte >= 'A' && byte <= 'Z';
    return static_cast<unsigned char>(upper ? byte - 'A' + 'a' : byte);
}

/// True when both texts have the same length and the same characters, letter case aside.
bool equal_ignoring_case(std::string_view left, std::string_view right);

std::string to_lower_case(std::string_view text);
std::string to_upper_case(std::string_view text);

} // namespace kvr
