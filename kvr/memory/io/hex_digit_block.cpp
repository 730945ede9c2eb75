#include "kvr/memory/io/hex_digit_block.h"

namespace kvr {

namespace {

// The loops below have no branches and no tables, so that compilers can vectorize them.

/// Returns nonzero if @p character is neither a decimal digit nor one of the six letters from @p letter_a on.
constexpr unsigned char is_no_digit(unsigned char character, unsigned char folded, unsigned char letter_a) {
    const auto digit = static_cast<unsigned char>(character - '0');
    const auto letter = static_cast<unsigned char>(folded - letter_a);
    return static_cast<unsigned char>(static_cast<unsigned char>(digit > 9) &
                                      static_cast<unsigned char>(letter > 5));
}

constexpr unsigned char case_bit = 'a' - 'A';

/// Among hexadecimal digits, "0" to "9" always have the case bit set, and only letters have the bit above it.
template <letter_case letters>
bool copy_in_case(std::string_view text, char* to) noexcept {
    unsigned char wrong = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto character = static_cast<unsigned char>(text[i]);
        const auto folded = static_cast<unsigned char>(character | case_bit);
        wrong = static_cast<unsigned char>(wrong | is_no_digit(character, folded, 'a'));
        const auto upper = static_cast<unsigned char>(character & ~((character & (case_bit * 2U)) / 2U));
        to[i] = static_cast<char>(letters == letter_case::lower ? folded : upper);
    }
    return wrong == 0;
}

} // namespace

bool copy_hex_digits(std::string_view text, letter_case letters, hex_digit_block& block) noexcept {
    return letters == letter_case::lower ? copy_in_case<letter_case::lower>(text, block.digits.data())
                                         : copy_in_case<letter_case::upper>(text, block.digits.data());
}

bool are_upper_hex_digits(std::string_view text) noexcept {
    unsigned char wrong = 0;
    for (const char each : text) {
        const auto character = static_cast<unsigned char>(each);
        wrong = static_cast<unsigned char>(wrong | is_no_digit(character, character, 'A'));
    }
    return wrong == 0;
}

} // namespace kvr
