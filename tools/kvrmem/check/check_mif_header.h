#pragma once

#include "tools/kvrmem/check/check_source.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrmem {

/// Where the lines of a MIF header stand, as the library takes them.
struct mif_header_lines {
    /// Lines of the keywords, in the order of kvr::header_keywords; 0 for one that is not there. Where
    /// several lines tell a keyword, the one that holds.
    std::array<std::uint64_t, 4> keyword{};
    /// Lines that tell a keyword, too, and do not hold: earlier or later ones; 0 for none.
    std::array<std::uint64_t, 4> repeated{};
    std::uint64_t unread_depth =
        0; ///< the last line that has WIDTH and a DEPTH that was still to come; 0: none
    /// The lines that look like those of a keyword, "NAME=…;" or "DEPTH 4;", and are none.
    std::vector<std::uint64_t> unknown;
    std::uint64_t blocked_content = 0; ///< first line with CONTENT before WIDTH and DEPTH were known; 0: none
    std::uint64_t content = 0;         ///< the line with CONTENT from which words are read; 0: none
    std::uint64_t begin = 0;           ///< the line with BEGIN behind it; 0: none
    bool width_known = false; ///< at the first of these lines, or at the end of a file without CONTENT
    bool depth_known = false;
};

/// The keywords in the order of kvr::header_keywords, without "=".
inline constexpr std::array<std::string_view, 4> header_names = {"WIDTH", "DEPTH", "ADDRESS_RADIX",
                                                                 "DATA_RADIX"};

[[nodiscard]] mif_header_lines find_header_lines(const check_source& source);

/// A stretch of a line.
struct line_stretch {
    std::uint64_t column; ///< from 1
    std::string_view text;
};

/// The name of the keyword that stands in @p text without "=", in front of what it could be followed by:
/// "DEPTH" of "DEPTH4;" and "DEPTH:4;". @p text is in upper case and without blanks. "" when there is none.
[[nodiscard]] std::string_view name_without_equals(std::string_view text);

/// True when @p text, in upper case, has a keyword of the header in it.
[[nodiscard]] bool is_header_line(std::string_view text);

/// What stands between the "=" and the ";" of the header line @p line, without blanks around it.
[[nodiscard]] line_stretch header_value(std::string_view line);

} // namespace kvrmem
