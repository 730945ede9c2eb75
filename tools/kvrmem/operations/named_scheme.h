#pragma once

#include "kvrimage/operations/error_correction/ecc_scheme.h"

#include <cstdint>
#include <string>

namespace kvrmem {

// Schemes as users name them: one of kvrimage::ecc_scheme::known(), or "masks:FILE". Such a file has the mask
// of check bit 0 first, one hexadecimal number a line, and perhaps a line "invert HEX" with the check bits to
// invert; "#" begins a comment.

/// The scheme @p name for words of @p width bits.
/// @throws std::invalid_argument when there is none
/// @throws kvrimage::file_error when the file of masks cannot be read
/// @throws tool_error (bad input) when it holds something else
[[nodiscard]] kvrimage::ecc_scheme scheme_for_data(const std::string& name, std::uint32_t width);

/// The same for words that have @p width bits with their check bits.
[[nodiscard]] kvrimage::ecc_scheme scheme_of_protected(const std::string& name, std::uint32_t width);

/// What the masks of @p scheme, called @p name, cannot do: "; these masks do not correct each wrong bit"; ""
/// when they can, and for a scheme with a name of its own.
[[nodiscard]] std::string weakness_of(const std::string& name, const kvrimage::ecc_scheme& scheme);

} // namespace kvrmem
