#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kvrimage {

/// Returns the name of a file without its directories, fit for any picture: valid UTF-8 without control
/// characters and without characters that change the direction of text. U+FFFD replaces each of these and
/// each invalid byte.
[[nodiscard]] std::string shown_name(std::string_view path);

/// Returns @p text, valid UTF-8, with "?" for each character outside ASCII.
[[nodiscard]] std::string in_ascii(std::string_view text);

/// Returns @p text, valid UTF-8, with its middle replaced by @p ellipsis if it has more than @p most
/// characters.
[[nodiscard]] std::string shortened(std::string_view text, std::size_t most, std::string_view ellipsis);

} // namespace kvrimage
