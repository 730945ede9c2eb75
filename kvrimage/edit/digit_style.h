#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kvrimage {

/// How many digits a number has, and in which letter case.
struct digit_style {
    std::size_t digits = 1;
    bool lower_case = false;

    friend bool operator==(const digit_style&, const digit_style&) = default;
};

/// The style of the number @p text: its letters are lower-case when there are some, and no others.
[[nodiscard]] digit_style style_of(std::string_view text) noexcept;

/// Finds the style that many numbers have in common: the fewest digits, and lower-case letters when there are
/// no others.
class style_finder {
public:
    void see(std::string_view number) noexcept;
    /// The same for @p numbers of @p digits digits each, with characters between them that are no letters.
    void see_all(std::string_view numbers, std::size_t digits, bool has_lower_case) noexcept;
    /// As it is when no number was seen: one digit.
    [[nodiscard]] digit_style found() const noexcept;

private:
    std::size_t fewest_digits = static_cast<std::size_t>(-1);
    bool lower = false;
    bool upper = false;
};

/// @p number, digits with "-" before a negative one, in @p style: leading zeros are added or left out as far
/// as the value lets.
[[nodiscard]] std::string in_style(std::string_view number, const digit_style& style);

} // namespace kvrimage
