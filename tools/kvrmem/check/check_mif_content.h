#pragma once

#include "kvr/memory/mif/mif_content.h"
#include "tools/kvrmem/check/mif_check.h"

#include <cstdint>
#include <string_view>

namespace kvrmem {

// Codes of warnings that are taken back where the header is what is wrong.
inline constexpr const char* bad_digit_code = "bad-digit";
inline constexpr const char* too_wide_code = "too-wide";
inline constexpr const char* address_digit_code = "address-digit";

/// Adds a fault for each statement that begins within another one; true when there is one.
///
/// @param shift is added to the line numbers of @p content to get those of the file.
bool add_inner_statements(mif_check& check, const kvr::mif_content& content, severity level,
                          std::int64_t shift);

/// Reads @p text into @p memory with the library's reader, which goes on behind a fault, and judges what it
/// finds and what it reads without a word. That there is no END is only noted. True when the library reads
/// the text.
///
/// @param line_shift is added to the reader's line numbers to get those of the file.
bool check_mif_content(mif_check& check, std::string_view text, std::int64_t line_shift,
                       kvr::mif_memory& memory);

} // namespace kvrmem
