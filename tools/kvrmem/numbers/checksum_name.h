#pragma once

#include "kvrimage/operations/checksum/checksum.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace kvrmem {

/// A checksum algorithm, of kvrimage or of the tool.
struct sum_algorithm {
    std::uint32_t bits; ///< of the result
    /// Throws the exceptions of kvrimage::checksum_of().
    std::function<kvrimage::word(const kvrimage::memory_image&, const kvrimage::checksum_options&)> compute;
};

/// Returns the checksum with the name @p text, or with the parameters of a kvrimage::crc_model:
/// "crc:16,0x8005,0,true,true,0".
/// @throws tool_error (wrong usage) with the most similar name
[[nodiscard]] sum_algorithm checksum_of_user(std::string_view text);

/// Returns the names, separated by blanks.
[[nodiscard]] std::string checksum_choices();

} // namespace kvrmem
