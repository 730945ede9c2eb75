#pragma once

#include "kvrimage/operations/error_correction/ecc_code.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace kvrimage {

/// A scheme that has a name, and makes codes for words of the widths that it takes.
struct known_ecc_scheme {
    ecc_scheme_name called;
    /// Check bits of a word of @p data_width bits; 0 when the scheme does not take that width.
    std::uint32_t (*check_count)(std::uint32_t data_width);
    ecc_code (*make)(std::uint32_t data_width);
};

/// All of them.
[[nodiscard]] std::span<const known_ecc_scheme> known_ecc_schemes();

} // namespace kvrimage
