#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Letter case of ASCII text. Only "A" to "Z" and "a" to "z" have one, whatever the locale.
namespace kvr {

constexpr bool is_upper_case(char character) noexcept {
    return character >= 'A' && character <= 'Z';
}

constexpr bool is_lower_case(char character) noexcept {
    return character >= 'a' && character <= 'z';
}

constexpr char lower_case_of(char character) noexcept {
    return is_upper_case(character) ? static_cast<char>(character - 'A' + 'a') : character;
}

constexpr char upper_case_of(char character) noexcept {
    return is_lower_case(character) ? static_cast<char>(character - 'a' + 'A') : character;
}

/// @p character with "A" to "Z" turned into "a" to "z", as an unsigned byte.
constexpr unsigned char fold_case(char character) noexcept {
    return static_cast<unsigned char>(lower_case_of(character));
}

/// True when both texts have the same length and the same characters except for letter case.
bool equal_ignoring_case(std::string_view left, std::string_view right);

/// Upper-cases @p text in place, from the character @p from on.
void to_upper(std::string& text, std::size_t from = 0) noexcept;

std::string to_lower_case(std::string_view text);
std::string to_upper_case(std::string_view text);

} // namespace kvr
