#pragma once

#include "kvrimage/operations/error_correction/ecc_scheme.h"

#include <cstdint>
#include <string>

namespace kvrmem {

// Names of schemes for users: those of kvrimage::ecc_scheme::known(), and "masks:FILE". The file has one
// hexadecimal mask per line, beginning with that of check bit 0, and optionally a line "invert HEX" with the
// check bits to invert. "#" begins a comment.

/// Returns the scheme @p name for words of @p width bits.
/// @throws std::invalid_argument if there is none
/// @throws kvrimage::file_error if the file of masks cannot be read
/// @throws tool_error (bad input) if the file is invalid
[[nodiscard]] kvrimage::ecc_scheme scheme_for_data(const std::string& name, std::uint32_t width);

/// Returns the scheme for words whose @p width includes the check bits.
[[nodiscard]] kvrimage::ecc_scheme scheme_of_protected(const std::string& name, std::uint32_t width);

/// Returns the limitation of the masks of @p scheme with the name @p name, "; these masks do not correct each
/// wrong bit"; "" if there is none, and for known schemes.
[[nodiscard]] std::string weakness_of(const std::string& name, const kvrimage::ecc_scheme& scheme);

} // namespace kvrmem
