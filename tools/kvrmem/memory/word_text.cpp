#include "tools/kvrmem/memory/word_text.h"

#include "kvr/memory/io/hex_digit_block.h"
#include "kvr/numeric/digit_value.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/numbers/decimal_fraction.h"
#include "tools/kvrmem/numbers/human_number.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

namespace kvrmem {

namespace {

using error_kind = kvr::exact_word_error::kind;

/// The radix in which the image holds @p word.
KVR_MEMORY_RADIXES radix_of_word(std::string_view word, std::uint32_t width) {
    return word.size() == width ? RADIX_BIN : RADIX_HEX;
}

constexpr std::uint32_t most_fixed_point_bits = 4096;

std::size_t decimal_digits_of(std::uint32_t bits) {
    constexpr double log10_of_2 = 0.30102999566398120;
    return static_cast<std::size_t>(bits * log10_of_2) + 1;
}

} // namespace

std::optional<kvr::exact_word_error> make_word(std::string_view text, KVR_MEMORY_RADIXES radix,
                                               std::uint32_t width, std::string& word) {
    word.clear();
    auto error = kvr::append_exact_word(word, text, {radix, RADIX_HEX, width});
    if (error && error->what == error_kind::dont_care) {
        error = kvr::exact_bits(text, radix, width, word);
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

bool show_word(std::string_view word, KVR_MEMORY_RADIXES radix, std::uint32_t width, std::string& text) {
    text.clear();
    return !kvr::append_exact_word(text, word, {radix_of_word(word, width), radix, width});
}

bool is_plain(std::string_view word) noexcept {
    return word.find('X') == std::string_view::npos;
}

std::string describe(const kvr::exact_word_error& error, std::string_view text, KVR_MEMORY_RADIXES radix,
                     std::uint32_t width) {
    switch (error.what) {
    case error_kind::empty:
        return fmt::format("value '{}' has no digit", text);
    case error_kind::invalid_digit:
        return fmt::format("'{}' in {} is no {} digit", text[error.position], text, radix_title(radix));
    default: // too wide: don't-care digits are no error
        return fmt::format("value {} needs {} bits, the word has {}", text, error.bits_needed, width);
    }
}

std::string word_of_person(std::string_view text, std::uint32_t width, std::string_view subject) {
    const human_value value = read_human_value(text);
    std::string word;
    const auto error = make_word(value.digits, value.radix, width, word);
    if (error) {
        throw tool_error(exit_code::wrong_usage,
                         fmt::format("{}: {}", subject, describe(*error, value.digits, value.radix, width)));
    }
    return word;
}

std::optional<word_radix> word_radix_of_name(std::string_view name) {
    constexpr std::string_view fixed = "fixed:";
    if (name.substr(0, fixed.size()) != fixed) {
        const auto radix = radix_of_name(name);
        return radix ? std::optional(word_radix{*radix}) : std::nullopt;
    }
    const std::string_view format = name.substr(fixed.size());
    const std::size_t point = format.find('.');
    if (point == std::string_view::npos) {
        return std::nullopt;
    }
    const auto integer_bits = read_human_size(format.substr(0, point), most_fixed_point_bits);
    const auto fraction_bits = read_human_size(format.substr(point + 1), most_fixed_point_bits);
    if (!integer_bits || !fraction_bits || *integer_bits == 0) {
        return std::nullopt;
    }
    return word_radix{RADIX_FIXED_POINT, *integer_bits, *fraction_bits};
}

bool show_word(std::string_view word, const word_radix& radix, std::uint32_t width, std::string& text) {
    if (radix.radix != RADIX_FIXED_POINT) {
        return show_word(word, radix.radix, width, text);
    }
    if (!show_word(word, RADIX_DEC, width, text)) {
        return false;
    }
    for (std::uint32_t bit = 0; bit < radix.fraction_bits; ++bit) {
        halve(text);
    }
    return true;
}

void show_word_or_gap(std::string_view word, const word_radix& radix, std::uint32_t width,
                      std::string& text) {
    if (word.empty()) {
        text = "unset";
    } else if (!show_word(word, radix, width, text)) {
        show_word(word, RADIX_BIN, width, text);
        text.insert(0, "0b");
    }
}

std::size_t most_characters_of_word(const word_radix& radix, std::uint32_t width) {
    switch (radix.radix) {
    case RADIX_BIN:
        return width;
    case RADIX_OCT:
        return (width + 2) / 3;
    case RADIX_HEX:
        return (width + 3) / 4;
    case RADIX_FIXED_POINT:
        return decimal_digits_of(radix.integer_bits) + std::size_t{radix.fraction_bits} + 2;
    default:
        return decimal_digits_of(width) + (radix.radix == RADIX_DEC ? 1 : 0);
    }
}

void require_fitting(const word_radix& radix, std::uint32_t width) {
    if (radix.radix == RADIX_FIXED_POINT && radix.integer_bits + radix.fraction_bits != width) {
        throw tool_error(exit_code::wrong_usage,
                         fmt::format("fixed:{}.{} is for words of {}, these have {}", radix.integer_bits,
                                     radix.fraction_bits,
                                     counted(radix.integer_bits + radix.fraction_bits, "bit"), width));
    }
}

} // namespace kvrmem
