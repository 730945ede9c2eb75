#pragma once

#include "kvrimage/bytes/byte_blocks.h"
#include "kvrimage/bytes/record_run.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/diagnostics/places.h"
#include "kvrimage/formats/format.h"
#include "kvrimage/formats/hex/hex_records.h"
#include "kvrimage/image/address_range.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Takes the data records of a file whose addresses count bytes.
class hex_bytes {
public:
    explicit hex_bytes(std::string_view file) : contents(file), blocks(file.size() / 2 + 1) {}

    /// Takes a record without a fault.
    /// @param bytes of the data; those that go beyond the end of a segment are at its begin
    void take(const hex_offset& offset, std::uint32_t address, std::string_view digits, const span& where);
    /// Takes the records at the front of @p lines that are as nearly all are.
    record_run add_run(const hex_offset& offset, std::string_view lines);
    /// Notes that @p bytes bytes from @p address on are in doubt.
    void mark_unreadable(std::uint64_t address, std::uint32_t bytes);

    /// Reports what is wrong with the addresses, and makes the words.
    void finish(const read_options& options, diagnostic_list& diagnostics, read_result& result);

private:
    void add(std::uint64_t address, std::string_view digits, const span& where);

    std::string_view contents;
    byte_blocks blocks;
    places wrapped, outside;
    std::uint64_t first_wrapped = 0;
    std::uint64_t first_outside = 0;
    std::vector<address_range> in_doubt; ///< bytes
};

/// Where the byte at @p address is set last, in the file of a memory whose addresses count bytes.
[[nodiscard]] span find_hex_byte(std::string_view contents, std::uint64_t address);

} // namespace kvrimage
