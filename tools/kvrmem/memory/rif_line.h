#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kvrmem {

/// A piece of a line of a RIF file, and where it begins in the line, from 0.
struct rif_piece {
    std::string_view text;
    std::size_t begin = 0;

    [[nodiscard]] std::size_t end() const { return begin + text.size(); }
};

/// Calls @p take with each word of @p line, a rif_piece: words are separated by blanks.
template <class Take>
void for_each_rif_word(std::string_view line, Take&& take) {
    for (std::size_t begin = line.find_first_not_of(' '); begin != std::string_view::npos;) {
        const std::size_t end = std::min(line.find(' ', begin), line.size());
        take(rif_piece{line.substr(begin, end - begin), begin});
        begin = line.find_first_not_of(' ', end);
    }
}

/// True when @p line is an address line, which is what holds an "@".
[[nodiscard]] inline bool is_rif_address_line(std::string_view line) {
    return line.find('@') != std::string_view::npos;
}

/// An address line taken apart.
struct rif_address_line {
    rif_piece text;          ///< without the blanks at both ends
    std::string_view digits; ///< behind its first character
    bool is_proper = false;  ///< an "@" and hexadecimal digits, of whatever value
};

[[nodiscard]] rif_address_line split_rif_address(std::string_view line);

} // namespace kvrmem
