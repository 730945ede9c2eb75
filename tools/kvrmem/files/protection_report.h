#pragma once

#include "kvrimage/operations/error_correction/protection.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/platform/json.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kvrmem {

/// The result of checking the check bits of a file.
struct protection_result {
    std::string scheme; ///< as named by the user
    kvrimage::ecc_report report;
    std::string weakness; ///< see weakness_of()

    /// Returns the number of words with a wrong bit.
    [[nodiscard]] std::uint64_t wrong() const noexcept { return report.corrected + report.damaged; }
};

/// Checks the words of @p input, which must have an image, against the check bits of @p scheme.
/// @throws tool_error: wrong usage if the scheme does not support the word width, bad input for a word with
/// don't-care bits
[[nodiscard]] protection_result check_protection(const memory_input& input, const std::string& scheme);

/// Returns a line for each word kept with wrong bits, such as "address 0x5: bit 3 is wrong".
[[nodiscard]] std::vector<std::string> wrong_bits_of(const protection_result& result);

/// Returns the number of other words with wrong bits.
[[nodiscard]] std::uint64_t words_beyond(const protection_result& result);

/// Returns a line for each such word of the file @p name, and a summary.
[[nodiscard]] std::string protection_as_text(const std::string& name, const protection_result& result);

/// Returns the member "ecc" of a file in the schema kvrmem-check-2.
[[nodiscard]] json_value protection_as_json(const protection_result& result);

} // namespace kvrmem
