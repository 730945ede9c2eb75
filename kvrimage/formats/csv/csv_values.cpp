#include "kvrimage/formats/csv/csv_values.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/word_digits.h"

namespace kvrimage {

namespace {

bool has_prefix(std::string_view text, std::string_view prefix) {
    return kvr::equal_ignoring_case(text.substr(0, prefix.size()), prefix);
}

bool are_digits_of(std::string_view digits, radix digits_radix) {
    return !digits.empty() && find_bad_digit(digits, digits_radix) == std::string_view::npos;
}

/// Parses a number in a known radix, with or without its prefix.
csv_number scan_with_prefix(std::string_view text, radix digits_radix, std::string_view prefix) {
    const std::string_view digits = text.substr(has_prefix(text, prefix) ? prefix.size() : 0);
    return {are_digits_of(digits, digits_radix) ? csv_number::kind::number : csv_number::kind::none, digits,
            digits_radix};
}

/// Parses a decimal integer with an optional sign.
csv_number scan_signed(std::string_view text, bool may_be_negative, radix of_positive) {
    std::string word;
    const bool has_sign = text.starts_with('-') || text.starts_with('+');
    const bool is_negative = text.starts_with('-');
    if (are_digits_of(text.substr(has_sign ? 1 : 0), radix::uns) && (!is_negative || may_be_negative)) {
        return {csv_number::kind::number, is_negative ? text : text.substr(has_sign ? 1 : 0),
                is_negative ? radix::dec : of_positive};
    }
    const bool is_fraction =
        !make_fixed_point(text, {}, rounding::down, true, word) && text.find_first_of(".eE") != text.npos;
    return {is_fraction ? csv_number::kind::fraction : csv_number::kind::none, text, of_positive};
}

} // namespace

csv_value_rules csv_rules_of(const read_options& options, std::optional<diagnostic>& fault) {
    csv_value_rules rules;
    if (const auto name = chosen(options.choices, "value-radix")) {
        rules.digits = *name != "oct" ? radix_of_name(*name) : std::nullopt;
        rules.fixed = fixed_point_of_name(*name);
        if (!rules.digits && !rules.fixed) {
            fault = diagnose::choice_value({}, "value-radix", *name, "dec uns hex bin fixed:I.F");
        }
    }
    if (const auto how = chosen(options.choices, "round")) {
        rules.how = *how == "even" ? rounding::even : rounding::nearest;
        rules.how = *how == "down" ? rounding::down : rules.how;
    }
    rules.saturate = chosen(options.choices, "saturate").has_value();
    for (const char* name : {"round", "saturate"}) {
        if (!fault && !rules.fixed && chosen(options.choices, name)) {
            fault = diagnose::choice_without_effect({}, name, "whole numbers", "--value-radix fixed:I.F");
        }
    }
    if (!fault && rules.fixed && options.width && *options.width != rules.fixed->bits()) {
        fault = diagnose::choice_value({}, "width", *options.width, std::to_string(rules.fixed->bits()));
    }
    return rules;
}

csv_number scan_csv_number(std::string_view text, const csv_value_rules& rules) {
    if (rules.digits == radix::hex || (!rules.digits && has_prefix(text, "0x"))) {
        return scan_with_prefix(text, radix::hex, "0x");
    }
    if (rules.digits == radix::bin || (!rules.digits && has_prefix(text, "0b"))) {
        return scan_with_prefix(text, radix::bin, "0b");
    }
    return scan_signed(text, rules.digits != radix::uns, rules.digits.value_or(radix::uns));
}

std::optional<std::uint64_t> csv_address_of(std::string_view text) {
    constexpr std::uint64_t largest = ~std::uint64_t{0} >> 1U;
    const csv_number number = scan_csv_number(text, {});
    if (number.what != csv_number::kind::number || number.digits_radix == radix::dec) {
        return std::nullopt;
    }
    const std::uint64_t base = base_of(number.digits_radix);
    std::uint64_t value = 0;
    for (const char digit : number.digits) {
        const std::uint64_t worth = kvr::digit_value(digit);
        if (value > (largest - worth) / base) {
            return std::nullopt;
        }
        value = value * base + worth;
    }
    return value;
}

} // namespace kvrimage
