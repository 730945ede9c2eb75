#pragma once

#include <cstdint>
#include <string_view>

namespace kvr {

/// What a reader found wrong.
enum class fault_code : std::uint8_t {
    // MIF
    line_too_long,
    width_syntax,
    depth_syntax,
    address_radix_syntax,
    data_radix_syntax,
    content_syntax,       ///< a content line without address, ":" or value, or with these out of order
    range_syntax,         ///< a content line with "[" that is no range
    range_not_ascending,  ///< the first address of a range is not below the last
    address_out_of_range, ///< an address, or the last one that the values reach, is not below the depth
    address_set_twice,
    end_before_begin,
    missing_end,
    // Intel HEX
    record_too_short, ///< the fields of a record end early
    record_length,    ///< the length of data and checksum is not the one that the record length says
    checksum,         ///< the bytes of a record do not add up to 0 modulo 256
    record_type,      ///< a record type that is not 00 to 05
    record_too_long,  ///< a line beyond the length limit that begins with ":"
    word_size_zero,   ///< words of no bits cannot be read
    missing_end_record,
    no_data, ///< the end record precedes any data
    // RIF
    illegal_character,
};

/// A fault and its place in the file.
struct read_fault {
    fault_code code;
    std::uint64_t line;   ///< physical line, from 1
    std::uint32_t column; ///< byte in that line, from 1; 0 when the fault has no place in a line
    std::uint32_t length; ///< bytes from there on that are at fault, at least 1 when there is a column
};

/// Observes the reading of a file. The readers of the library run without one and stop at the first fault.
class read_observer {
public:
    read_observer() = default;
    read_observer(const read_observer&) = delete;
    read_observer& operator=(const read_observer&) = delete;
    virtual ~read_observer() = default;

    /// Called for every fault. @p text is the line or record at fault, as the reader has it. True makes
    /// the reader skip that line and go on with the next one.
    virtual bool fault(const read_fault& fault, std::string_view text) = 0;

    /// Called after the words from @p first to @p last (inclusive) were stored by the line numbered
    /// @p line, or were dropped because they are outside the store.
    virtual void words(std::uint64_t first, std::uint64_t last, std::uint64_t line) = 0;

    /// RIF: called for every "@" line, before any word that it places. @p text is the line as the reader
    /// has it, @p address the value that it parses.
    virtual void address_line([[maybe_unused]] std::uint64_t address, [[maybe_unused]] std::uint64_t line,
                              [[maybe_unused]] std::string_view text) {}
};

} // namespace kvr
