#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/format.h"
#include "kvrimage/image/fixed_point.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

/// How the values of a CSV file become words, by the choices of its caller.
struct csv_value_rules {
    std::optional<radix> digits;      ///< nothing: each value says it, 31, -5, 0x1F, 0b101
    std::optional<fixed_point> fixed; ///< values are fractions
    rounding how = rounding::nearest;
    bool saturate = false;
};

/// The rules of @p options; @p fault is set where a choice is none.
[[nodiscard]] csv_value_rules csv_rules_of(const read_options& options, std::optional<diagnostic>& fault);

/// What a value is, by its characters.
struct csv_number {
    enum class kind : std::uint8_t {
        number,
        fraction, ///< a decimal number with a point or an exponent where a whole one is expected
        none
    } what = kind::none;
    std::string_view digits;         ///< as make_word() takes them, with a "-" where there is one
    radix digits_radix = radix::uns; ///< `dec` where it is negative, or all are signed
};

[[nodiscard]] csv_number scan_csv_number(std::string_view text, const csv_value_rules& rules);

/// The address that @p text is; nothing when it is none, or needs more than 63 bits.
[[nodiscard]] std::optional<std::uint64_t> csv_address_of(std::string_view text);

} // namespace kvrimage
