#pragma once

#include "kvrimage/bytes/record_style.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// Consecutive data records of equal length with consecutive addresses.
struct record_run {
    std::uint64_t address = 0; ///< address of the first record
    std::size_t records = 0;   ///< number of records; 0 if none was consumed
    std::size_t bytes = 0;     ///< number of data bytes
    std::size_t size = 0;      ///< number of characters with line ends
};

/// Fast path for common records: parses the records at the front of @p lines that have a line of their own
/// with LF or CR LF, no fault, and data within the address range. The general parser gets the rest and would
/// parse these records identically.
/// @param data receives the data bytes; bytes after them may be overwritten. It must have room for half as
/// many bytes as @p lines has characters
[[nodiscard]] record_run parse_record_run(std::string_view lines, const record_style& style,
                                          char* data) noexcept;

} // namespace kvrimage
