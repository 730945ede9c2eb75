#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// Words of more bits are no numbers to plot, but rows of bits.
inline constexpr std::uint32_t widest_plotted_value = 64;

/// The values of words of up to 64 bits as keys: numbers that compare as the values do, whether those are
/// signed or not. A key is the distance from the least value that a word can have.
class value_order {
public:
    value_order(std::uint32_t width, bool is_signed) : bits(width), has_sign(is_signed) {}

    [[nodiscard]] std::uint32_t width() const noexcept { return bits; }
    [[nodiscard]] bool is_signed() const noexcept { return has_sign; }
    /// The key of the word @p text, in the form that memory_image holds; nothing for one that was never set
    /// or has don't-care bits.
    [[nodiscard]] std::optional<std::uint64_t> key_of(std::string_view text) const;
    [[nodiscard]] std::uint64_t key_of_zero() const noexcept;
    [[nodiscard]] std::uint64_t highest_key() const noexcept;
    /// The value in decimal.
    [[nodiscard]] std::string text_of(std::uint64_t key) const;

private:
    std::uint32_t bits;
    bool has_sign;
};

/// Values from the lowest to the highest key, which are never the same.
struct value_axis {
    std::uint64_t lowest;
    std::uint64_t highest;

    /// 0 for the lowest, 1 for the highest, and between them in proportion.
    [[nodiscard]] double position_of(std::uint64_t key) const noexcept;
};

/// The axis for values from @p lowest to @p highest. Zero is on it when it is no farther away than the values
/// are from each other, and when all of them are the same.
[[nodiscard]] value_axis axis_for(const value_order& order, std::uint64_t lowest, std::uint64_t highest);

/// A place on the axis with a round value.
struct value_tick {
    std::uint64_t key;
    std::string label;
};

/// At most about @p most ticks at the multiples of 1, 2 or 5 times a power of ten, from the lowest to the
/// highest. Labels are exact; large ones end in a power of ten ("500e6").
[[nodiscard]] std::vector<value_tick> ticks_of(const value_order& order, const value_axis& axis,
                                               std::uint32_t most);

} // namespace kvrmem
