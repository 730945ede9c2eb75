#pragma once

#include "kvrimage/diagnostics/span.h"

#include <cstdint>
#include <string_view>

namespace kvrimage {

/// The distance between two pieces of a text.
enum class line_gap : std::uint8_t {
    none,  ///< on the same line
    line,  ///< on adjacent lines
    blank, ///< with at least one blank line between them
};

/// Tracks the pieces of a text in order and measures the distance between them.
class source_lines {
public:
    /// @param contents must outlive this object
    explicit source_lines(std::string_view contents) : text(contents) {}

    /// Returns the gap between the end of the last piece, or the start of the text, and @p offset. It is
    /// `none` if @p offset comes first.
    [[nodiscard]] line_gap gap_before(std::uint64_t offset) const;
    void pass(const span& piece) { last_end = piece.end(); }
    [[nodiscard]] std::uint64_t end() const noexcept { return last_end; }

private:
    std::string_view text;
    std::uint64_t last_end = 0;
};

/// Returns the UTF-8 byte order mark of @p contents, or "" if there is none.
[[nodiscard]] std::string_view byte_order_mark_of(std::string_view contents);

} // namespace kvrimage
