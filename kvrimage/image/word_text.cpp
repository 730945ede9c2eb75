#include "kvrimage/image/word_text.h"

#include "kvr/memory/io/hex_digit_block.h"
#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/exact_value.h"

#include <algorithm>
#include <bit>

namespace kvrimage {

namespace {

word_fault fault_of(const kvr::exact_word_error& error) {
    return {static_cast<word_fault::kind>(error.what), error.position, error.bits_needed};
}
static_assert(static_cast<int>(word_fault::kind::dont_care) ==
              static_cast<int>(kvr::exact_word_error::kind::dont_care));

} // namespace

KVR_MEMORY_RADIXES kvr_radix(radix of) noexcept {
    constexpr KVR_MEMORY_RADIXES radixes[] = {RADIX_BIN, RADIX_OCT, RADIX_DEC, RADIX_UNS, RADIX_HEX};
    return radixes[static_cast<std::size_t>(of)];
}

std::optional<word_fault> make_word(std::string_view text, radix digits_radix, std::uint32_t width,
                                    std::string& word) {
    word.clear();
    auto error = kvr::append_exact_word(word, text, {kvr_radix(digits_radix), RADIX_HEX, width});
    if (error && error->what == kvr::exact_word_error::kind::dont_care) {
        error = kvr::exact_bits(text, kvr_radix(digits_radix), width, word);
    }
    return error ? std::optional(fault_of(*error)) : std::nullopt;
}

std::optional<word_fault> make_word_of_any_sign(std::string_view text, radix digits_radix,
                                                std::uint32_t width, std::string& word, bool& is_unsigned) {
    const auto error = make_word(text, digits_radix, width, word);
    if (!error || digits_radix != radix::dec || error->what != word_fault::kind::too_wide) {
        return error;
    }
    const auto without_sign = make_word(text, radix::uns, width, word);
    is_unsigned = is_unsigned || !without_sign;
    if (!without_sign || without_sign->what == word_fault::kind::too_wide) {
        return without_sign;
    }
    return error;
}

bool are_words(const kvr::word_row& row, std::uint32_t width) noexcept {
    if (row.length != kvr::digit_count(width, bits_per_hex_digit) || !kvr::are_upper_hex_digits(row.all())) {
        return false;
    }
    const unsigned top_bits = (width - 1) % bits_per_hex_digit + 1;
    bool all_fit = true;
    for (std::uint32_t i = 0; top_bits < bits_per_hex_digit && i < row.count; ++i) {
        all_fit &= kvr::digit_value(row[i].front()) >> top_bits == 0;
    }
    return all_fit;
}

bool show_word(std::string_view word, radix digits_radix, std::uint32_t width, std::string& text) {
    text.clear();
    return !kvr::append_exact_word(text, word,
                                   {kvr_radix(radix_of_word(word, width)), kvr_radix(digits_radix), width});
}

bool is_plain(std::string_view word) noexcept {
    return word.find('X') == std::string_view::npos;
}

std::optional<std::size_t> find_wide_byte(std::string_view bytes, std::uint32_t width) noexcept {
    const auto wide = std::ranges::find_if(bytes, [width](char byte) {
        return static_cast<std::uint32_t>(std::bit_width(static_cast<unsigned char>(byte))) > width;
    });
    return wide != bytes.end() ? std::optional(static_cast<std::size_t>(wide - bytes.begin())) : std::nullopt;
}

std::size_t most_characters_of_word(radix digits_radix, std::uint32_t width) {
    constexpr double log10_of_2 = 0.30102999566398120;
    const auto decimal_digits = static_cast<std::size_t>(width * log10_of_2) + 1;
    switch (digits_radix) {
    case radix::bin:
        return width;
    case radix::oct:
        return (std::size_t{width} + 2) / 3;
    case radix::dec:
        return decimal_digits + 1;
    case radix::uns:
        return decimal_digits;
    default:
        return (std::size_t{width} + 3) / 4;
    }
}

} // namespace kvrimage
