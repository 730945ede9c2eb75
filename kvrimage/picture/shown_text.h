#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kvrimage {

/// A file's name without its folders, fit for any picture: valid UTF-8 without control characters and without
/// those that change the direction of the text around them. U+FFFD replaces each of those and each byte that
/// is no UTF-8.
[[nodiscard]] std::string shown_name(std::string_view path);

/// @p text, valid UTF-8, with "?" for every character beyond ASCII.
[[nodiscard]] std::string in_ascii(std::string_view text);

/// @p text, valid UTF-8, with @p ellipsis in place of its middle where it has more than @p most characters.
[[nodiscard]] std::string shortened(std::string_view text, std::size_t most, std::string_view ellipsis);

} // namespace kvrimage
