#pragma once

#include "kvr/numeric/character_block.h"

#include <bit>
#include <cstddef>
#include <cstdint>

// Runs of hexadecimal digits, processed eight characters or more at a time. The caller must ensure that all
// characters read are readable.

namespace kvr {

/// Returns all bits below the lowest one that is set in @p bits.
constexpr std::uint64_t bits_before_first(std::uint64_t bits) noexcept {
    return (bits - 1) & ~bits;
}

struct digit_run {
    const char* end; ///< after the last digit
    bool has_lower_case;
};

/// Returns the end of the hexadecimal digits that begin at @p begin. Reads up to eight characters from the
/// end on.
[[nodiscard]] inline digit_run digits_from(const char* begin) noexcept {
    std::uint64_t lower_case = 0;
    for (const char* eight = begin;; eight += 8) {
        const eight_classes classes = classes_of_eight(load_eight(eight));
        if (classes.other != 0) {
            lower_case |= classes.lower_case & bits_before_first(classes.other);
            return {eight + std::countr_zero(classes.other) / 8, lower_case != 0};
        }
        lower_case |= classes.lower_case;
    }
}

/// True if the @p length characters at @p text are hexadecimal digits. @p has_lower_case is set to true if
/// some are in lower case, otherwise it is unchanged. Checking a known length is faster than searching for
/// the end, since the following code need not wait for the result. Reads up to seven characters more.
[[nodiscard]] inline bool are_digits(const char* text, std::size_t length, bool& has_lower_case) noexcept {
    eight_classes found{};
    std::size_t at = 0;
    for (; at + 16 <= length; at += 16) {
        const sixteen_classes classes = classes_of_sixteen(text + at);
        found.other |= classes.other;
        found.lower_case |= classes.lower_case;
    }
    if (at + 8 <= length) {
        const eight_classes classes = classes_of_eight(load_eight(text + at));
        found.other |= classes.other;
        found.lower_case |= classes.lower_case;
        at += 8;
    }
    if (at < length) {
        const std::uint64_t asked = (std::uint64_t{1} << (8 * (length - at))) - 1;
        const eight_classes classes = classes_of_eight(load_eight(text + at));
        found.other |= classes.other & asked;
        found.lower_case |= classes.lower_case & asked;
    }
    has_lower_case = has_lower_case || found.lower_case != 0;
    return found.other == 0;
}

/// Copies @p length characters from @p from to @p to. If @p has_lower_case is true, "a" to "f" become upper
/// case. Up to seven characters after the end are also read and overwritten.
inline void copy_digits(const char* from, std::size_t length, bool has_lower_case, char* to) noexcept {
    for (std::size_t at = 0; at < length; at += 8) {
        const std::uint64_t eight = load_eight(from + at);
        store_eight(has_lower_case ? in_upper_case(eight, classes_of_eight(eight)) : eight, to + at);
    }
}

} // namespace kvr
