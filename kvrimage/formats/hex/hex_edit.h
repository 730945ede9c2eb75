#pragma once

#include "kvrimage/formats/format.h"

#include <span>
#include <string_view>

namespace kvrimage {

/// format::edit for Intel HEX. The digits of a word are replaced in the last record that sets it, and the
/// checksum of that record; words that no record sets get records before the end record. A record whose
/// digits or checksum are at fault is right afterwards if all of its words are given, and cannot be edited
/// otherwise.
[[nodiscard]] edit_result edit_hex(std::string_view contents, const read_options& options,
                                   const read_result& ours, std::span<const assignment> assignments);

} // namespace kvrimage
