#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/format.h"
#include "kvrimage/image/fixed_point.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

/// How to convert the values of a CSV file to words, according to the options.
struct csv_value_rules {
    std::optional<radix> digits;      ///< nothing: each value shows its radix: 31, -5, 0x1F, 0b101
    std::optional<fixed_point> fixed; ///< if set, values are fractions
    rounding how = rounding::nearest;
    bool saturate = false;
};

/// Returns the rules of @p options. Sets @p fault if an option is invalid.
[[nodiscard]] csv_value_rules csv_rules_of(const read_options& options, std::optional<diagnostic>& fault);

/// The number that a text represents.
struct csv_number {
    enum class kind : std::uint8_t {
        number,
        fraction, ///< a decimal number with a point or an exponent, if an integer is expected
        none
    } what = kind::none;
    std::string_view digits;         ///< for make_word(), including a "-"
    radix digits_radix = radix::uns; ///< `dec` if it is negative or if all values are signed
};

[[nodiscard]] csv_number scan_csv_number(std::string_view text, const csv_value_rules& rules);

/// Parses an address. Returns nothing if @p text is invalid or needs more than 63 bits.
[[nodiscard]] std::optional<std::uint64_t> csv_address_of(std::string_view text);

} // namespace kvrimage
