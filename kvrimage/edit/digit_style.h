#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kvrimage {

/// Number of digits and letter case of a number.
struct digit_style {
    std::size_t digits = 1;
    bool lower_case = false;

    friend bool operator==(const digit_style&, const digit_style&) = default;
};

/// Returns the style of the number @p text. It is lower case if the number has lower-case letters only.
[[nodiscard]] digit_style style_of(std::string_view text) noexcept;

/// Finds the common style of many numbers: the fewest digits, and lower case if there are lower-case letters
/// only.
class style_finder {
public:
    void see(std::string_view number) noexcept;
    /// Adds @p numbers with @p digits digits each. The characters between them must not be letters.
    void see_all(std::string_view numbers, std::size_t digits, bool has_lower_case) noexcept;
    /// Returns the common style, or one digit if there were no numbers.
    [[nodiscard]] digit_style found() const noexcept;

private:
    std::size_t fewest_digits = static_cast<std::size_t>(-1);
    bool lower = false;
    bool upper = false;
};

/// Returns @p number, digits with an optional "-", in @p style. Leading zeros are added or removed to match
/// the number of digits; significant digits always stay.
[[nodiscard]] std::string in_style(std::string_view number, const digit_style& style);

} // namespace kvrimage
