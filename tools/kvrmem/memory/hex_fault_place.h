#pragma once

#include "kvr/memory/read_fault.h"

#include <cstddef>
#include <string_view>

namespace kvrmem {

/// The first character behind the colon of @p record that is no hexadecimal digit; npos when all are.
[[nodiscard]] std::size_t first_no_digit(std::string_view record);

/// How many digits of its checksum @p record, whose length is at fault, ends without though it has no data
/// that could be missing instead; 0 when it is no such record.
[[nodiscard]] std::size_t missing_checksum_digits(std::string_view record);

/// @p fault with the place that its message is about, where that is not the field that the walk tells.
/// @param record the line at fault without blanks.
/// @param line   the line at fault as the file has it.
[[nodiscard]] kvr::read_fault exact_hex_fault(const kvr::read_fault& fault, std::string_view record,
                                              std::string_view line);

} // namespace kvrmem
