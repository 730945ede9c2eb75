#include "kvrimage/image/word.h"

#include "kvr/numeric/exact_value.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace kvrimage {

namespace {

constexpr std::uint32_t bits_per_part = 64;
constexpr std::uint64_t all_bits = ~std::uint64_t{0};

std::uint64_t low_bits(std::uint32_t count) noexcept {
    return count >= bits_per_part ? all_bits : (std::uint64_t{1} << count) - 1;
}

std::size_t digits_of(std::uint32_t width) noexcept {
    return kvr::digit_count(width, bits_per_hex_digit);
}

std::uint32_t checked_width(std::uint32_t width) {
    if (width == 0 || width > widest_word) {
        throw std::invalid_argument(
            fmt::format("a word of {} bits: the width is 1 to {}", width, widest_word));
    }
    return width;
}

[[noreturn]] void refuse_value(const std::string& value, std::uint32_t width) {
    throw std::overflow_error(fmt::format("{} does not fit a word of {} bits", value, width));
}

int numeric_base_of(radix digits_radix) noexcept {
    constexpr int bases[] = {2, 8, 10, 10, 16};
    return bases[static_cast<std::size_t>(digits_radix)];
}

/// Returns the value of @p digits, or nothing if a character is no digit or the value exceeds 64 bits.
std::optional<std::uint64_t> magnitude_of(std::string_view digits, radix digits_radix) noexcept {
    std::uint64_t value = 0;
    if (digits_radix == radix::hex && !digits.empty() && digits.size() <= most_small_digits) {
        return read_small_word(digits, value) ? std::optional(value) : std::nullopt;
    }
    const char* const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, value, numeric_base_of(digits_radix));
    if (read.ec == std::errc() && read.ptr == end) {
        return value;
    }
    return std::nullopt;
}

/// Fast path for words of up to 64 bits: returns their bits, or nothing if the text has other characters or
/// does not fit.
std::optional<std::uint64_t> small_value(std::string_view text, radix digits_radix,
                                         std::uint32_t width) noexcept {
    const bool is_negative = digits_radix == radix::dec && text.starts_with('-');
    const auto magnitude = magnitude_of(is_negative ? text.substr(1) : text, digits_radix);
    if (!magnitude) {
        return std::nullopt;
    }
    const std::uint64_t mask = low_bits(width);
    const std::uint64_t most = digits_radix == radix::dec ? (mask >> 1U) + (is_negative ? 1 : 0) : mask;
    if (*magnitude > most) {
        return std::nullopt;
    }
    return is_negative ? (0 - *magnitude) & mask : *magnitude;
}

bool is_dont_care_digit(char digit) noexcept {
    return kvr::digit_value(digit) == kvr::dont_care_digit;
}

} // namespace

word::word(std::uint32_t width) : bits_of_word(checked_width(width)), above((width - 1) / bits_per_part) {}

word word::of(std::uint64_t value, std::uint32_t width) {
    word made(width);
    made.low.value = value;
    if (!made.fits()) {
        refuse_value(std::to_string(value), width);
    }
    return made;
}

word word::of_signed(std::int64_t value, std::uint32_t width) {
    word made(width);
    made.low.value = static_cast<std::uint64_t>(value);
    for (part& one : made.above) {
        one.value = value < 0 ? all_bits : 0;
    }
    made.keep_bits();
    if (made.to_signed() != value) {
        refuse_value(std::to_string(value), width);
    }
    return made;
}

word_result word::parse(std::string_view text, radix digits_radix, std::uint32_t width) {
    if (checked_width(width) <= bits_per_part) {
        if (const auto value = small_value(text, digits_radix, width)) {
            return {of(*value, width), std::nullopt};
        }
    }
    std::string held;
    if (auto fault = make_word(text, digits_radix, width, held)) {
        if (fault->what == word_fault::kind::invalid_digit && is_dont_care_digit(text[fault->position])) {
            fault->what = word_fault::kind::dont_care; // only decimal texts reject don't-care digits
        }
        return {std::nullopt, fault};
    }
    return {of_held_text(held, width), std::nullopt};
}

word word::of_bytes(std::string_view bytes, byte_order order, std::uint32_t width) {
    word made(width);
    const std::size_t count = kvr::digit_count(width, bits_per_byte);
    if (bytes.size() != count) {
        throw std::invalid_argument(
            fmt::format("{} bytes for a word of {} bits, which has {}", bytes.size(), width, count));
    }
    for (std::size_t index = 0; index < count; ++index) {
        const std::size_t place = order == byte_order::little ? index : count - 1 - index;
        const std::uint64_t byte = static_cast<unsigned char>(bytes[place]);
        made.part_at(index / sizeof(byte)).value |= byte << (index % sizeof(byte) * bits_per_byte);
    }
    if (!made.fits()) {
        refuse_value("a byte with surplus high bits", width);
    }
    return made;
}

std::uint64_t word::bits_in_part(std::size_t index) const noexcept {
    return low_bits(static_cast<std::uint32_t>(bits_of_word - index * bits_per_part));
}

/// Only the highest part can have surplus bits.
bool word::fits() const noexcept {
    const std::size_t top = part_count() - 1;
    return (part_at(top).value & ~bits_in_part(top)) == 0;
}

void word::keep_bits() noexcept {
    part& top = part_at(part_count() - 1);
    const std::uint64_t mask = bits_in_part(part_count() - 1);
    top.value &= mask;
    top.dont_care &= mask;
}

