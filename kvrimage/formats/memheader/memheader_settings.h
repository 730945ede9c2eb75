#pragma once

#include "kvrimage/image/radix.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

enum class memheader_setting_name : std::uint8_t { format, depth, width, address_radix, data_radix };
inline constexpr std::size_t memheader_setting_count =
    static_cast<std::size_t>(memheader_setting_name::data_radix) + 1;

/// A setting of the header and its numeric range; none for a name.
struct memheader_setting {
    memheader_setting_name is;
    std::string_view name;
    std::uint64_t lowest;
    std::uint64_t highest;
    std::string_view values; ///< for a message
};

/// The notation of words according to "#Format".
struct memheader_layout {
    std::string_view name;
    radix digits;
    bool is_addressed;
};

[[nodiscard]] const memheader_setting& memheader_setting_of(memheader_setting_name name) noexcept;
/// Returns the setting with this name, ignoring letter case; null if there is none.
[[nodiscard]] const memheader_setting* memheader_setting_of(std::string_view name) noexcept;

/// Returns the layout with this name, ignoring letter case; null if there is none.
[[nodiscard]] const memheader_layout* memheader_layout_of(std::string_view name) noexcept;

} // namespace kvrimage
