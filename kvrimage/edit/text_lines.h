#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kvrimage {

/// Returns the start of the line that contains @p offset.
[[nodiscard]] std::size_t start_of_line(std::string_view text, std::size_t offset);

/// Returns the end of the line that contains @p offset: the offset of its LF or CR LF, or the end of @p text.
[[nodiscard]] std::size_t end_of_line(std::string_view text, std::size_t offset);

/// Returns the start of the line after the one that contains @p offset, or the end of @p text.
[[nodiscard]] std::size_t next_line(std::string_view text, std::size_t offset);

/// Returns the line end of the line before @p line_start, "\n" or "\r\n". Without such a line it is that of
/// the line itself, and "\n" in a text without line ends.
[[nodiscard]] std::string_view line_end_at(std::string_view text, std::size_t line_start);

/// Returns @p line as a last line to append to @p text: with the line end of @p text, and one before it if
/// the last line has none.
[[nodiscard]] std::string as_last_line(std::string_view text, std::string_view line);

} // namespace kvrimage
