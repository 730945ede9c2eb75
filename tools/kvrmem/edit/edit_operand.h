#pragma once

#include "kvrimage/image/address_range.h"
#include "kvrimage/image/bit_field.h"
#include "kvrimage/image/fixed_point.h"
#include "kvrimage/image/word.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

// The operands of "set" and "fill": 0x10=0xFF, 3[7:4]=0xA, 0x40="v1.2.3", 0..7=1,2, 0=fixed:1.15:0.5

/// An operand with unparsed values, since the words that they are for are not known yet.
struct edit_operand {
    std::string text; ///< the whole operand, for messages
    kvrimage::address_range addresses;
    std::optional<kvrimage::bit_field> field; ///< nothing: whole words
    std::string values;                       ///< the text after the first "="

    /// Returns the bits of each value.
    [[nodiscard]] std::uint32_t value_width(std::uint32_t width) const noexcept {
        return field ? field->width() : width;
    }
};

/// Parses @p text. Blanks around its parts are ignored.
/// @param example example of an operand, for the message about invalid @p text
/// @throws tool_error (wrong usage)
[[nodiscard]] edit_operand parse_edit_operand(std::string_view text, const char* example);

/// How to convert values to words.
struct edit_value_rules {
    kvrimage::rounding how = kvrimage::rounding::nearest; ///< for fractions
    bool saturate = false;                                ///< fractions out of range become the nearest word
    bool are_lists = false;                               ///< "," separates values
};

/// The values of an operand.
struct edit_values {
    std::vector<kvrimage::word> words;
    bool has_fraction = false;
};

/// Returns the values of @p operand for words of @p width bits. A string gives one word per byte.
/// @throws tool_error (wrong usage) if a value does not fit, or if @p operand has bits outside the word
[[nodiscard]] edit_values values_of(const edit_operand& operand, std::uint32_t width,
                                    const edit_value_rules& rules);

} // namespace kvrmem
