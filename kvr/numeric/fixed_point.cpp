#include "kvr/numeric/fixed_point.h"

#include "kvr/numeric/leading_number.h"
#include "kvr/numeric/radix_conversion.h"
#include "kvr/util/tokenizer.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace {

// The smallest double is 2^-1074: lower bits add nothing to the sum, and no digits follow.
constexpr int max_fraction_digits = 1074;

struct fixed_point_format {
    int integer_bits;
    int fraction_bits;

    std::int64_t word_bits() const { return std::int64_t{integer_bits} + fraction_bits; }
};

std::optional<fixed_point_format> parse_format(const std::string& text) {
    std::string rest = text;
    const std::string integer_bits = kvr_get_token(rest, ".", false);
    const fixed_point_format format{kvr::leading_integer(integer_bits), kvr::leading_integer(rest)};
    if (format.integer_bits < 1 || format.fraction_bits < 1) {
        return std::nullopt;
    }
    return format;
}

// Some processors compute with more precision than double until a value is stored.
double as_stored(double value) {
#if FLT_EVAL_METHOD == 0
    return value;
#else
    const volatile double stored = value;
    return stored;
#endif
}

// A weight of 0 is reached by every nonnegative value, so the bits below 2^-1074 are set.
void append_fraction_bits(std::string& bits, double value, int count) {
    double weight = 0.5;
    int bit = 0;
    for (; bit < count && weight > 0; ++bit) {
        const bool set = value >= weight;
        if (set) {
            value -= weight;
        }
        bits += set ? '1' : '0';
        weight = as_stored(weight / 2);
    }
    bits.append(static_cast<std::size_t>(count - bit), value >= 0 ? '1' : '0');
}

std::string bits_of_decimal_fraction(const std::string& text, const fixed_point_format& format) {
    const bool negative = text.at(0) == '-';
    double value = kvr::leading_float(std::string_view(text).substr(negative ? 1 : 0));
    if (value >= 1.0) {
        value -= 1.0;
    }
    std::string bits;
    bits.reserve(static_cast<std::size_t>(format.word_bits()));
    bits.append(static_cast<std::size_t>(format.integer_bits), negative ? '1' : '0');
    append_fraction_bits(bits, value, format.fraction_bits);
    return bits;
}

// Bits at any width: cut at the front or extended by copies of the first bit.
class sign_extended_bits {
public:
    sign_extended_bits(const std::string& bits, std::int64_t width)
        : bits_(bits),
          first_(bits.at(0)),
          leading_copies_(width - static_cast<std::int64_t>(bits.size())) {}

    bool is_set(std::int64_t position) const {
        const std::int64_t own = position - leading_copies_;
        return (own < 0 ? first_ : bits_[static_cast<std::size_t>(own)]) == '1';
    }

    // All positions before this one have the first bit.
    std::int64_t first_own_position() const { return std::max<std::int64_t>(leading_copies_, 0); }

private:
    std::string_view bits_;
    char first_;
    std::int64_t leading_copies_;
};

struct sign_reading {
    bool negative;
    bool uniform;
};

sign_reading read_sign(const sign_extended_bits& word, int integer_bits) {
    const bool sign = word.is_set(0);
    for (std::int64_t position = word.first_own_position(); position < integer_bits; ++position) {
        if (word.is_set(position) != sign) {
            return {!sign, false};
        }
    }
    return {sign, true};
}

double sum_fraction(const sign_extended_bits& word, const fixed_point_format& format) {
    double sum = 0;
    double weight = 0.5;
    for (int bit = 0; bit < std::min(format.fraction_bits, max_fraction_digits); ++bit) {
        if (word.is_set(std::int64_t{format.integer_bits} + bit)) {
            sum = as_stored(sum + weight);
        }
        weight /= 2;
    }
    return sum;
}

// A sum of F bits has at most F decimal digits, so nothing is rounded here.
std::string fraction_text(double fraction, int fraction_bits) {
    std::array<char, max_fraction_digits + 3> buffer{};
    const int digits = std::min(fraction_bits, max_fraction_digits);
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), fraction,
                                      std::chars_format::fixed, digits);
    std::string_view text(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
    while (text.size() > 3 && text.back() == '0') {
        text.remove_suffix(1);
    }
    return std::string(text);
}

bool write_decimal_fraction(const std::string& bits, const fixed_point_format& format, std::string& output) {
    const sign_extended_bits word(bits, format.word_bits());
    const sign_reading sign = read_sign(word, format.integer_bits);
    const double fraction = sum_fraction(word, format);
    if (sign.negative && fraction == 0) {
        output = "-1.0";
    } else {
        output = fraction_text(fraction, format.fraction_bits);
        output.insert(0, sign.negative ? 1 : 0, '-');
    }
    return sign.uniform;
}

bool has_prefix(const std::string& text, std::string_view prefix) {
    return text.size() > prefix.size() && std::string_view(text).substr(0, prefix.size()) == prefix;
}

std::string binary_digits_of(const std::string& text) {
    if (has_prefix(text, "0b")) {
        return text.substr(2);
    }
    if (has_prefix(text, "0x")) {
        return convert_to_binary_string(text.substr(2), RADIX_HEX);
    }
    return convert_to_binary_string(text, RADIX_UNS);
}

} // namespace

bool kvr_radix_conversion_fixed_point(const std::string& input, std::string* output, KVR_MEMORY_RADIXES from,
                                      KVR_MEMORY_RADIXES to, const std::string& format) {
    if (from == RADIX_NONE || to == RADIX_NONE) {
        return false;
    }
    if (from != RADIX_FIXED_POINT && to != RADIX_FIXED_POINT) {
        return kvr_radix_conversion(input, output, from, to, 0);
    }
    const std::optional<fixed_point_format> parsed = parse_format(format);
    std::string bits;
    if (from != RADIX_FIXED_POINT) {
        bits = convert_to_binary_string(input, static_cast<int>(from));
    } else if (parsed) {
        bits = bits_of_decimal_fraction(input, *parsed);
    }
    if (to != RADIX_FIXED_POINT) {
        *output = to == RADIX_BIN ? std::move(bits) : convert_from_binary_string(bits, static_cast<int>(to));
        return true;
    }
    return parsed && write_decimal_fraction(bits, *parsed, *output);
}

bool kvr_convert_numeric_string_to_binary_format(const std::string& input, std::string& output) {
    output = binary_digits_of(input);
    return true;
}
