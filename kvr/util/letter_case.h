#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Letter case of ASCII text, independent of the locale: only "A" to "Z" and "a" to "z" have one.
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

/// Returns @p character in lower case as an unsigned byte.
constexpr unsigned char fold_case(char character) noexcept {
    return static_cast<unsigned char>(lower_case_of(character));
}

/// Returns whether the texts are equal except for letter case.
bool equal_ignoring_case(std::string_view left, std::string_view right);

/// Converts @p text to upper case in place, from index @p from on.
void to_upper(std::string& text, std::size_t from = 0) noexcept;

std::string to_lower_case(std::string_view text);
std::string to_upper_case(std::string_view text);

} // namespace kvr
