#pragma once

#include "kvrimage/image/address_range.h"
#include "kvrimage/image/radix.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem {

// Numbers as users write them: 31, -5, 0x1F, 0b1010, 0o17, with "_" between digits. The minus sign (U+2212),
// which may be copied from a text, is equivalent to "-".

/// The minus sign in UTF-8.
inline constexpr std::string_view minus_sign = "\xE2\x88\x92";

/// Returns @p text without "_" between two digits. Other "_" stay and are rejected as digits.
[[nodiscard]] std::string without_underscores(std::string_view text);

/// The parts of a number of any length.
struct human_value {
    std::string digits; ///< without prefix and "_"; with "-" for negative numbers
    kvrimage::radix radix = kvrimage::radix::dec;
};

/// Splits @p text into its parts without checking the digits. Without a prefix it is signed decimal if it
/// begins with a minus, else unsigned decimal.
[[nodiscard]] human_value read_human_value(std::string_view text);

/// Parses @p text as a number; nothing if it is invalid or exceeds @p largest.
[[nodiscard]] std::optional<std::uint64_t> read_human_size(std::string_view text, std::uint64_t largest);

/// Parses "FIRST..LAST" or one address; nothing if @p text is invalid, descends, or exceeds 64 bits.
[[nodiscard]] std::optional<kvrimage::address_range> read_address_range(std::string_view text);

/// Returns why @p text is not a range: "the range ends before it begins; write 3..5" for "5..3", else
/// @p otherwise.
[[nodiscard]] std::string advice_on_range(std::string_view text, std::string_view otherwise);

} // namespace kvrmem
