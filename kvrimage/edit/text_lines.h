#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kvrimage {

/// Where the line that @p offset lies in begins.
[[nodiscard]] std::size_t start_of_line(std::string_view text, std::size_t offset);

/// Where the line that @p offset lies in ends: the offset of its LF or CR LF, or the end of @p text.
[[nodiscard]] std::size_t end_of_line(std::string_view text, std::size_t offset);

/// Where the line after the one that @p offset lies in begins; the end of @p text when there is none.
[[nodiscard]] std::size_t next_line(std::string_view text, std::size_t offset);

/// "\n" or "\r\n", as the line before the one at @p line_start ends; that of the line itself when there is
/// none before it;
/// "\n" in a text without line ends.
[[nodiscard]] std::string_view line_end_at(std::string_view text, std::size_t line_start);

/// @p line as a last line of @p text, with the line end that the others have.
[[nodiscard]] std::string as_last_line(std::string_view text, std::string_view line);

} // namespace kvrimage
