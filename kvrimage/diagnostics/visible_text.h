#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kvrimage {

/// Text of a file as a terminal may show it: a tab is one blank, and of what is no UTF-8 or may not be shown
/// each byte is escaped, "\x00".
struct visible_text {
    std::string text;
    std::size_t columns = 0; ///< that it takes on a terminal
};

[[nodiscard]] visible_text make_visible(std::string_view bytes);

/// @p bytes for a message: visible, and cut to a limit, with "..." after it.
[[nodiscard]] std::string visible(std::string_view bytes);

/// A line of a file with a mark under a place in it.
struct source_excerpt {
    std::string line;
    std::string blanks; ///< before the mark
    std::string mark;   ///< "^~~~"
};

/// The excerpt of @p line for the @p length bytes from @p column (from 1) on. Of a long line it is a window
/// around the place, with "..." where something was left out.
[[nodiscard]] source_excerpt make_excerpt(std::string_view line, std::size_t column, std::size_t length);

} // namespace kvrimage
