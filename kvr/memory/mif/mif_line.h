#pragma once

#include "kvr/memory/memory_types.h"
#include "kvr/util/letter_case.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kvr {

/// A part of a text. `begin` is npos if it was not found.
struct text_span {
    std::size_t begin = std::string_view::npos;
    std::size_t end = std::string_view::npos;

    [[nodiscard]] bool found() const noexcept { return begin != std::string_view::npos; }
    [[nodiscard]] std::string_view in(std::string_view text) const { return text.substr(begin, end - begin); }
};

inline constexpr std::array<bool, 256> value_characters = [] {
    std::array<bool, 256> table{};
    for (const char character : std::string_view("-0123456789ABCDEFabcdefXxUu")) {
        table[static_cast<unsigned char>(character)] = true;
    }
    return table;
}();

/// True for the characters of addresses and words: digits and letters of all radixes, "-", and the don't-care
/// characters "X" and "U" in either case.
[[nodiscard]] inline bool is_value_character(char character) noexcept {
    return value_characters[static_cast<unsigned char>(character)];
}

/// Returns the first maximal run of value characters at or after @p from.
[[nodiscard]] text_span find_token(std::string_view text, std::size_t from) noexcept;

/// Splits @p text into tokens up to the first comment mark ("--" or "%"). Overwrites @p values with views of
/// @p text.
void split_values(std::string_view text, std::vector<std::string_view>& values);

/// Returns the number of tokens in @p text, ignoring comment marks.
[[nodiscard]] std::size_t count_tokens(std::string_view text) noexcept;

/// True for the characters that separate the parts of a line.
[[nodiscard]] constexpr bool is_mif_blank(char character) noexcept {
    return character == ' ' || character == '\t';
}

[[nodiscard]] inline bool contains(std::string_view text, std::string_view word) noexcept {
    return text.find(word) != std::string_view::npos;
}

/// Returns the position of the "--" that begins a comment in @p line, or npos.
[[nodiscard]] std::size_t comment_position(std::string_view line) noexcept;

/// Returns @p line up to its first "%" (a closing one is not matched) or "--".
[[nodiscard]] std::string_view without_comments(std::string_view line) noexcept;

/// Deletes all blanks and tabs.
void strip_blanks(std::string& text);

} // namespace kvr
