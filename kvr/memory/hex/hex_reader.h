#pragma once

#include "kvr/memory/read_fault.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvr {

class line_source;
struct hex_memory;

/// The fault that ended a pass, and its line without blanks.
struct hex_read_stop {
    read_fault fault;
    std::string line_text;
};

/// Reads the file @p path into @p memory with read_hex_lines(). A file that cannot be opened is treated like
/// one that cannot be read.
bool read_hex_file(hex_memory& memory, const std::string& path);

/// Reads @p source, which must be at its first line, into @p memory. The first of two passes checks the
/// records and determines the number of words; the second stores the words. Words that no record sets keep
/// their text. Faults are reported to the owner of the memory, under the file name of the memory, and
/// recorded in its status fields. A file that cannot be read to its end counts as one that cannot be opened.
///
/// @param observer returns true for a fault to skip its line in both passes. Faults without a line (no end
/// record, no data) always end the read. With an observer, the owner of the memory gets no messages about
/// faults
/// @return true if all lines that were not skipped were read
bool read_hex_lines(hex_memory& memory, line_source& source, read_observer* observer = nullptr);

/// The first pass. It checks every record of @p source, which must be at its first line. It sets the lowest
/// and highest address of @p memory, even if it stops early, and resizes the words only if it does not.
/// Faults are reported to @p observer. Returns nothing on success.
[[nodiscard]] std::optional<hex_read_stop> find_address_space(hex_memory& memory, line_source& source,
                                                              read_observer* observer = nullptr);

/// The second pass. It stores the words of every record of @p source, which must be at its first line.
/// Without an observer, checksums are not tested again. With an @p observer, the first pass must have
/// reported all faults to it without stopping: this pass skips the lines at fault and reports the words.
/// Returns nothing on success.
[[nodiscard]] std::optional<hex_read_stop> store_hex_records(hex_memory& memory, line_source& source,
                                                             read_observer* observer = nullptr);

/// Stores the words of one data record from address @p first on. The digits of @p data are stored unchanged.
/// If the word width is no multiple of 8, digits at the front of the record and of each word are lost, so a
/// record of several such words is not read back as it was written; callers rely on it. Words outside the
/// store are dropped.
///
/// @param record_bytes the number of data bytes according to the record
/// @return the number of words stored or dropped
std::uint32_t store_hex_words(hex_memory& memory, std::uint32_t first, std::string_view data,
                              std::uint32_t record_bytes);

} // namespace kvr
