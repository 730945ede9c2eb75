#pragma once

#include "kvrimage/image/radix.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// The largest depth, and the largest value of the width setting.
inline constexpr std::uint64_t deepest_mif = 0x7FFFFFFF;

/// A number written in digits.
struct mif_number {
    std::uint64_t value = 0;  ///< 2^64 - 1 if it is larger
    bool is_number = false;   ///< at least one character, and all are digits
    bool is_negative = false; ///< the digits follow a "-" and are not all 0
};

/// Parses @p text in @p digits_radix. `dec` and `uns` are equivalent here.
[[nodiscard]] mif_number mif_number_of(std::string_view text, radix digits_radix) noexcept;

/// A number with the prefix of another language: "0x1F", "8'hFF", "$1F".
struct prefixed_number {
    std::string_view digits;
    radix base; ///< `uns` for decimal digits
};
[[nodiscard]] std::optional<prefixed_number> prefixed_number_of(std::string_view text) noexcept;

/// Returns the radix with this short or full MIF name, ignoring letter case.
[[nodiscard]] std::optional<radix> mif_radix_of(std::string_view name) noexcept;
/// Returns the radix that the library kvr recognizes in the text after "="; nothing if it recognizes none.
[[nodiscard]] std::optional<radix> kvr_radix_of(std::string_view text);
/// Returns the short radix name that differs from @p name in one letter or has the same letters ("HEX" for
/// "HXE"); "" if there is none.
[[nodiscard]] std::string_view nearest_radix_name(std::string_view name);

} // namespace kvrimage
