#pragma once

#include "kvrimage/operations/error_correction/ecc_scheme.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// A check bit of a protected word.
struct ecc_check {
    std::uint32_t position = 0; ///< its position in the protected word
    bool is_inverted = false;   ///< true if the check bit is the inverted parity
    std::uint32_t first_limb = 0;
    /// The data bits that the parity covers, 64 in each limb, from data bit 64 * first_limb on.
    std::vector<std::uint64_t> mask;

    /// True if the parity covers data bit @p bit.
    [[nodiscard]] bool covers(std::uint32_t bit) const noexcept;
};

/// The layout of a protected word: each bit is a data bit or the parity of some data bits.
struct ecc_code {
    std::vector<std::uint32_t> data_positions; ///< position of each data bit in the protected word
    std::vector<ecc_check> checks;
    ecc_strength strength;

    [[nodiscard]] std::uint32_t data_width() const noexcept {
        return static_cast<std::uint32_t>(data_positions.size());
    }
    /// Returns the width of a protected word.
    [[nodiscard]] std::uint32_t width() const noexcept {
        return static_cast<std::uint32_t>(data_positions.size() + checks.size());
    }
};

/// Returns the value of a check bit, 0 or 1, for @p data in limbs of 64 bits. Inversion is included.
[[nodiscard]] unsigned check_bit(const ecc_check& check, std::span<const std::uint64_t> data) noexcept;

/// Returns for each bit of a protected word the checks that change with it: bit j for check j. The code has
/// at most 64 checks.
[[nodiscard]] std::vector<std::uint64_t> syndromes(const ecc_code& code);

/// Determines the strength of @p code by testing all pairs of bits. Takes quadratic time. The code has at
/// most 64 checks.
[[nodiscard]] ecc_strength strength_of(const ecc_code& code);

} // namespace kvrimage
