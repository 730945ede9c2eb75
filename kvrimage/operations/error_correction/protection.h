#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/operations/error_correction/ecc_scheme.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace kvrimage {

/// A word with an error, or several equal ones at regular distances. Equal words may also form several
/// findings.
struct ecc_finding {
    std::uint64_t address; ///< address of the first word
    std::uint64_t count;   ///< number of words
    std::uint64_t step;    ///< distance between words
    std::optional<std::uint32_t>
        bit; ///< the wrong bit; nothing if several are wrong and the data cannot be recovered

    /// Compares all four members.
    friend bool operator==(const ecc_finding&, const ecc_finding&) = default;
};

/// The result of checking a protected memory.
struct ecc_report {
    std::uint64_t checked = 0;         ///< words that are set
    std::uint64_t corrected = 0;       ///< words with one wrong bit that is known
    std::uint64_t damaged = 0;         ///< words whose data cannot be recovered
    std::vector<ecc_finding> findings; ///< in order of addresses, at most ecc_most_findings
};

/// The most findings of a report.
inline constexpr std::size_t ecc_most_findings = 100;

/// Returns the words of @p image with the check bits of @p scheme.
/// @throws std::invalid_argument if the width of the memory is not scheme.data_width()
/// @throws std::domain_error for a word with don't-care bits; what() names its address
[[nodiscard]] KVRIMAGE_API memory_image protected_by(const memory_image& image, const ecc_scheme& scheme);

/// Checks the protected words of @p image.
/// @throws std::invalid_argument if the width of the memory is not scheme.width()
/// @throws std::domain_error for a word with don't-care bits; what() names its address
[[nodiscard]] KVRIMAGE_API ecc_report check_protection(const memory_image& image, const ecc_scheme& scheme);

/// Removes the protection from @p image, the inverse of protected_by(). Single wrong bits are corrected.
/// @throws std::invalid_argument, std::domain_error as check_protection() does
/// @throws std::domain_error if a word is damaged; what() names the first address
[[nodiscard]] KVRIMAGE_API memory_image unprotected(const memory_image& image, const ecc_scheme& scheme);
/// Does the same with the report of check_protection() for @p image and @p scheme, without a second check.
[[nodiscard]] KVRIMAGE_API memory_image unprotected(const memory_image& image, const ecc_scheme& scheme,
                                                    const ecc_report& checked);

} // namespace kvrimage
