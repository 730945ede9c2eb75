#pragma once

#include "kvrimage/operations/checksum/checksum.h"

#include <string>
#include <string_view>

namespace kvrmem {

/// The checksum that the user called @p text: a name, or "crc:16,0x8005,0,true,true,0" with the parameters of
/// a kvrimage::crc_model.
/// @throws tool_error (wrong usage), with the nearest name
[[nodiscard]] kvrimage::checksum_kind checksum_of_user(std::string_view text);

/// The names, separated by blanks.
[[nodiscard]] std::string checksum_choices();

} // namespace kvrmem
