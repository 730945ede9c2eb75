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

/// The text between the numbers of a statement, and the style of the numbers.
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

/// Returns the style of @p statement in @p contents. The style of the values is not set.
[[nodiscard]] mif_line_style style_of(std::string_view contents, const mif_statement& statement);

/// Returns @p address in @p address_radix, with the digit style @p style.
[[nodiscard]] std::string address_text(std::uint64_t address, radix address_radix, const digit_style& style);

/// Appends @p values from index @p from on to @p text, each after @p style.between. @p text ends with a
/// value, @p column characters after the start of its line. A line longer than @p limit is broken with
/// @p line_end and the indentation.
void append_values(std::string& text, const std::vector<std::string>& values, std::size_t from,
                   const mif_line_style& style, std::string_view line_end, std::size_t column,
                   std::size_t limit);

/// Returns @p line as text up to its ";". Long text is broken into several lines.
[[nodiscard]] std::string line_text(const mif_line& line, radix address_radix, const mif_line_style& style,
                                    std::string_view line_end);

} // namespace kvrimage
