#pragma once

#include "kvr/memory/read_fault.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvr {

class line_source;
struct hex_memory;

/// What ended a pass, and the line at fault without its blanks.
struct hex_read_stop {
    read_fault fault;
    std::string line_text;
};

/// Reads the file named @p path into @p memory with read_hex_lines(). A file that cannot be opened gives
/// what that function gives for a file that cannot be read.
bool read_hex_file(hex_memory& memory, const std::string& path);

/// Reads @p source, which is at its first line, into @p memory, in two passes: the first checks the
/// records and finds the number of words, the second stores them. Words that no record sets keep their
/// text. Faults are reported to the owner of the memory, under the memory's own file name, and left
/// in its status fields; a file that cannot be read to its end counts as one that cannot be opened.
///
/// @param observer where it returns true for a fault, that line is skipped in both passes. The faults
///                 without a line to skip (no end record, no data) end the read in any case. The
///                 owner of the memory then gets no message of a fault.
/// @return true when all lines that were not skipped were read.
bool read_hex_lines(hex_memory& memory, line_source& source, read_observer* observer = nullptr);

/// The first pass: checks every record of @p source, which is at its first line, sets the lowest and
/// highest address of @p memory (also when it stops early) and sizes its words (only when it does not).
/// Faults are reported to an @p observer. No value when the pass succeeded.
[[nodiscard]] std::optional<hex_read_stop> find_address_space(hex_memory& memory, line_source& source,
                                                              read_observer* observer = nullptr);

/// The second pass: stores the words of every record of @p source, which is at its first line. Without
/// an observer checksums are not tested again. With an @p observer, the first pass has reported the faults
/// to it and has not stopped: lines at fault are skipped, the words are reported. No value when the pass
/// succeeded.
[[nodiscard]] std::optional<hex_read_stop> store_hex_records(hex_memory& memory, line_source& source,
                                                             read_observer* observer = nullptr);

/// Stores the words of one data record from the address @p first on, with the digits of @p data
/// unchanged. Words of a width that is not a multiple of 8 lose digits at the front of the record and of
/// each word, so a record of several such words is not read back as it was written; callers rely on it.
/// Words outside the store are dropped.
///
/// @param record_bytes number of data bytes that the record says it has.
/// @return number of words stored or dropped.
std::uint32_t store_hex_words(hex_memory& memory, std::uint32_t first, std::string_view data,
                              std::uint32_t record_bytes);

} // namespace kvr
