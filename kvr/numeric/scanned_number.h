#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// A number at the start of a text, as parsed by strtoul and strtol.
struct scanned_number {
    std::uint32_t magnitude = 0; ///< 0xFFFFFFFF if it does not fit
    bool negative = false;
    bool fits = true; ///< true if the magnitude fits 32 bits
    std::size_t characters =
        0; ///< length up to the first character after the number; 0 if there is no number

    /// Returns the result of strtoul with a 32-bit long: negated modulo 2^32 after a "-".
    [[nodiscard]] std::uint32_t as_strtoul() const noexcept {
        return negative && fits ? 0U - magnitude : magnitude;
    }
    /// True if the number fits 32 unsigned bits.
    [[nodiscard]] bool is_address() const noexcept { return fits && (!negative || magnitude == 0); }
};

/// Parses the number at the start of @p text in @p base (2, 8, 10 or 16): white space, "+" or "-", in base 16
/// an optional "0x", then all digits. No digits give 0.
[[nodiscard]] scanned_number scan_number(std::string_view text, unsigned base) noexcept;

} // namespace kvr
