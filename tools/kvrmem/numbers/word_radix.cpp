#include "tools/kvrmem/numbers/word_radix.h"

#include "kvrimage/image/fixed_point.h"
#include "tools/kvrmem/numbers/decimal_fraction.h"
#include "tools/kvrmem/numbers/human_number.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <utility>

namespace kvrmem {

namespace {

using kvrimage::radix;

constexpr std::uint32_t most_fixed_point_bits = 4096;

std::size_t decimal_digits_of(std::uint32_t bits) {
    constexpr double log10_of_2 = 0.30102999566398120;
    return static_cast<std::size_t>(bits * log10_of_2) + 1;
}

} // namespace

std::optional<word_radix> word_radix_of_name(std::string_view name) {
    if (const auto digits = kvrimage::radix_of_name(name)) {
        return word_radix{*digits};
    }
    const auto fixed = kvrimage::fixed_point_of_name(name);
    if (!fixed || fixed->integer_bits > most_fixed_point_bits ||
        fixed->fraction_bits > most_fixed_point_bits) {
        return std::nullopt;
    }
    return word_radix{radix::dec, fixed->integer_bits, fixed->fraction_bits};
}

std::optional<std::string> shown(const kvrimage::word& value, const word_radix& radix) {
    std::optional<std::string> text = value.to_text(radix.digits);
    for (std::uint32_t bit = 0; text && bit < radix.fraction_bits; ++bit) {
        halve(*text);
    }
    return text;
}

std::string shown_or_gap(const std::optional<kvrimage::word>& value, const word_radix& radix) {
    if (!value) {
        return "unset";
    }
    std::optional<std::string> text = shown(*value, radix);
    return text ? *std::move(text) : "0b" + value->to_text(radix::bin).value();
}

std::size_t most_characters_of_word(const word_radix& radix, std::uint32_t width) {
    if (radix.is_fixed_point()) {
        return decimal_digits_of(radix.integer_bits) + std::size_t{radix.fraction_bits} + 2;
    }
    switch (radix.digits) {
    case radix::bin:
        return width;
    case radix::oct:
        return (width + 2) / 3;
    case radix::hex:
        return (width + 3) / 4;
    case radix::dec:
        return decimal_digits_of(width) + 1;
    case radix::uns:
        return decimal_digits_of(width);
    }
    return 0;
}

void require_fitting(const word_radix& radix, std::uint32_t width) {
    if (radix.is_fixed_point() && radix.bits() != width) {
        usage_error(fmt::format("fixed:{}.{} is for words of {}, but these have {}", radix.integer_bits,
                                radix.fraction_bits, counted(radix.bits(), "bit"), width));
    }
}

std::string describe(const kvrimage::word_fault& fault, std::string_view text, radix digits,
                     std::uint32_t width, std::string_view holder) {
    using kind = kvrimage::word_fault::kind;
    switch (fault.what) {
    case kind::empty:
        return fmt::format("value '{}' has no digit", text);
    case kind::too_wide:
        return fmt::format("value {} needs {} bits, the {} has {}", text, fault.bits_needed, holder, width);
    case kind::invalid_digit:
    case kind::dont_care: // in a decimal text, which cannot have such a digit
        break;
    }
    return fmt::format("'{}' in {} is not a valid {} digit", text[fault.position], text,
                       kvrimage::title_of(digits));
}

kvrimage::word word_of_user(std::string_view text, std::uint32_t width, std::string_view subject) {
    const human_value value = read_human_value(text);
    kvrimage::word_result read = kvrimage::word::parse(value.digits, value.radix, width);
    if (read.fault) {
        usage_error(fmt::format("{}: {}", subject, describe(*read.fault, value.digits, value.radix, width)));
    }
    return *std::move(read.value);
}

} // namespace kvrmem
