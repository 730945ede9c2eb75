#pragma once

#include "kvrimage/image/radix.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// The largest depth, and the largest width that is a number at all.
inline constexpr std::uint64_t deepest_mif = 0x7FFFFFFF;

/// A number that a MIF states in digits.
struct mif_number {
    std::uint64_t value = 0;  ///< 2^64 - 1 when it is larger
    bool is_number = false;   ///< every character is a digit, and there is one
    bool is_negative = false; ///< the digits follow a "-", and are not all 0
};

/// The number @p text in @p digits_radix, of which `dec` and `uns` are the same here.
[[nodiscard]] mif_number mif_number_of(std::string_view text, radix digits_radix) noexcept;

/// A number with the prefix of another language: "0x1F", "8'hFF", "$1F".
struct prefixed_number {
    std::string_view digits;
    radix base; ///< `uns` for decimal ones
};
[[nodiscard]] std::optional<prefixed_number> prefixed_number_of(std::string_view text) noexcept;

/// The radix called @p name in a MIF, by its short or its full name, in any letter case.
[[nodiscard]] std::optional<radix> mif_radix_of(std::string_view name) noexcept;
/// What the library kvr takes the text after the "=" for; nothing: for no radix.
[[nodiscard]] std::optional<radix> kvr_radix_of(std::string_view text);
/// "HEX" for "HXE": the short name that differs from @p name in one letter, or has the same letters; "" for
/// none.
[[nodiscard]] std::string_view nearest_radix_name(std::string_view name);

} // namespace kvrimage
