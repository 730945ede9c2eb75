#pragma once

#include "kvrimage/formats/format.h"

#include <span>
#include <string_view>

namespace kvrimage {

/// Implements format::edit for Intel HEX. Replaces the digits of a word in the last record that sets it, and
/// the checksum of that record. Words that no record sets get new records before the end record. A record
/// with faulty digits or checksum can be edited only if all of its words are assigned; it is valid
/// afterwards.
[[nodiscard]] edit_result edit_hex(std::string_view contents, const read_options& options,
                                   const read_result& ours, std::span<const assignment> assignments);

} // namespace kvrimage
