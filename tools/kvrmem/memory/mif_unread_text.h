#pragma once

#include "kvr/memory/memory_types.h"
#include "kvr/memory/mif/mif_content.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace kvrmem {

// What the library reads without a word though it can hardly be meant so. A span that is not found means that
// there is nothing of that kind.

inline constexpr std::string_view mif_blanks = " \t";

/// True when every character of @p digits is a digit of @p radix.
[[nodiscard]] bool is_number_in(std::string_view digits, KVR_MEMORY_RADIXES radix);

/// The first value beyond the addresses of a range.
[[nodiscard]] kvr::text_span find_surplus_value(const kvr::mif_content& content);

/// What stands behind the first ";" of @p text, other than blanks and more ";".
[[nodiscard]] kvr::text_span find_text_behind_semicolon(std::string_view text);

/// The characters up to the ";" that belong to no address and no value: the library takes them for blanks, so
/// that "1G2" is 1 and 2.
[[nodiscard]] std::vector<kvr::text_span> find_stray_characters(const kvr::mif_content& content);

/// True when the line @p piece goes on with the value of the line before: a line break inside a run of digits
/// does not end the value.
[[nodiscard]] bool continues_a_value(const kvr::mif_content& content, const kvr::line_piece& piece);

/// What stands behind a comment that closes, of @p rest, the text of a line behind a "%".
[[nodiscard]] kvr::text_span find_text_behind_comment(std::string_view rest);

/// What stands in @p rest, the text behind "END", other than blanks and ";".
[[nodiscard]] kvr::text_span find_text_behind_end(std::string_view rest);

/// @p text without the blanks at both ends.
[[nodiscard]] kvr::text_span trimmed_span(std::string_view text, std::size_t begin = 0);

} // namespace kvrmem
