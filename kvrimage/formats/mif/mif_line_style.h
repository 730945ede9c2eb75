#pragma once

#include "kvrimage/edit/digit_style.h"
#include "kvrimage/formats/mif/mif_line.h"
#include "kvrimage/formats/mif/mif_parser.h"
#include "kvrimage/image/radix.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// What stands between the numbers of a statement, and how the numbers look.
struct mif_line_style {
    std::string indent = "\t";
    std::string open = "[";
    std::string dots = "..";
    std::string close = "]";
    std::string before_colon = "  ";
    std::string after_colon = "   ";
    std::string between = " ";
    std::string before_semicolon;
    digit_style address;
    digit_style value;
};

/// The style of @p statement of @p contents. That of the values is left as it is.
[[nodiscard]] mif_line_style style_of(std::string_view contents, const mif_statement& statement);

/// @p address in @p address_radix, with the digits of @p style.
[[nodiscard]] std::string address_text(std::uint64_t address, radix address_radix, const digit_style& style);

/// Appends @p values from @p from on, each after @p style.between, to @p text, which ends with a value @p
/// column characters after the start of its line. A line that becomes longer than @p limit is broken with @p
/// line_end and the indentation.
void append_values(std::string& text, const std::vector<std::string>& values, std::size_t from,
                   const mif_line_style& style, std::string_view line_end, std::size_t column,
                   std::size_t limit);

/// @p line as a line of a file, up to its ";", in several physical lines where it is too long for one.
[[nodiscard]] std::string line_text(const mif_line& line, radix address_radix, const mif_line_style& style,
                                    std::string_view line_end);

} // namespace kvrimage
