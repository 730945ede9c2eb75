#include "kvrimage/generate/numbers.h"

#include "kvrimage/generate/word_bytes.h"
#include "kvrimage/image/radix.h"
#include "kvrimage/image/word.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <string>

namespace kvrimage {

namespace {

constexpr std::uint32_t bits_of_integer = 64;
/// 2^63: whole doubles from -2^63 to below 2^63 are 64-bit integers.
constexpr double integer_end = 9223372036854775808.0;

/// Rounds to nearest, ties to even, independent of the rounding mode of the processor.
double to_even(double value) {
    const double lower = std::floor(value);
    const double above = value - lower; // exact
    if (above != 0.5) {
        return above < 0.5 ? lower : lower + 1;
    }
    return std::fmod(lower, 2.0) == 0 ? lower : lower + 1;
}

double rounded(double value, rounding how) {
    if (how == rounding::nearest) {
        return std::round(value);
    }
    return how == rounding::even ? to_even(value) : std::floor(value);
}

std::string text_of(const generated_number& value) {
    const auto* const whole = std::get_if<std::int64_t>(&value);
    return whole != nullptr ? fmt::format("{}", *whole) : fmt::format("{}", std::get<double>(value));
}

/// Rounds to an integer. The result is an int64 if the value fits.
generated_number whole_number(const generated_number& value, rounding how, std::size_t address) {
    const auto* const fraction = std::get_if<double>(&value);
    if (fraction == nullptr) {
        return value;
    }
    if (!std::isfinite(*fraction)) {
        throw std::domain_error(fmt::format("the value at address 0x{:X} is {}", address,
                                            std::isnan(*fraction) ? "not a number" : "infinite"));
    }
    const double whole = rounded(*fraction, how);
    if (whole >= -integer_end && whole < integer_end) {
        return static_cast<std::int64_t>(whole);
    }
    return whole;
}

bool is_negative(const generated_number& value) {
    return std::visit([](auto plain) { return plain < 0; }, value);
}

/// The range of the words of a width.
class number_limits {
public:
    number_limits(std::uint32_t width_of_words, bool has_negative_words)
        : width(width_of_words),
          magnitude_bits(has_negative_words ? width - 1 : width),
          has_sign(has_negative_words) {}

    /// The limits are powers of two, so comparisons with doubles are exact.
    [[nodiscard]] bool hold(const generated_number& value) const {
        const bool is_below = is_negative(value);
        if (const auto* const whole = std::get_if<std::int64_t>(&value)) {
            const std::int64_t magnitude = is_below ? ~*whole : *whole;
            return magnitude_bits >= bits_of_integer || magnitude >> magnitude_bits == 0;
        }
        const double end = std::ldexp(1.0, static_cast<int>(magnitude_bits));
        const double plain = std::get<double>(value);
        return is_below ? plain >= -end : plain < end;
    }
    /// Returns the limit that @p value exceeds.
    [[nodiscard]] word nearest(const generated_number& value) const {
        std::string digits(width, is_negative(value) ? '0' : '1');
        digits.front() = has_sign && !is_negative(value) ? '0' : '1';
        return word::parse(digits, radix::bin, width).value.value();
    }
    [[nodiscard]] std::string text() const {
        const std::string power = fmt::format("2^{}", magnitude_bits);
        if (magnitude_bits >= bits_of_integer) {
            return has_sign ? fmt::format("-{0}..{0}-1", power) : fmt::format("0..{}-1", power);
        }
        const std::uint64_t high = (std::uint64_t{1} << magnitude_bits) - 1;
        return has_sign ? fmt::format("-{}..{}", high + 1, high) : fmt::format("0..{}", high);
    }

private:
    std::uint32_t width;
    std::uint32_t magnitude_bits;
    bool has_sign;
};

/// Converts a whole double beyond the 64-bit integers. It must be in range.
word large_word(double value, std::uint32_t width) {
    const std::string digits = fmt::format("{:.0f}", value); // all digits
    return word::parse(digits, value < 0 ? radix::dec : radix::uns, width).value.value();
}

} // namespace

memory_image number_words(std::span<const generated_number> numbers, std::uint32_t width,
                          const number_rules& rules) {
    generated_words words(width, numbers.size());
    bool has_sign = rules.is_signed;
    for (std::size_t address = 0; address < numbers.size(); ++address) {
        has_sign |= is_negative(whole_number(numbers[address], rules.how, address));
    }
    const number_limits limits(width, has_sign);
    for (std::size_t address = 0; address < numbers.size(); ++address) {
        const generated_number value = whole_number(numbers[address], rules.how, address);
        if (!limits.hold(value)) {
            if (!rules.saturate) {
                throw std::overflow_error(
                    fmt::format("the value {} at address 0x{:X} does not fit {}words of {} bits ({})",
                                text_of(value), address, has_sign ? "signed " : "", width, limits.text()));
            }
            words.add(limits.nearest(value));
        } else if (const auto* const whole = std::get_if<std::int64_t>(&value)) {
            words.add_signed(*whole);
        } else {
            words.add(large_word(std::get<double>(value), width));
        }
    }
    return words.take();
}

} // namespace kvrimage
