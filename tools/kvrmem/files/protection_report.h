#pragma once

#include "kvrimage/operations/error_correction/protection.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/platform/json.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kvrmem {

/// What the check bits of a file say.
struct protection_result {
    std::string scheme; ///< as the user named it
    kvrimage::ecc_report report;
    std::string weakness; ///< see weakness_of()

    /// Words of which a bit is wrong.
    [[nodiscard]] std::uint64_t wrong() const noexcept { return report.corrected + report.damaged; }
};

/// What the check bits of @p scheme say of the words of @p input, which has an image.
/// @throws tool_error (wrong usage) when the scheme is not for words of that width; (bad input) for a word
/// with don't-care bits
[[nodiscard]] protection_result check_protection(const memory_input& input, const std::string& scheme);

/// "address 0x5: bit 3 is wrong", and so on: what is kept of the words with wrong bits.
[[nodiscard]] std::vector<std::string> wrong_bits_of(const protection_result& result);

/// Words with wrong bits that are not among these.
[[nodiscard]] std::uint64_t words_beyond(const protection_result& result);

/// Lines on the words of the file @p name with wrong bits, and one on all.
[[nodiscard]] std::string protection_as_text(const std::string& name, const protection_result& result);

/// The member "ecc" of a file in the schema kvrmem-check-2.
[[nodiscard]] json_value protection_as_json(const protection_result& result);

} // namespace kvrmem
