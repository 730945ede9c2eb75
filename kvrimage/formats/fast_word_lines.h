#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// A regular line of a RIF file: "@" and an address of up to eight digits, or hexadecimal words of equal
/// length with one blank after each (optional after the last), ended by LF or CR LF. rif_parser, which knows
/// all rules, gives the same result.
struct fast_word_line {
    std::size_t end = 0; ///< after its line end; 0 if the line is not regular
    bool is_address = false;
    std::uint64_t address = 0;   ///< of an address line
    const char* words = nullptr; ///< `length` digits each, with one character in between
    std::size_t length = 0;
    std::size_t count = 0;
    bool has_lower_case = false;

    [[nodiscard]] std::string_view operator[](std::size_t index) const noexcept {
        return {words + index * (length + 1), length};
    }
};

/// Parses the line of @p text that begins at @p begin. The last few lines of a text are never regular.
[[nodiscard]] fast_word_line find_fast_word_line(std::string_view text, std::size_t begin) noexcept;

} // namespace kvrimage
