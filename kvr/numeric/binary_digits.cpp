#include "kvr/numeric/binary_digits.h"

#include "kvr/numeric/digit_blocks.h"
#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/magnitude.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace kvr {

namespace {

using digit_bits = std::array<char, 4>;

/// Returns the bits of a character: "X" for each bit of a don't-care digit, "0" for each bit of a character
/// that is no digit.
constexpr digit_bits bits_of_character(std::size_t code, unsigned bits_per_digit) {
    digit_bits bits{};
    const unsigned value = digit_values[code];
    for (unsigned index = 0; index < bits_per_digit; ++index) {
        const bool is_set = value < 1U << bits_per_digit && (value >> (bits_per_digit - 1 - index) & 1) != 0;
        bits[index] = value == dont_care_digit ? 'X' : is_set ? '1' : '0';
    }
    return bits;
}

template <unsigned bits_per_digit>
constexpr auto bits_of_characters = [] {
    std::array<digit_bits, 256> all{};
    for (std::size_t code = 0; code < all.size(); ++code) {
        all[code] = bits_of_character(code, bits_per_digit);
    }
    return all;
}();

template <unsigned bits_per_digit>
void write_bits_of_one(char* place, char digit) {
    std::memcpy(place, bits_of_characters<bits_per_digit>[static_cast<unsigned char>(digit)].data(),
                bits_per_digit);
}

template <unsigned bits_per_digit>
void write_bits_of_all(char* place, std::string_view text) {
    // Unrolled four times: the loop itself would take as long as a digit.
    for (; text.size() >= 4; text.remove_prefix(4)) {
        for (std::size_t index = 0; index < 4; ++index) {
            write_bits_of_one<bits_per_digit>(place + index * bits_per_digit, text[index]);
        }
        place += std::size_t{4} * bits_per_digit;
    }
    for (const char digit : text) {
        write_bits_of_one<bits_per_digit>(place, digit);
        place += bits_per_digit;
    }
}

bool is_hexadecimal(int bits_per_digit) {
    return bits_per_digit == 4;
}

void append_shortest_binary(std::string& bits, const magnitude& number) {
    number.append_digits(bits, 1, std::max<std::size_t>(number.bit_length(), 1));
}

/// Returns a decimal digit of a text with any characters: the distance of the code of the character from that
/// of "0". Codes from 128 on are negative, regardless of the signedness of char.
int code_distance(char character) {
    return static_cast<signed char>(character) - '0';
}

/// Halves a list of digits from the first one on; an odd digit passes 10 to the next. C division truncates,
/// so a negative odd digit also passes 10 on, which differs from halving the whole number.
void halve_digit_by_digit(std::vector<int>& digits) {
    int carry = 0;
    for (int& digit : digits) {
        const int dividend = digit + carry;
        digit = dividend / 2;
        carry = dividend % 2 != 0 ? 10 : 0;
    }
}

/// Returns the number with the given digits, which may have any size from 0 on, each weighted by its place.
magnitude number_of_large_digits(const std::vector<int>& digits) {
    std::string text(digits.size() + 1, '0');
    int carry = 0;
    for (std::size_t index = digits.size(); index-- > 0;) {
        const int sum = digits[index] + carry;
        text[index + 1] = static_cast<char>('0' + sum % 10);
        carry = sum / 10;
    }
    text[0] = static_cast<char>('0' + carry);
    return magnitude::of_decimal(text);
}

/// Fast path. All characters must be digits: repeated halving of the list would then give the binary form of
/// the number, and so do the limbs.
void append_binary_of_number(std::string& bits, std::string_view digits) {
    append_shortest_binary(bits, magnitude::of_decimal(digits));
}

/// Exact path for any characters. Each halving gives a bit, least significant first, until no digit is above
/// 0. At most eight halvings remove every negative digit, since each at least halves its distance from 0.
/// From then on, the list halves like the number it represents, however large its digits are.
void append_binary_by_halving(std::string& bits, std::string_view text) {
    std::vector<int> digits(text.size());
    std::ranges::transform(text, digits.begin(), code_distance);
    std::string low_bits;
    bool is_used_up = false;
    while (!is_used_up && std::ranges::min(digits) < 0) {
        low_bits += digits.back() % 2 != 0 ? '1' : '0';
        halve_digit_by_digit(digits);
        is_used_up = std::ranges::max(digits) <= 0;
    }
    if (!is_used_up) {
        append_shortest_binary(bits, number_of_large_digits(digits));
    }
    bits.append(low_bits.rbegin(), low_bits.rend());
}

} // namespace

std::string int_to_binary_string(int value, int width) {
    if (value == -1 || width < 0) {
        return {};
    }
    std::string bits(static_cast<std::size_t>(std::max(width, 1)), '0');
    for (auto bit = bits.rbegin(); bit != bits.rend() && value != 0; ++bit) {
        *bit = value % 2 != 0 ? '1' : '0';
        value /= 2;
    }
    return bits;
}

void invert_binary_string(std::string& bits) {
    for (char& bit : bits) {
        bit = bit == '1' ? '0' : '1';
    }
}

std::string decimal_to_binary_string(std::string_view text, bool is_signed) {
    const bool is_negative = is_signed && text.at(0) == '-';
    text.remove_prefix(is_negative ? 1 : 0);
    std::string bits(is_signed ? 1 : 0, '0');
    if (are_decimal_digits(text)) {
        append_binary_of_number(bits, text);
    } else {
        append_binary_by_halving(bits, text);
    }
    if (is_negative) {
        invert_binary_string(bits);
    }
    return bits;
}

std::string binary_to_decimal_string(std::string_view bits, bool is_signed) {
    std::string text;
    std::string inverted;
    if (is_signed && bits.at(0) == '1') {
        inverted = bits.substr(1);
        invert_binary_string(inverted);
        bits = inverted;
        text += '-';
    }
    const std::size_t sign = text.size();
    magnitude::of_digits(bits, 1).append_decimal(text);
    std::reverse(text.begin() + static_cast<std::ptrdiff_t>(sign), text.end());
    return text;
}

std::string binary_to_grouped_radix_string(std::string_view bits, int bits_per_digit) {
    const std::size_t group_size = is_hexadecimal(bits_per_digit) ? 4 : 3;
    std::string text(bits.size() / group_size + (bits.size() % group_size != 0 ? 1 : 0), '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit) {
        const std::size_t group_start = bits.size() - std::min(bits.size(), group_size);
        unsigned value = 0;
        bool is_dont_care = false;
        for (const char bit : bits.substr(group_start)) {
            value = value * 2 + (bit == '1' ? 1 : 0);
            is_dont_care = is_dont_care || bit == 'X' || bit == 'x';
        }
        *digit = is_dont_care ? 'X' : upper_case_digits[value];
        bits = bits.substr(0, group_start);
    }
    return text;
}

void write_bits_of_digits(char* place, std::string_view text, unsigned bits_per_digit) {
    if (bits_per_digit == 4) {
        write_bits_of_all<4>(place, text);
    } else {
        write_bits_of_all<3>(place, text);
    }
}

std::string grouped_radix_to_binary_string(std::string_view text, int bits_per_digit) {
    const unsigned bits_written = is_hexadecimal(bits_per_digit) ? 4 : 3;
    std::string bits(bit_count(text.size(), bits_written), '\0');
    write_bits_of_digits(bits.data(), text, bits_written);
    return bits;
}

} // namespace kvr
