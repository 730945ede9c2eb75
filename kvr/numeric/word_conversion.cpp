#include "kvr/numeric/word_conversion.h"

#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/magnitude.h"
#include "kvr/numeric/radix_conversion.h"

#include <algorithm>
#include <cstddef>

namespace kvr {

namespace {

/// A word all of whose bits are known.
struct plain_word {
    magnitude bits;
    std::size_t length; ///< leading zero bits count; never 0
};

/// The zeros in front of a short word that its text in @p radix tells: one of them shows that a decimal
/// number is not negative, and the others would only cost memory.
std::size_t telling_zeros(std::size_t missing_bits, KVR_MEMORY_RADIXES radix) {
    if (is_decimal(radix)) {
        return std::min<std::size_t>(missing_bits, 1);
    }
    return bits_per_digit(radix) != 0 ? missing_bits : 0;
}

/// Cuts on the left or fills up with "0"; never a sign extension.
void resize_binary_string(std::string& bits, std::size_t width, KVR_MEMORY_RADIXES target) {
    if (width < bits.size()) {
        bits.erase(0, bits.size() - width);
    } else {
        bits.insert(0, telling_zeros(width - bits.size(), target), '0');
    }
}

std::optional<plain_word> read_decimal_word(std::string_view text, bool is_signed) {
    const bool is_negative = is_signed && text.front() == '-';
    text.remove_prefix(is_negative ? 1 : 0);
    if (!std::ranges::all_of(text, is_decimal_digit)) {
        return std::nullopt;
    }
    plain_word word{magnitude::of_decimal(text), 0};
    word.length = std::max<std::size_t>(word.bits.bit_length(), 1) + (is_signed ? 1 : 0);
    if (is_negative) {
        word.bits.invert_low_bits(word.length);
    }
    return word;
}

std::optional<plain_word> read_plain_word(std::string_view text, KVR_MEMORY_RADIXES radix) {
    if (text.empty()) {
        return std::nullopt;
    }
    if (is_decimal(radix)) {
        return read_decimal_word(text, radix == RADIX_DEC);
    }
    const unsigned bits = bits_per_digit(radix);
    if (bits < 2 || text.find_first_of("Xx") != std::string_view::npos) {
        return std::nullopt;
    }
    return plain_word{magnitude::of_digits(text, bits), text.size() * bits};
}

void resize_plain_word(plain_word& word, std::size_t width) {
    word.bits.keep_low_bits(width);
    word.length = width;
}

std::string write_decimal_word(plain_word& word, bool is_signed) {
    std::string text;
    if (is_signed && word.bits.bit(word.length - 1)) {
        text += '-';
        word.bits.keep_low_bits(word.length - 1);
        word.bits.invert_low_bits(word.length - 1);
    }
    const std::size_t sign = text.size();
    word.bits.append_decimal(text);
    // Least significant digit first; callers rely on it.
    std::reverse(text.begin() + static_cast<std::ptrdiff_t>(sign), text.end());
    return text;
}

std::string write_plain_word(plain_word& word, KVR_MEMORY_RADIXES radix) {
    if (is_decimal(radix)) {
        return write_decimal_word(word, radix == RADIX_DEC);
    }
    const unsigned bits = bits_per_digit(radix);
    std::string text;
    word.bits.append_digits(text, bits, digit_count(word.length, bits));
    return text;
}

char upper_case_digit(char digit, unsigned bits) {
    const unsigned value = digit_value(digit);
    if (value == dont_care_digit) {
        return 'X';
    }
    return value < 1U << bits ? upper_case_digits[value] : '0';
}

/// From a radix to itself. Groups are counted from the right on both sides, so each digit stays what it is;
/// only that at the top of the word may lose bits.
std::string resize_digits(std::string_view text, unsigned bits, std::size_t width) {
    const std::size_t count = width == 0 ? text.size() : digit_count(width, bits);
    const std::size_t kept = std::min(count, text.size());
    std::string result(count, '0');
    std::ranges::transform(text.substr(text.size() - kept), result.end() - static_cast<std::ptrdiff_t>(kept),
                           [bits](char digit) { return upper_case_digit(digit, bits); });
    const std::size_t bits_at_top = width % bits;
    if (bits_at_top != 0 && result.front() != 'X') {
        result.front() = upper_case_digits[digit_value(result.front()) & ((1U << bits_at_top) - 1)];
    }
    return result;
}

} // namespace

std::string convert_word_through_binary_digits(const std::string& text, KVR_MEMORY_RADIXES from,
                                               KVR_MEMORY_RADIXES to, unsigned int width) {
    std::string bits = convert_to_binary_string(text, static_cast<int>(from));
    if (width != 0) {
        resize_binary_string(bits, width, to);
    }
    return to == RADIX_BIN ? bits : convert_from_binary_string(bits, static_cast<int>(to));
}

std::optional<std::string> convert_word_directly(std::string_view text, KVR_MEMORY_RADIXES from,
                                                 KVR_MEMORY_RADIXES to, unsigned int width) {
    if (!is_decimal(to) && bits_per_digit(to) < 2) {
        return std::nullopt;
    }
    if (from == to && !is_decimal(from)) {
        return resize_digits(text, bits_per_digit(from), width);
    }
    std::optional<plain_word> word = read_plain_word(text, from);
    if (!word) {
        return std::nullopt;
    }
    if (width != 0) {
        resize_plain_word(*word, width);
    }
    return write_plain_word(*word, to);
}

} // namespace kvr
