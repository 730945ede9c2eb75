#include "kvrimage/image/fixed_point.h"

#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/exact_value.h"
#include "kvrimage/image/word.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

/// Returns an upper bound of the decimal digits of a number of @p bits bits. 10 to the power of minus this
/// bound is below 2 to the power of minus @p bits.
constexpr std::int64_t decimal_places_of(std::uint32_t bits) {
    return std::int64_t{bits} / 3 + 2;
}

/// The number 0.DIGITS * 10^point.
struct scaled_digits {
    bool negative = false;
    std::string digits; ///< without leading zeros; "" for zero
    std::int64_t point = 0;
};

std::string_view digits_at(std::string_view text, std::size_t begin) {
    std::size_t end = begin;
    while (end < text.size() && kvr::is_decimal_digit(text[end])) {
        ++end;
    }
    return text.substr(begin, end - begin);
}

/// Parses the exponent, "e" and a number; an empty text is 0. Returns nothing for any other text. The result
/// is clamped to bounds beyond any text length.
std::optional<std::int64_t> exponent_of(std::string_view text) {
    constexpr std::int64_t largest = std::int64_t{1} << 60U;
    if (text.empty()) {
        return 0;
    }
    if (text.front() != 'e' && text.front() != 'E') {
        return std::nullopt;
    }
    const bool has_sign = text.size() > 1 && (text[1] == '-' || text[1] == '+');
    const std::string_view digits = digits_at(text, has_sign ? 2 : 1);
    if (digits.empty() || (has_sign ? 2 : 1) + digits.size() != text.size()) {
        return std::nullopt;
    }
    std::int64_t value = 0;
    for (const char digit : digits) {
        value = std::min(value * 10 + (digit - '0'), largest / 10);
    }
    return text[1] == '-' ? -value : value;
}

std::optional<scaled_digits> scan_decimal(std::string_view text) {
    scaled_digits number;
    number.negative = text.starts_with('-');
    const std::size_t begin = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
    const std::string_view whole = digits_at(text, begin);
    std::size_t end = begin + whole.size();
    std::string_view fraction;
    if (end < text.size() && text[end] == '.') {
        fraction = digits_at(text, end + 1);
        end += 1 + fraction.size();
    }
    const auto exponent = exponent_of(text.substr(end));
    if ((whole.empty() && fraction.empty()) || !exponent) {
        return std::nullopt;
    }
    number.digits.append(whole).append(fraction);
    const std::size_t zeros = std::min(number.digits.find_first_not_of('0'), number.digits.size());
    number.digits.erase(0, zeros);
    number.digits.erase(number.digits.find_last_not_of('0') + 1);
    number.point = static_cast<std::int64_t>(whole.size()) - static_cast<std::int64_t>(zeros) + *exponent;
    return number;
}

/// A fraction below 1 in chunks of nine decimal digits, most significant chunk first.
class decimal_chunks {
public:
    /// The number 0.DIGITS with @p zeros zeros before the digits.
    decimal_chunks(std::size_t zeros, std::string_view digits) : chunks((zeros + digits.size() + 8) / 9) {
        for (std::size_t index = 0; index < digits.size(); ++index) {
            const std::size_t place = zeros + index;
            chunks[place / 9] += static_cast<std::uint32_t>(digits[index] - '0') * powers[8 - place % 9];
        }
    }

    [[nodiscard]] bool is_zero() const noexcept { return chunks.empty(); }

