#pragma once

#include "kvrimage/image/address_range.h"
#include "kvrimage/image/radix.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem {

// Numbers as people write them: 31, -5, 0x1F, 0b1010, 0o17, with "_" between digits. A minus sign (U+2212)
// is as good as "-", since that is what gets copied from a text.

/// The minus sign in UTF-8.
inline constexpr std::string_view minus_sign = "\xE2\x88\x92";

/// @p text without the "_" that stand between two digits; any other one stays, and is found to be no digit.
[[nodiscard]] std::string without_underscores(std::string_view text);

/// A number of any length, taken apart.
struct human_value {
    std::string digits; ///< without prefix and "_"; with "-" where there is one
    kvrimage::radix radix = kvrimage::radix::dec;
};

/// Takes @p text for a value; the digits are not checked. Without a prefix it is signed decimal when it
/// begins with a minus, else unsigned decimal.
[[nodiscard]] human_value read_human_value(std::string_view text);

/// The number that @p text is; nothing when it is none or exceeds @p largest.
[[nodiscard]] std::optional<std::uint64_t> read_human_size(std::string_view text, std::uint64_t largest);

/// "FIRST..LAST", or one address; nothing when @p text is neither, descends, or exceeds 64 bits.
[[nodiscard]] std::optional<kvrimage::address_range> read_address_range(std::string_view text);

/// Why @p text, for which there is no range, is none: "the range ends before it begins; write 3..5" for
/// "5..3", else @p otherwise.
[[nodiscard]] std::string advice_on_range(std::string_view text, std::string_view otherwise);

} // namespace kvrmem
