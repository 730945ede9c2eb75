#include "kvr/numeric/word_conversion.h"

#include "kvr/numeric/binary_digits.h"
#include "kvr/numeric/bit_count.h"
#include "kvr/numeric/decimal_conversion.h"
#include "kvr/numeric/digit_blocks.h"
#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/magnitude.h"
#include "kvr/numeric/radix_conversion.h"

#include <algorithm>
#include <cstddef>

namespace kvr {

namespace {

/// A word without don't-care bits.
struct plain_word {
    magnitude bits;
    std::size_t length = 0; ///< including leading zero bits; never 0 once the word was read
};

/// Returns the number of leading zeros that the text in @p radix needs. Decimal needs only one, which shows
/// that the number is not negative; others would only take memory.
std::size_t telling_zeros(std::size_t missing_bits, KVR_MEMORY_RADIXES radix) {
    if (is_decimal(radix)) {
        return std::min<std::size_t>(missing_bits, 1);
    }
    return bits_per_digit(radix) != 0 ? missing_bits : 0;
}

/// Cuts the bits on the left or pads them with "0"; never extends the sign.
void resize_binary_string(std::string& bits, std::size_t width, KVR_MEMORY_RADIXES target) {
    if (width < bits.size()) {
        bits.erase(0, bits.size() - width);
    } else {
        bits.insert(0, telling_zeros(width - bits.size(), target), '0');
    }
}

bool read_decimal_word(plain_word& word, std::string_view text, bool is_signed) {
    const bool is_negative = is_signed && text.front() == '-';
    text.remove_prefix(is_negative ? 1 : 0);
    if (!are_decimal_digits(text)) {
        return false;
    }
    word.bits.read_decimal(text);
    word.length = std::max<std::size_t>(word.bits.bit_length(), 1) + (is_signed ? 1 : 0);
    if (is_negative) {
        word.bits.invert_low_bits(word.length);
    }
    return true;
}

bool read_plain_word(plain_word& word, std::string_view text, KVR_MEMORY_RADIXES radix) {
    if (text.empty()) {
        return false;
    }
    if (is_decimal(radix)) {
        return read_decimal_word(word, text, radix == RADIX_DEC);
    }
    const unsigned bits = bits_per_digit(radix);
    word.length = bit_count(text.size(), bits);
    return bits > 1 && word.bits.read_known_digits(text, bits);
}

void resize_plain_word(plain_word& word, std::size_t width) {
    word.bits.keep_low_bits(width);
    word.length = width;
}

/// Resizes the text to @p size characters, all of which the caller must write. If this throws, the text is
/// unchanged.
inline char* room_for(std::string& text, std::size_t size) {
    if (size > text.capacity()) {
        text = std::string(size, '\0');
    } else if (size != text.size()) {
        text.resize(size);
    }
    return text.data();
}

void write_decimal_word(std::string& output, plain_word& word, bool is_signed) {
    const bool is_negative = is_signed && word.bits.bit(word.length - 1);
    if (is_negative) {
        word.bits.invert_low_bits(word.length - 1);
    }
    const limb_buffer chunks = word.bits.decimal_chunks();
    const std::size_t count = std::max<std::size_t>(count_digits(chunks.limbs()), 1);
    char* place = room_for(output, count + (is_negative ? 1 : 0));
    if (is_negative) {
        *place++ = '-';
    }
    // Least significant digit first; callers rely on it.
    write_reversed_digits(place, chunks.limbs(), count);
}

void write_plain_word(std::string& output, plain_word& word, KVR_MEMORY_RADIXES radix) {
    if (is_decimal(radix)) {
        write_decimal_word(output, word, radix == RADIX_DEC);
        return;
    }
    const unsigned bits = bits_per_digit(radix);
    const std::size_t count = digit_count(word.length, bits);
    word.bits.write_low_digits(room_for(output, count), bits, count);
}

char upper_case_digit(char digit, unsigned bits) {
    const unsigned value = digit_value(digit);
    if (value == dont_care_digit) {
        return 'X';
    }
    return value < 1U << bits ? upper_case_digits[value] : '0';
}

/// Converts a radix to itself. Groups are counted from the right on both sides, so digits are unchanged; only
/// the top digit may lose bits.
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

/// Writes the low bits of a word that loses some at the top: @p size is below the bits of all digits.
void write_low_bits_of_word(char* place, std::string_view text, unsigned bits, std::size_t size) {
    text.remove_prefix(text.size() - digit_count(size, bits));
    if (const std::size_t lost = text.size() * bits - size; lost > 0) {
        const std::string top = grouped_radix_to_binary_string(text.substr(0, 1), static_cast<int>(bits));
        place = std::copy(top.begin() + static_cast<std::ptrdiff_t>(lost), top.end(), place);
        text.remove_prefix(1);
    }
    write_bits_of_digits(place, text, bits);
}

/// Writes the bits of hexadecimal or octal digits of any kind, digit by digit. The top digit of the word may
/// lose bits.
void write_bits_of_word(std::string& output, std::string_view text, unsigned bits, unsigned int width) {
    if (text.data() == output.data()) {
        write_bits_of_word(output, std::string(text), bits, width);
        return;
    }
    const std::size_t given = bit_count(text.size(), bits);
    const std::size_t size = width == 0 ? given : width;
    char* place = room_for(output, size);
    if (given > size) {
        write_low_bits_of_word(place, text, bits, size);
        return;
    }
    write_bits_of_digits(std::fill_n(place, size - given, '0'), text, bits);
}

bool convert_plain_word(std::string& output, std::string_view text, KVR_MEMORY_RADIXES from,
                        KVR_MEMORY_RADIXES to, unsigned int width) {
    plain_word word;
    if (!read_plain_word(word, text, from)) {
        return false;
    }
    if (width != 0) {
        resize_plain_word(word, width);
    }
    write_plain_word(output, word, to);
    return true;
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

bool convert_word_directly(std::string& output, std::string_view text, KVR_MEMORY_RADIXES from,
                           KVR_MEMORY_RADIXES to, unsigned int width) {
    if (to == RADIX_BIN) {
        if (bits_per_digit(from) <= 1) {
            return false;
        }
        write_bits_of_word(output, text, bits_per_digit(from), width);
        return true;
    }
    if (!is_decimal(to) && bits_per_digit(to) == 0) {
        return false;
    }
    if (from == to && bits_per_digit(from) > 1) {
        output = resize_digits(text, bits_per_digit(from), width);
        return true;
    }
    return convert_plain_word(output, text, from, to, width);
}

} // namespace kvr
