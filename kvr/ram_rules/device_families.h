#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace kvr {

/// The groups of device families in the width-ratio rules. A family may be in several groups.
enum class family_group : std::uint8_t {
    none = 0,
    early = 1,        ///< byte enables restrict the ratios regardless of which port is wider
    newer = 2,        ///< families outside this group, including unknown ones, are older families
    bidir_ratio8 = 4, ///< bidirectional ports support ratio 8 with byte enables on the narrower port
};

constexpr family_group operator|(family_group left, family_group right) noexcept {
    return static_cast<family_group>(static_cast<unsigned>(left) | static_cast<unsigned>(right));
}

/// Returns whether @p groups contain @p group.
constexpr bool includes(family_group groups, family_group group) noexcept {
    return (static_cast<unsigned>(groups) & static_cast<unsigned>(group)) != 0;
}

/// A device family and its names.
struct device_family {
    family_group groups;
    std::span<const std::string_view> spellings; ///< the first one is the identifier
};

/// Returns all device families in the order of their series.
[[nodiscard]] std::span<const device_family> device_families() noexcept;

/// Returns the family with the spelling @p text, ignoring ASCII letter case; null for any other text. Nothing
/// is trimmed or allocated.
[[nodiscard]] const device_family* find_device_family(std::string_view text) noexcept;

/// Returns the groups of the family with the spelling @p text; none for an unknown one. Allocates nothing.
[[nodiscard]] family_group family_groups(std::string_view text) noexcept;

} // namespace kvr
