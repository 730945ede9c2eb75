#pragma once

#include "kvrimage/export.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// Radix of numbers. `dec` is two's complement, `uns` is unsigned decimal.
enum class radix : std::uint8_t { bin, oct, dec, uns, hex };

/// Order of the bytes of a word. `little`: the least significant byte comes first.
enum class byte_order : std::uint8_t { little, big };

/// Returns "BIN", "OCT", "DEC", "UNS" or "HEX".
[[nodiscard]] KVRIMAGE_API std::string_view title_of(radix of) noexcept;

/// Returns the radix with @p name ("bin", "oct", "dec", "uns", "hex"), ignoring letter case, or nothing if
/// there is none.
[[nodiscard]] KVRIMAGE_API std::optional<radix> radix_of_name(std::string_view name) noexcept;

} // namespace kvrimage