bool word::has_dont_care() const noexcept {
    return low.dont_care != 0 ||
           std::ranges::any_of(above, [](const part& one) { return one.dont_care != 0; });
}

char word::bit(std::uint32_t index) const {
    if (index >= bits_of_word) {
        throw std::out_of_range(fmt::format("bit {} of a word of {} bits", index, bits_of_word));
    }
    const part& of = part_at(index / bits_per_part);
    const std::uint64_t mask = std::uint64_t{1} << index % bits_per_part;
    if ((of.dont_care & mask) != 0) {
        return 'X';
    }
    return (of.value & mask) != 0 ? '1' : '0';
}

std::optional<std::uint64_t> word::to_unsigned() const noexcept {
    const bool is_small = std::ranges::all_of(above, [](const part& one) { return one == part(); });
    if (is_small && low.dont_care == 0) {
        return low.value;
    }
    return std::nullopt;
}

/// True if all bits from 63 on are equal. Always true for words of up to 64 bits.
bool word::is_sign_extended() const noexcept {
    const std::uint64_t sign = low.value >> (bits_per_part - 1) != 0 ? all_bits : 0;
    for (std::size_t index = 1; index < part_count(); ++index) {
        if (part_at(index).value != (sign & bits_in_part(index))) {
            return false;
        }
    }
    return true;
}

std::optional<std::int64_t> word::to_signed() const noexcept {
    if (has_dont_care() || !is_sign_extended()) {
        return std::nullopt;
    }
    const std::uint64_t mask = low_bits(bits_of_word);
    const bool is_negative = low.value > mask >> 1U;
    return static_cast<std::int64_t>(is_negative ? low.value | ~mask : low.value);
}

std::optional<std::string> word::to_text(radix digits_radix) const {
    std::string text;
    return append_text(digits_radix, text) ? std::optional(std::move(text)) : std::nullopt;
}

bool word::append_text(radix digits_radix, std::string& text) const {
    const held_text held(*this);
    const radix from = radix_of_word(held.view(), bits_of_word);
    if (from == digits_radix) {
        text.append(held.view());
        return true;
    }
    return !kvr::append_exact_word(text, held.view(),
                                   {kvr_radix(from), kvr_radix(digits_radix), bits_of_word});
}

std::optional<std::string> word::to_bytes(byte_order order) const {
    if (has_dont_care()) {
        return std::nullopt;
    }
    std::string bytes(kvr::digit_count(bits_of_word, bits_per_byte), '\0');
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        const std::uint64_t value = part_at(index / sizeof(value)).value;
        const std::size_t place = order == byte_order::little ? index : bytes.size() - 1 - index;
        bytes[place] = static_cast<char>(value >> (index % sizeof(value) * bits_per_byte));
    }
    return bytes;
}

word word::of_held_text(std::string_view text, std::uint32_t width) {
    word made(width);
    const bool is_hex = text.size() == digits_of(width);
    const unsigned bits = is_hex ? bits_per_hex_digit : 1;
    const std::size_t digits_per_part = bits_per_part / bits;
    for (std::size_t index = 0; index < made.part_count(); ++index) {
        const std::string_view digits = text.substr(text.size() - std::min(text.size(), digits_per_part));
        text.remove_suffix(digits.size());
        part& into = made.part_at(index);
        if (is_hex && read_small_word(digits, into.value)) {
            continue;
        }
        into = part();
        for (const char digit : digits) {
            const bool is_dont_care = digit == 'X';
            into.value = into.value << bits | (is_dont_care ? 0U : kvr::digit_value(digit));
            into.dont_care = into.dont_care << bits | (is_dont_care ? low_bits(bits) : 0);
        }
    }
    made.keep_bits();
    return made;
}

/// True if a don't-care bit shares a hexadecimal digit with other bits.
bool word::has_mixed_hex_digit() const noexcept {
    for (std::size_t index = 0; index < part_count(); ++index) {
        for (std::uint64_t digit = low_bits(bits_per_hex_digit); digit != 0; digit <<= bits_per_hex_digit) {
            const std::uint64_t bits = part_at(index).dont_care & digit;
            if (bits != 0 && bits != (digit & bits_in_part(index))) {
                return true;
            }
        }
    }
    return false;
}

void word::append_held_text(std::string& text) const {
    if (has_mixed_hex_digit()) {
        for (std::uint32_t index = bits_of_word; index-- > 0;) {
            text += bit(index);
        }
        return;
    }
    const std::size_t begin = text.size();
    const std::size_t count = digits_of(bits_of_word);
    text.append(count, '0');
    for (std::size_t index = 0; index < count; ++index) {
        const part& of = part_at(index / most_small_digits);
        const std::size_t shift = index % most_small_digits * bits_per_hex_digit;
        const bool is_dont_care = (of.dont_care >> shift & 1U) != 0;
        text[begin + count - 1 - index] =
            is_dont_care ? 'X' : kvr::upper_case_digits[of.value >> shift & 15U];
    }
}

word word_of_text(std::string_view text, std::uint32_t width) {
    return word::of_held_text(text, width);
}

std::string text_of_word(const word& value) {
    std::string text;
    value.append_held_text(text);
    return text;
}

held_text::held_text(const word& value) { // NOLINT: the digits in use are written
    if (value.width() <= bits_per_part && !value.has_dont_care()) {
        kvr::write_hex_limb(digits.data(), *value.to_unsigned());
        count = digits_of(value.width());
    } else {
        value.append_held_text(longer);
    }
}

} // namespace kvrimage
