#pragma once

#include "kvrimage/export.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// How digits are read and shown. `dec` is two's complement, `uns` unsigned.
enum class radix : std::uint8_t { bin, oct, dec, uns, hex };

/// Which byte of a word comes first: `little` the one of its lowest bits.
enum class byte_order : std::uint8_t { little, big };

/// "BIN", "OCT", "DEC", "UNS", "HEX".
[[nodiscard]] KVRIMAGE_API std::string_view title_of(radix of) noexcept;

/// The radix called @p name ("bin", "oct", "dec", "uns", "hex"), letter case ignored; nothing for other
/// names.
[[nodiscard]] KVRIMAGE_API std::optional<radix> radix_of_name(std::string_view name) noexcept;

} // namespace kvrimage
