#include "kvrimage/layout/source_lines.h"

#include <algorithm>

namespace kvrimage {

line_gap source_lines::gap_before(std::uint64_t offset) const {
    if (offset <= last_end) {
        return line_gap::none;
    }
    const std::string_view between = span{last_end, offset - last_end}.in(text);
    const std::size_t first = between.find_first_of("\r\n");
    if (first == std::string_view::npos) {
        return line_gap::none;
    }
    // A CR alone ends a line in some formats.
    const std::size_t next = first + (between.substr(first, 2) == "\r\n" ? 2 : 1);
    const bool has_blank_line = between.find_first_of("\r\n", next) != std::string_view::npos;
    return has_blank_line ? line_gap::blank : line_gap::line;
}

std::string_view byte_order_mark_of(std::string_view contents) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return contents.substr(0, contents.starts_with(mark) ? mark.size() : 0);
}

} // namespace kvrimage
