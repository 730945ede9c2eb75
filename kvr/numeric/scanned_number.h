#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// A number at the start of a text, as strtoul and strtol parse it.
struct scanned_number {
    std::uint32_t magnitude = 0; ///< 0xFFFFFFFF when it does not fit
    bool negative = false;
    bool fits = true; ///< the magnitude fits 32 bits
    std::size_t characters =
        0; ///< up to the first character that does not belong to the number; 0: no number

    /// The result of strtoul where a long has 32 bits: negated modulo 2^32 after a "-".
    [[nodiscard]] std::uint32_t as_strtoul() const noexcept {
        return negative && fits ? 0U - magnitude : magnitude;
    }
    /// True when the number is one that 32 unsigned bits can hold.
    [[nodiscard]] bool is_address() const noexcept { return fits && (!negative || magnitude == 0); }
};

/// Reads the number at the start of @p text in @p base (2, 8, 10 or 16): white space, "+" or "-", in base
/// 16 an optional "0x", then digits up to the first character that is no digit. No digits read as 0.
[[nodiscard]] scanned_number scan_number(std::string_view text, unsigned base) noexcept;

} // namespace kvr
