#pragma once

#include "kvr/memory/hex/hex_record_walk.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kvrmem {

// How the words of a memory stand in the records of an Intel HEX file: each takes whole bytes, a record holds
// whole words, and addresses count words.

constexpr std::uint32_t bits_per_byte = 8;
constexpr std::uint32_t most_data_bytes = 255; ///< of a record
constexpr std::uint32_t hex_page_shift = 16;   ///< the address field counts words within a page
constexpr std::uint32_t hex_page_words = 1U << hex_page_shift;

/// The bytes that a word of @p width bits takes.
[[nodiscard]] constexpr std::uint32_t bytes_for(std::uint32_t width) {
    return (width + bits_per_byte - 1) / bits_per_byte;
}

/// The address of the first word of the record that @p walk stands at; 2^32 and more can occur.
[[nodiscard]] inline std::uint64_t address_of_record(const kvr::hex_record_walk& walk) {
    return std::uint64_t{walk.address_offset()} + walk.record().word_address;
}

/// True when @p record, a line that begins with ":" without its blanks, is an end record by its type, right
/// or wrong as it may be otherwise.
[[nodiscard]] bool is_hex_end_record(std::string_view record);

/// The two digits that make the bytes of a record add up to 0 behind its other @p fields (digits from the
/// record length to the end of the data).
[[nodiscard]] std::string checksum_of(std::string_view fields);

} // namespace kvrmem
