#pragma once

#include <cstdint>
#include <string_view>

namespace kvr {

/// The faults that readers find.
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
    record_too_short, ///< a record ends before its fields are complete
    record_length,    ///< data and checksum do not have the length that the record length gives
    checksum,         ///< the bytes of a record do not add up to 0 modulo 256
    record_type,      ///< the record type is not 00 to 05
    record_too_long,  ///< a line beyond the length limit that begins with ":"
    word_size_zero,   ///< the word size is 0
    missing_end_record,
    no_data, ///< the end record precedes all data
    // RIF
    illegal_character,
};

/// A fault and its place in the file.
struct read_fault {
    fault_code code;
    std::uint64_t line;   ///< physical line, from 1
    std::uint32_t column; ///< byte in the line, from 1; 0 if the fault has no place in a line
    std::uint32_t length; ///< number of bytes at fault, at least 1 if there is a column
};

/// Observes the parsing of a file. Without an observer, readers stop at the first fault.
class read_observer {
public:
    read_observer() = default;
    read_observer(const read_observer&) = delete;
    read_observer& operator=(const read_observer&) = delete;
    virtual ~read_observer() = default;

    /// Called for every fault. @p text is the line or record at fault as the reader sees it. Returns true to
    /// skip that line and continue with the next one.
    virtual bool fault(const read_fault& fault, std::string_view text) = 0;

    /// Called after line @p line has set the words @p first to @p last (inclusive), or has dropped them
    /// because they are outside the store.
    virtual void words(std::uint64_t first, std::uint64_t last, std::uint64_t line) = 0;

    /// RIF: called for every "@" line, before any word that it places. @p text is the line as the reader sees
    /// it, @p address its value.
    virtual void address_line([[maybe_unused]] std::uint64_t address, [[maybe_unused]] std::uint64_t line,
                              [[maybe_unused]] std::string_view text) {}
};

} // namespace kvr
