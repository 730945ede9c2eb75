#include "kvrimage/edit/digit_style.h"

#include "kvr/util/letter_case.h"

#include <algorithm>

namespace kvrimage {

namespace {

std::size_t digits_of(std::string_view number) noexcept {
    return number.size() - (number.starts_with('-') ? 1 : 0);
}

} // namespace

digit_style style_of(std::string_view text) noexcept {
    return {digits_of(text),
            std::ranges::any_of(text, kvr::is_lower_case) && std::ranges::none_of(text, kvr::is_upper_case)};
}

void style_finder::see(std::string_view number) noexcept {
    fewest_digits = std::min(fewest_digits, digits_of(number));
    lower = lower || std::ranges::any_of(number, kvr::is_lower_case);
    upper = upper || std::ranges::any_of(number, kvr::is_upper_case);
}

void style_finder::see_all(std::string_view numbers, std::size_t digits, bool has_lower_case) noexcept {
    fewest_digits = std::min(fewest_digits, digits);
    lower = lower || has_lower_case;
    upper = upper || std::ranges::any_of(numbers, kvr::is_upper_case);
}

digit_style style_finder::found() const noexcept {
    return {fewest_digits != static_cast<std::size_t>(-1) ? fewest_digits : 1, lower && !upper};
}

std::string in_style(std::string_view number, const digit_style& style) {
    const bool negative = number.starts_with('-');
    number.remove_prefix(negative ? 1 : 0);
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size() - 1));
    std::string text = negative ? "-" : "";
    text.append(std::max(style.digits, number.size()) - number.size(), '0');
    return text.append(style.lower_case ? kvr::to_lower_case(number) : std::string(number));
}

} // namespace kvrimage
