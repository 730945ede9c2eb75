#include "tools/kvrmem/memory/rif_word_judge.h"

#include "kvr/numeric/digit_value.h"
#include "tools/kvrmem/memory/memory_image.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrmem {

namespace {

/// True when @p text is plain digits that fit @p width bits, as nearly all words are, without a conversion. A
/// zero too much in front is not looked at.
bool is_plain_word(std::string_view text, std::uint32_t width) {
    constexpr std::uint32_t base = 1U << bits_per_hex_digit;
    const std::size_t bits = text.size() * bits_per_hex_digit;
    const std::size_t surplus = bits - std::min<std::size_t>(bits, width);
    const auto front = kvr::digit_value(text.front());
    return surplus < bits_per_hex_digit && front >> (bits_per_hex_digit - surplus) == 0 &&
           std::all_of(text.begin(), text.end(), [](char c) { return kvr::digit_value(c) < base; });
}

} // namespace

std::optional<rif_word_fault> rif_word_judge::judge(std::string_view text) {
    const auto own_width =
        static_cast<std::uint32_t>(std::min<std::size_t>(text.size() * bits_per_hex_digit, widest_word));
    const std::uint32_t width = given_width.value_or(own_width);
    if (is_plain_word(text, width)) {
        return std::nullopt;
    }
    const auto error = make_word(text, RADIX_HEX, width, word);
    if (!error) {
        return std::nullopt;
    }
    if (error->what == kvr::exact_word_error::kind::too_wide) {
        return rif_word_fault{true, 0, text.size(),
                              fmt::format("word {} needs {} bits, {} is {}", visible(text),
                                          error->bits_needed,
                                          given_width ? "the given width" : "the largest width", width)};
    }
    return rif_word_fault{
        false, error->position, 1,
        fmt::format("'{}' in {} is no hexadecimal digit", text[error->position], visible(text))};
}

} // namespace kvrmem
