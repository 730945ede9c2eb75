#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvrmem {

/// A file's name without its folders, fit for any picture: valid UTF-8 without control characters and
/// without those that change the direction of the text around them. U+FFFD stands in for each of those and
/// for each byte that is no UTF-8.
[[nodiscard]] std::string shown_name(std::string_view path);

/// @p text, valid UTF-8, with "?" for every character beyond ASCII.
[[nodiscard]] std::string in_ascii(std::string_view text);

/// The number of characters of @p text, valid UTF-8.
[[nodiscard]] std::size_t characters_of(std::string_view text) noexcept;

/// @p text, valid UTF-8, with @p ellipsis in place of its middle where it has more than @p most characters.
[[nodiscard]] std::string shortened(std::string_view text, std::size_t most, std::string_view ellipsis);

/// @p text as it stands between the tags of an XML document or within the quotes of an attribute.
[[nodiscard]] std::string xml_escaped(std::string_view text);

/// True when the environment says that the terminal shows UTF-8: the first of LC_ALL, LC_CTYPE and LANG that
/// is set to anything decides. Where none is, it is the C locale, which is ASCII.
[[nodiscard]] bool locale_has_utf8();

} // namespace kvrmem
