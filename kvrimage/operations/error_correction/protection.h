#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/operations/error_correction/ecc_scheme.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace kvrimage {

/// A word, or several equal ones at regular distances, of which a bit is wrong. Equal words may be several
/// findings.
struct ecc_finding {
    std::uint64_t address; ///< of the first one
    std::uint64_t count;   ///< how many there are
    std::uint64_t step;    ///< from one to the next
    std::optional<std::uint32_t>
        bit; ///< the bit that is wrong; nothing: more than one, the data are not known

    /// The same in all four.
    friend bool operator==(const ecc_finding&, const ecc_finding&) = default;
};

/// What the check bits say of a memory.
struct ecc_report {
    std::uint64_t checked = 0;         ///< words that are set
    std::uint64_t corrected = 0;       ///< of these, words with one wrong bit, which is known
    std::uint64_t damaged = 0;         ///< words whose data are not known
    std::vector<ecc_finding> findings; ///< in order of addresses, at most ecc_most_findings
};

/// How many findings a report has at most.
inline constexpr std::size_t ecc_most_findings = 100;

/// The memory whose words are those of @p image with the check bits of @p scheme.
/// @throws std::invalid_argument when the width of the memory is not scheme.data_width()
/// @throws std::domain_error for a word with don't-care bits; what() names its address
[[nodiscard]] KVRIMAGE_API memory_image protected_by(const memory_image& image, const ecc_scheme& scheme);

/// What the check bits of @p scheme say of the words of @p image.
/// @throws std::invalid_argument when the width of the memory is not scheme.width()
/// @throws std::domain_error for a word with don't-care bits; what() names its address
[[nodiscard]] KVRIMAGE_API ecc_report check_protection(const memory_image& image, const ecc_scheme& scheme);

/// The reverse of protected_by(): the data, single wrong bits corrected.
/// @throws std::invalid_argument and std::domain_error as check_protection() does, and std::domain_error when
/// a word is damaged; what() names the first address
[[nodiscard]] KVRIMAGE_API memory_image unprotected(const memory_image& image, const ecc_scheme& scheme);
/// The same with what check_protection() has said of @p image and @p scheme, which is not checked again.
[[nodiscard]] KVRIMAGE_API memory_image unprotected(const memory_image& image, const ecc_scheme& scheme,
                                                    const ecc_report& checked);

} // namespace kvrimage
