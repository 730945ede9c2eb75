#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace kvr {

/// The properties of a device family in the width-ratio rules; a family may be in several groups.
enum class family_group : std::uint8_t {
    none = 0,
    early = 1,        ///< byte enables restrict the ratios whichever port is the wider one
    newer = 2,        ///< every family outside this group, and every unknown one, is an older family
    bidir_ratio8 = 4, ///< two-way ports take ratio 8 with byte enables on the narrower port
};

constexpr family_group operator|(family_group left, family_group right) noexcept {
    return static_cast<family_group>(static_cast<unsigned>(left) | static_cast<unsigned>(right));
}

/// True when @p groups holds @p group.
constexpr bool includes(family_group groups, family_group group) noexcept {
    return (static_cast<unsigned>(groups) & static_cast<unsigned>(group)) != 0;
}

/// One device family and the texts that name it.
struct device_family {
    family_group groups;
    std::span<const std::string_view> spellings; ///< the first one is the family's identifier
};

/// All device families, in the order of their series.
[[nodiscard]] std::span<const device_family> device_families() noexcept;

/// The family that @p text names: a whole spelling, ASCII letters in either case, nothing trimmed. Null for
/// any other text. Allocates nothing.
[[nodiscard]] const device_family* find_device_family(std::string_view text) noexcept;

/// The groups of the family that @p text names; none for an unknown one. Allocates nothing.
[[nodiscard]] family_group family_groups(std::string_view text) noexcept;

} // namespace kvr
