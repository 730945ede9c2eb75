#pragma once

#include "kvrimage/diagnostics/span.h"

#include <cstdint>
#include <string_view>

namespace kvrimage {

/// How far apart two pieces of a text are.
enum class line_gap : std::uint8_t {
    none,  ///< they share a line
    line,  ///< they are in neighbouring lines
    blank, ///< there is a blank line between them, or more
};

/// Goes over the pieces of a text in their order, and says how far apart they are.
class source_lines {
public:
    /// @param contents kept alive by the caller
    explicit source_lines(std::string_view contents) : text(contents) {}

    /// Between the end of the last piece that was passed, or the front of the text, and @p offset; none when
    /// that comes first.
    [[nodiscard]] line_gap gap_before(std::uint64_t offset) const;
    void pass(const span& piece) { last_end = piece.end(); }
    [[nodiscard]] std::uint64_t end() const noexcept { return last_end; }

private:
    std::string_view text;
    std::uint64_t last_end = 0;
};

/// The mark of UTF-8 that @p contents begin with; "" for none.
[[nodiscard]] std::string_view byte_order_mark_of(std::string_view contents);

} // namespace kvrimage
