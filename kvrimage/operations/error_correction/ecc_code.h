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
    std::uint32_t position = 0; ///< in the protected word
    bool is_inverted = false;   ///< it is the opposite of the parity
    std::uint32_t first_limb = 0;
    /// The data bits whose parity it is, 64 a limb, from bit 64 * first_limb of the data on.
    std::vector<std::uint64_t> mask;

    /// True when the parity takes the data bit @p bit in.
    [[nodiscard]] bool covers(std::uint32_t bit) const noexcept;
};

/// Where the bits of a protected word are from: each is a data bit, or the parity of some data bits.
struct ecc_code {
    std::vector<std::uint32_t> data_positions; ///< in the protected word, of each data bit
    std::vector<ecc_check> checks;
    ecc_strength strength;

    [[nodiscard]] std::uint32_t data_width() const noexcept {
        return static_cast<std::uint32_t>(data_positions.size());
    }
    /// Of a protected word.
    [[nodiscard]] std::uint32_t width() const noexcept {
        return static_cast<std::uint32_t>(data_positions.size() + checks.size());
    }
};

/// The parity of the bits of @p data, 64 a limb, that @p check covers, inverted where it is: 0 or 1.
[[nodiscard]] unsigned check_bit(const ecc_check& check, std::span<const std::uint64_t> data) noexcept;

/// Which checks change when a bit of a protected word does: bit j for check j. At most 64 checks.
[[nodiscard]] std::vector<std::uint64_t> syndromes(const ecc_code& code);

/// What @p code makes of bits that have changed, by a look at each pair of bits. At most 64 checks; takes
/// quadratic time.
[[nodiscard]] ecc_strength strength_of(const ecc_code& code);

} // namespace kvrimage
