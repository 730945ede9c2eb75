#pragma once

#include "kvr/memory/io/output_file.h"
#include "kvr/memory/mif/mif_memory.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvr {

/// Appends @p number in the base of @p radix (decimal unless BIN, OCT or HEX), most significant digit first,
/// with lower-case letters. Unless it is decimal, it is zero-padded to @p width characters.
void append_address(std::string& out, std::uint32_t number, KVR_MEMORY_RADIXES radix, std::size_t width);

/// Returns the length that append_address() produces without padding.
[[nodiscard]] std::size_t address_length(std::uint32_t number, KVR_MEMORY_RADIXES radix);

/// Appends the content line that assigns @p data to the addresses @p first to @p last: a range, or a single
/// address padded with blanks to @p address_width. A comment, if there is one, follows.
void append_content_line(std::string& out, std::uint32_t first, std::uint32_t last, std::string_view data,
                         KVR_MEMORY_RADIXES address_radix, std::size_t address_width,
                         std::string_view comment);

/// Returns the header keyword of @p radix; "" if it has none.
[[nodiscard]] std::string radix_keyword(const mif_memory& memory, KVR_MEMORY_RADIXES radix);

// The four keyword lines of the header.
[[nodiscard]] std::string width_line(const mif_memory& memory);
[[nodiscard]] std::string depth_line(const mif_memory& memory);
[[nodiscard]] std::string address_radix_line(const mif_memory& memory);
[[nodiscard]] std::string data_radix_line(const mif_memory& memory);

/// Writes the lines of header comment list @p index, each after "-- ". Returns true if there were any.
bool write_header_comments(const mif_memory& memory, std::size_t index, output_file& output);

/// Writes the file of @p memory. Returns true if every byte was written; otherwise sets `error_occurred` and
/// reports a message.
bool write_mif_file(mif_memory& memory);

} // namespace kvr
