#include "kvr/numeric/small_word.h"

#include "kvr/numeric/digit_blocks.h"
#include "kvr/numeric/digit_value.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>

namespace kvr {

namespace {

constexpr unsigned most_bits = 64;
/// Any number with this number of digits fits 64 bits.
constexpr std::size_t most_decimal_digits = 19;

struct small_word {
    std::uint64_t bits;
    unsigned length; ///< including leading zero bits; never 0
};

/// Returns a mask of the @p count lowest bits, 1 to 64.
constexpr std::uint64_t low_bits(unsigned count) {
    return ~std::uint64_t{0} >> (most_bits - count);
}

/// Precondition: the text is not empty and has at most 64 bits.
bool read_grouped(small_word& word, std::string_view text, unsigned bits) {
    std::uint64_t value = 0;
    unsigned seen = 0;
    for (const char character : text) {
        const unsigned digit = digit_value(character);
        value = value << bits | digit;
        seen |= digit;
    }
    word = {value, static_cast<unsigned>(text.size()) * bits};
    return seen >> bits == 0;
}

/// Appends the digits of @p text to those of @p value.
bool read_decimal_digits(std::uint64_t& value, std::string_view text) {
    while (text.size() >= block_digits) {
        const std::uint64_t block = load_eight(text.data());
        if (!are_decimal(block)) {
            return false;
        }
        value = value * decimal_block + decimal_block_value(block);
        text.remove_prefix(block_digits);
    }
    unsigned largest = 0;
    for (const char character : text) {
        const unsigned digit = static_cast<unsigned char>(character) - unsigned{'0'};
        value = value * 10 + digit;
        largest = std::max(largest, digit);
    }
    return largest <= 9;
}

bool read_decimal(small_word& word, std::string_view text, bool is_signed) {
    const bool is_negative = is_signed && text.front() == '-';
    text.remove_prefix(is_negative ? 1 : 0);
    std::uint64_t value = 0;
    if (text.size() > most_decimal_digits || !read_decimal_digits(value, text)) {
        return false;
    }
    const auto length = static_cast<unsigned>(std::bit_width(value | 1)) + (is_signed ? 1U : 0U);
    if (length > most_bits) {
        return false;
    }
    word = {is_negative ? ~value & low_bits(length) : value, length};
    return true;
}

bool read_word(small_word& word, std::string_view text, KVR_MEMORY_RADIXES radix) {
    if (text.empty()) {
        return false;
    }
    switch (radix) {
    case RADIX_HEX:
        return text.size() <= most_bits / 4 && read_grouped(word, text, 4);
    case RADIX_OCT:
        return text.size() <= most_bits / 3 && read_grouped(word, text, 3);
    case RADIX_DEC:
    case RADIX_UNS:
        return read_decimal(word, text, radix == RADIX_DEC);
    default:
        return false;
    }
}

/// The characters of a small word in any radix except binary.
using word_text = std::array<char, 32>;

/// Writes the digits of @p value, least significant first as callers rely on. Returns their end.
char* write_reversed_decimal(char* place, std::uint64_t value) {
    while (value >= decimal_block) {
        const std::uint64_t rest = value / decimal_block;
        store_eight(reversed_decimal_block(value - rest * decimal_block), place);
        place += block_digits;
        value = rest;
    }
    const std::uint64_t block = reversed_decimal_block(value);
    store_eight(block, place);
    // In the block without '0', the highest nonzero byte is the most significant digit.
    const int zeros = std::countl_zero((block - eight_of('0')) | 1);
    return place + block_digits - static_cast<unsigned>(zeros) / 8;
}

char* write_grouped(char* place, const small_word& word, unsigned bits) {
    const unsigned count = (word.length + bits - 1) / bits;
    char* const end = place + count;
    std::uint64_t value = word.bits;
    for (char* digit = end; digit != place; value >>= bits) {
        *--digit = upper_case_digits[value & ((1U << bits) - 1)];
    }
    return end;
}

char* write_signed_decimal(char* place, const small_word& word) {
    const std::uint64_t sign = std::uint64_t{1} << (word.length - 1);
    if ((word.bits & sign) == 0) {
        return write_reversed_decimal(place, word.bits);
    }
    *place = '-';
    return write_reversed_decimal(place + 1, ~word.bits & (sign - 1));
}

/// Precondition: is_small_target(radix).
char* write_word(char* place, const small_word& word, KVR_MEMORY_RADIXES radix) {
    switch (radix) {
    case RADIX_HEX:
        return write_grouped(place, word, 4);
    case RADIX_OCT:
        return write_grouped(place, word, 3);
    case RADIX_DEC:
        return write_signed_decimal(place, word);
    default:
        return write_reversed_decimal(place, word.bits);
    }
}

bool is_small_target(KVR_MEMORY_RADIXES radix) {
    return is_decimal(radix) || bits_per_digit(radix) > 1;
}

/// Parses decimal text; signed text gives two's complement. Sets nothing if the value does not fit the width.
bool read_exact_decimal(std::uint64_t& bits, std::string_view text, bool is_signed, unsigned width) {
    const bool is_negative = is_signed && text.starts_with('-');
    text.remove_prefix(is_negative ? 1 : 0);
    std::uint64_t value = 0;
    if (text.empty() || text.size() > most_decimal_digits || !read_decimal_digits(value, text)) {
        return false;
    }
    const std::uint64_t largest = is_signed ? low_bits(width) >> 1 : low_bits(width);
    if (value > largest + (is_negative ? 1 : 0)) {
        return false;
    }
    bits = (is_negative ? 0 - value : value) & low_bits(width);
    return true;
}

bool read_exact(std::uint64_t& bits, std::string_view text, KVR_MEMORY_RADIXES radix, unsigned width) {
    if (is_decimal(radix)) {
        return read_exact_decimal(bits, text, radix == RADIX_DEC, width);
    }
    const unsigned bits_a_digit = bits_per_digit(radix);
    small_word word{};
    if (text.empty() || text.size() > most_bits / bits_a_digit || !read_grouped(word, text, bits_a_digit)) {
        return false;
    }
    bits = word.bits;
    return bits <= low_bits(width);
}

/// Writes the most significant digit first.
char* write_exact(char* begin, char* end, const small_word& word, KVR_MEMORY_RADIXES radix) {
    if (!is_decimal(radix)) {
        return write_grouped(begin, word, bits_per_digit(radix));
    }
    std::uint64_t value = word.bits;
    if (radix == RADIX_DEC && (value >> (word.length - 1) & 1) != 0) {
        value = (0 - value) & low_bits(word.length);
        *begin++ = '-';
    }
    return std::to_chars(begin, end, value).ptr;
}

/// Writes @p text in upper case, sixteen digits at a time. Returns false if a character is no hexadecimal
/// digit.
bool write_upper_case(char* place, std::string_view text) {
    for (; text.size() >= limb_hex_digits; text.remove_prefix(limb_hex_digits)) {
        std::uint64_t limb = 0;
        if (!read_sixteen(text.data(), limb)) {
            return false;
        }
        write_hex_limb(place, limb);
        place += limb_hex_digits;
    }
    unsigned seen = 0;
    for (const char character : text) {
        const unsigned digit = digit_value(character);
        *place++ = upper_case_digits[digit & 15];
        seen |= digit;
    }
    return seen <= 15;
}

} // namespace

bool append_small_exact_word(std::string& result, std::string_view text, const exact_conversion& conversion) {
    if (conversion.width > most_bits) {
        return false;
    }
    small_word word{0, static_cast<unsigned>(conversion.width)};
    if (!read_exact(word.bits, text, conversion.from, word.length)) {
        return false;
    }
    std::array<char, most_bits + 1> characters; // NOLINT(cppcoreguidelines-pro-type-member-init): see above
    char* const begin = characters.data();
    const char* const end = write_exact(begin, begin + characters.size(), word, conversion.to);
    result.append(begin, static_cast<std::size_t>(end - begin));
    return true;
}

bool append_same_hex_digits(std::string& result, std::string_view text, std::size_t width) {
    const std::size_t count = digit_count(width, 4);
    if (text.empty() || text.size() > count) {
        return false;
    }
    const unsigned bits_at_top = (width - 1) % 4 + 1;
    if (text.size() == count && digit_value(text.front()) >> bits_at_top != 0) {
        return false;
    }
    const std::size_t before = result.size();
    result.append(count, '0');
    if (write_upper_case(result.data() + result.size() - text.size(), text)) {
        return true;
    }
    result.resize(before);
    return false;
}

bool convert_small_word(std::string& output, std::string_view text, KVR_MEMORY_RADIXES from,
                        KVR_MEMORY_RADIXES to, unsigned int width) {
    small_word word{};
    if (width > most_bits || !is_small_target(to) || !read_word(word, text, from)) {
        return false;
    }
    if (width != 0) {
        word = {word.bits & low_bits(width), width};
    }
    word_text characters; // NOLINT(cppcoreguidelines-pro-type-member-init): written up to the end
    const char* const end = write_word(characters.data(), word, to);
    output.assign(characters.data(), static_cast<std::size_t>(end - characters.data()));
    return true;
}

} // namespace kvr
