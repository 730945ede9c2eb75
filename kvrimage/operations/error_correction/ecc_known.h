#pragma once

#include "kvrimage/operations/error_correction/ecc_code.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace kvrimage {

/// A named scheme that makes codes for certain word widths.
struct known_ecc_scheme {
    ecc_scheme_name called;
    /// Returns the number of check bits for @p data_width data bits, or 0 if the scheme does not support this
    /// width.
    std::uint32_t (*check_count)(std::uint32_t data_width);
    ecc_code (*make)(std::uint32_t data_width);
};

/// Returns all named schemes.
[[nodiscard]] std::span<const known_ecc_scheme> known_ecc_schemes();

} // namespace kvrimage
