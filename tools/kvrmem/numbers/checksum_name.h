#pragma once

#include "kvrimage/operations/checksum/checksum.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace kvrmem {

/// A way to make a few bits of all bits of a memory: one of kvrimage, or one of the tool.
struct sum_algorithm {
    std::uint32_t bits; ///< of the result
    /// Throws what kvrimage::checksum_of() does.
    std::function<kvrimage::word(const kvrimage::memory_image&, const kvrimage::checksum_options&)> compute;
};

/// The checksum that the user called @p text: a name, or "crc:16,0x8005,0,true,true,0" with the parameters of
/// a kvrimage::crc_model.
/// @throws tool_error (wrong usage), with the nearest name
[[nodiscard]] sum_algorithm checksum_of_user(std::string_view text);

/// The names, separated by blanks.
[[nodiscard]] std::string checksum_choices();

} // namespace kvrmem
