#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kvrimage {

/// Text that is safe to show on a terminal. Tabs become one blank. Each byte of invalid UTF-8 or of a
/// character that must not be shown is escaped ("\x00").
struct visible_text {
    std::string text;
    std::size_t columns = 0; ///< width on a terminal
};

[[nodiscard]] visible_text make_visible(std::string_view bytes);

/// Returns @p bytes for a message: made visible, and cut after 40 bytes with "...".
[[nodiscard]] std::string visible(std::string_view bytes);

/// A source line with a mark under one place.
struct source_excerpt {
    std::string line;
    std::string blanks; ///< before the mark
    std::string mark;   ///< "^~~~"
};

/// Returns the excerpt of @p line for @p length bytes from @p column on (from 1). A long line is cut around
/// the place, with "..." where text is omitted.
[[nodiscard]] source_excerpt make_excerpt(std::string_view line, std::size_t column, std::size_t length);

} // namespace kvrimage