    /// Multiplies by 2^count, at most 2^32. Removes and returns the integer part.
    std::uint32_t shift_out(unsigned count) {
        constexpr std::uint64_t chunk = 1'000'000'000;
        std::uint64_t carry = 0;
        for (auto each = chunks.rbegin(); each != chunks.rend(); ++each) {
            const std::uint64_t product = (std::uint64_t{*each} << count) + carry;
            *each = static_cast<std::uint32_t>(product % chunk);
            carry = product / chunk;
        }
        while (!chunks.empty() && chunks.back() == 0) {
            chunks.pop_back();
        }
        return static_cast<std::uint32_t>(carry);
    }

private:
    static constexpr std::uint32_t powers[] = {1,       10,        100,        1'000,      10'000,
                                               100'000, 1'000'000, 10'000'000, 100'000'000};

    std::vector<std::uint32_t> chunks; ///< without trailing zeros
};

/// The bits of a magnitude, and a summary of what follows the last bit.
struct magnitude_bits {
    std::string bits;
    bool has_half = false;
    bool has_rest = false; ///< anything besides the half
};

void append_fraction(decimal_chunks& fraction, std::uint32_t count, magnitude_bits& number) {
    constexpr unsigned at_once = 32;
    while (count != 0) {
        const unsigned step = std::min<std::uint32_t>(count, at_once);
        const std::uint32_t out = fraction.shift_out(step);
        for (unsigned bit = step; bit-- > 0;) {
            number.bits += "01"[out >> bit & 1U];
        }
        count -= step;
    }
    number.has_half = fraction.shift_out(1) != 0;
    number.has_rest = !fraction.is_zero();
}

/// Returns the magnitude of @p number with one more integer bit than the format, or nothing if it needs more.
std::optional<magnitude_bits> magnitude_of(const scaled_digits& number, const fixed_point& format) {
    magnitude_bits result;
    const auto size = static_cast<std::int64_t>(number.digits.size());
    if (number.digits.empty() || number.point < -decimal_places_of(format.fraction_bits + 2)) {
        result.bits.assign(std::size_t{format.bits()} + 1, '0');
        result.has_rest = !number.digits.empty();
        return result;
    }
    if (number.point > decimal_places_of(format.integer_bits + 1)) {
        return std::nullopt;
    }
    const auto whole_digits = static_cast<std::size_t>(std::clamp<std::int64_t>(number.point, 0, size));
    std::string whole = number.digits.substr(0, whole_digits);
    whole.append(static_cast<std::size_t>(std::max<std::int64_t>(number.point - size, 0)), '0');
    whole += whole.empty() ? "0" : "";
    if (kvr::exact_bits(whole, RADIX_UNS, format.integer_bits + 1, result.bits)) {
        return std::nullopt;
    }
    decimal_chunks fraction(static_cast<std::size_t>(std::max<std::int64_t>(-number.point, 0)),
                            std::string_view(number.digits).substr(whole_digits));
    append_fraction(fraction, format.fraction_bits, result);
    return result;
}

bool rounds_away_from_zero(const magnitude_bits& number, bool negative, rounding how) {
    switch (how) {
    case rounding::nearest:
        return number.has_half;
    case rounding::even:
        return number.has_half && (number.has_rest || number.bits.back() == '1');
    default: // rounding::down
        break;
    }
    return negative && (number.has_half || number.has_rest);
}

/// Adds 1, modulo 2 to the number of bits.
void increment(std::string& bits) {
    const std::size_t zero = bits.find_last_of('0');
    std::fill(bits.begin() + static_cast<std::ptrdiff_t>(zero == std::string::npos ? 0 : zero), bits.end(),
              '0');
    if (zero != std::string::npos) {
        bits[zero] = '1';
    }
}

void negate(std::string& bits) {
    std::ranges::transform(bits, bits.begin(), [](char bit) { return bit == '0' ? '1' : '0'; });
    increment(bits);
}

/// True if a magnitude, which has one bit more than a word, fits a word with this sign.
bool is_held(const std::string& bits, bool negative) {
    if (bits[0] == '1' || bits[1] == '0') {
        return bits[0] == '0';
    }
    return negative && bits.find('1', 2) == std::string::npos;
}

std::string extreme_bits(std::uint32_t width, bool negative) {
    std::string bits(width, negative ? '0' : '1');
    bits[0] = negative ? '1' : '0';
    return bits;
}

} // namespace

std::optional<fixed_point> fixed_point_of_name(std::string_view name) noexcept {
    constexpr std::string_view fixed = "fixed:";
    if (!name.starts_with(fixed)) {
        return std::nullopt;
    }
    const std::string_view whole = digits_at(name, fixed.size());
    const std::size_t point = fixed.size() + whole.size();
    const std::string_view fraction = digits_at(name, std::min(point + 1, name.size()));
    constexpr std::size_t most_digits = 7;
    if (whole.empty() || fraction.empty() || name[point] != '.' || whole.size() > most_digits ||
        fraction.size() > most_digits || point + 1 + fraction.size() != name.size()) {
        return std::nullopt;
    }
    const auto value = [](std::string_view digits) {
        std::uint32_t number = 0;
        for (const char digit : digits) {
            number = number * 10 + static_cast<std::uint32_t>(digit - '0');
        }
        return number;
    };
    const fixed_point format{value(whole), value(fraction)};
    if (format.integer_bits != 0 && format.bits() <= widest_word) {
        return format;
    }
    return std::nullopt;
}

std::optional<fixed_point_fault> make_fixed_point(std::string_view text, const fixed_point& format,
                                                  rounding how, bool saturate, std::string& word) {
    const auto number = scan_decimal(text);
    if (!number) {
        return fixed_point_fault::syntax;
    }
    auto magnitude = magnitude_of(*number, format);
    std::string bits;
    // A magnitude may be out of range before rounding; adding 1 does not change that.
    if (magnitude && magnitude->bits[0] == '0') {
        if (rounds_away_from_zero(*magnitude, number->negative, how)) {
            increment(magnitude->bits);
        }
        bits = std::move(magnitude->bits);
    }
    if (!bits.empty() && is_held(bits, number->negative)) {
        bits.erase(0, 1);
        if (number->negative) {
            negate(bits);
        }
    } else if (saturate) {
        bits = extreme_bits(format.bits(), number->negative);
    } else {
        return fixed_point_fault::out_of_range;
    }
    make_word(bits, radix::bin, format.bits(), word);
    return std::nullopt;
}

fixed_point_result parse_fixed_point(std::string_view text, const fixed_point& format, rounding how,
                                     bool saturate) {
    if (format.integer_bits == 0 || std::uint64_t{format.integer_bits} + format.fraction_bits > widest_word) {
        throw std::invalid_argument("a fixed-point word has at least 1 integer bit, and at most 2^20 bits");
    }
    std::string held;
    if (const auto fault = make_fixed_point(text, format, how, saturate, held)) {
        return {std::nullopt, fault};
    }
    return {word::of_held_text(held, format.bits()), std::nullopt};
}

} // namespace kvrimage
