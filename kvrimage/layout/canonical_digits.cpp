#include "kvrimage/layout/canonical_digits.h"

#include "kvr/numeric/digit_value.h"
#include "kvr/util/letter_case.h"
#include "kvrimage/edit/digit_style.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>

namespace kvrimage {

std::size_t canonical_word_digits(radix digits_radix, std::uint32_t width) {
    if (digits_radix == radix::dec || digits_radix == radix::uns) {
        return 1;
    }
    const std::size_t digits = most_characters_of_word(digits_radix, width);
    return digits <= most_canonical_digits ? digits : digits_of_the_text;
}

std::string canonical_number(std::string_view text, std::size_t digits) {
    std::string upper = kvr::to_upper_case(text);
    const std::string_view number = std::string_view(upper).substr(upper.starts_with('-') ? 1 : 0);
    constexpr unsigned most_digit = 16;
    const bool is_plain_number = !number.empty() && std::ranges::all_of(number, [](char character) {
        return kvr::digit_value(character) < most_digit;
    });
    if (is_plain_number && digits != digits_of_the_text) {
        return in_style(upper, {digits, false});
    }
    return upper;
}

} // namespace kvrimage
