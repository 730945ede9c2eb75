#pragma once

#include "kvr/memory/mif/mif_memory.h"
#include "kvr/memory/read_fault.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace kvr {

/// A fault at a place of a text that a reader has already extracted from its line.
struct text_fault {
    fault_code code;
    std::size_t offset;
    std::size_t length;
};

/// A keyword of the MIF header and what belongs to it.
struct header_keyword {
    std::string_view keyword; ///< occurs in the line, which is upper-cased and without blanks
    bool is_size;             ///< a number follows, else a radix name
    fault_code code;
    KVR_ERROR_STATES state;
    // Three pieces of the error message, with the line between the second and the third.
    std::string_view complaint;
    std::string_view introduction;
    std::string_view location;
};

/// In the order in which a line is tested for them. Keyword i leads header comment list i + 1.
extern const std::array<header_keyword, 4> header_keywords;
inline constexpr std::size_t width_keyword = 0;
inline constexpr std::size_t depth_keyword = 1;
inline constexpr std::size_t address_radix_keyword = 2;
inline constexpr std::size_t data_radix_keyword = 3;

/// Fills the table of radix keywords; its last entry stays empty.
void fill_radix_names(mif_memory& memory);

/// Reads the number of a width or depth line: the first run of decimal digits, above 0 and at most
/// 2,147,483,647, with the first ";" after it. Any line with "WIDTH" sets the word size; another one the
/// depth, which sizes the words and clears the record of the addresses that were set.
std::optional<text_fault> parse_size_line(mif_memory& memory, std::string_view line);

/// Reads the radix of an address or data radix line: the first radix name that occurs anywhere in it, with
/// the first ";" after it. A line that has both keywords sets both.
std::optional<text_fault> parse_radix_line(mif_memory& memory, std::string_view line);

} // namespace kvr
