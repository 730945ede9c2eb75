#include "kvr/memory/io/predicted_address.h"

#include "kvr/numeric/digit_value.h"
#include "kvr/util/letter_case.h"

#include <cassert>

namespace kvr {

void predicted_address::learn(std::string_view before, std::string_view digits, unsigned number_base,
                              std::uint64_t address, std::uint64_t count) noexcept {
    assert(!digits.empty());
    const bool goes_on = address == next;
    next = address + count;
    length = 0;
    if (!goes_on || before.size() > readable) {
        return; // addresses that jump are not predicted
    }
    length = before.size();
    first_digit = static_cast<std::size_t>(digits.data() - before.data());
    last_digit = first_digit + digits.size() - 1;
    base = number_base;
    if (std::any_of(digits.begin(), digits.end(), is_lower_case)) {
        lower_case = true;
    } else if (std::any_of(digits.begin(), digits.end(), is_upper_case)) {
        lower_case = false;
    }
    std::copy(before.begin(), before.end(), text.begin());
    for (std::size_t i = 0; i < masks.size(); ++i) {
        const std::size_t compared = std::clamp<std::size_t>(length, 8 * i, 8 * i + 8) - 8 * i;
        masks[i] = compared == 8 ? ~std::uint64_t{0} : (std::uint64_t{1} << (8 * compared)) - 1;
    }
    for (std::size_t i = 0; i < words.size(); ++i) {
        words[i] = load_eight(text.data() + 8 * i);
    }
    add_to_digits(count);
}

/// Adds @p count, at least 1, to the digits in the text. Predicts nothing if the sum needs more digits.
void predicted_address::add_to_digits(std::uint64_t count) noexcept {
    std::uint64_t carry = count;
    for (std::size_t at = last_digit + 1; carry != 0 && at-- > first_digit;) {
        std::uint64_t value = digit_value(text[at]) + carry;
        carry = 0;
        if (value >= 2 * std::uint64_t{base}) {
            carry = value / base;
            value %= base;
        } else if (value >= base) {
            carry = 1;
            value -= base;
        }
        const char digit = upper_case_digits[value];
        put_digit(at, lower_case ? lower_case_of(digit) : digit);
    }
    if (carry != 0) {
        length = 0;
    }
    const std::uint64_t last_value = digit_value(text[last_digit]);
    steps = steps_left = (last_value < 10 ? std::min(base, 10U) : base) - 1 - last_value;
}

/// Updates text and words; loading the words from the text would stall until the characters are stored.
void predicted_address::put_digit(std::size_t at, char digit) noexcept {
    text[at] = digit;
    const std::size_t bit = at % 8 * 8;
    std::uint64_t& word = words[at / 8];
    word = (word & ~(std::uint64_t{0xFF} << bit)) | (std::uint64_t{static_cast<unsigned char>(digit)} << bit);
}

} // namespace kvr
