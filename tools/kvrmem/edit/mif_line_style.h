#pragma once

#include "kvr/memory/memory_types.h"
#include "kvr/memory/mif/mif_content.h"
#include "tools/kvrmem/edit/file_edit.h"
#include "tools/kvrmem/edit/mif_line.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// What stands between the numbers of a content line, and how the numbers look.
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

/// The style of @p content, which stands behind @p indent in its line. The digits are left as they are.
[[nodiscard]] mif_line_style style_of(const kvr::mif_content& content, std::string_view indent);

/// Where the addresses of a range line stand in its text: the bracket that opens, or the first address where
/// that one stands elsewhere, and the bracket that closes.
struct range_brackets {
    std::size_t open;
    std::size_t close;
};
[[nodiscard]] range_brackets brackets_of(const kvr::mif_content& content);

/// @p address in @p radix, with the digits of @p style.
[[nodiscard]] std::string address_text(std::uint64_t address, KVR_MEMORY_RADIXES radix,
                                       const digit_style& style);

/// Appends @p values from @p from on, each behind @p style.between, to @p text, which ends with a value
/// @p column characters behind the start of its line. A line that becomes longer than @p limit is broken with
/// @p line_end and the indentation.
void append_values(std::string& text, const std::vector<std::string>& values, std::size_t from,
                   const mif_line_style& style, std::string_view line_end, std::size_t column,
                   std::size_t limit);

/// @p line as a line of a file, up to its ";", in several physical lines where it is too long for one.
[[nodiscard]] std::string line_text(const mif_line& line, KVR_MEMORY_RADIXES address_radix,
                                    const mif_line_style& style, std::string_view line_end);

} // namespace kvrmem
