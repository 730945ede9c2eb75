#pragma once

#include "kvr/memory/memory_types.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kvr_fuzz {

/// A second implementation of fixed-point texts, bit by bit, with the conversions of the C library.
struct plain_fixed_point {
    int integer_bits;
    int fraction_bits;

    /// Parses the format "I.F"; no value if it is invalid.
    static std::optional<plain_fixed_point> of(const std::string& format);

    [[nodiscard]] std::int64_t word_bits() const { return std::int64_t{integer_bits} + fraction_bits; }
    /// The bits of the decimal fraction @p text, which must not be empty.
    [[nodiscard]] std::string bits_of(const std::string& text) const;

    struct reading {
        std::string text;
        bool uniform; ///< all integer bits are equal
    };
    /// The decimal fraction of @p bits, which must not be empty.
    [[nodiscard]] reading fraction_of(const std::string& bits) const;
};

} // namespace kvr_fuzz
