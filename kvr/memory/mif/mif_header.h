#pragma once

#include "kvr/memory/mif/mif_memory.h"
#include "kvr/memory/read_fault.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace kvr {

/// A fault at a place of a text that was already extracted from its line.
struct text_fault {
    fault_code code;
    std::size_t offset;
    std::size_t length;
};

/// A keyword of the MIF header with its properties.
struct header_keyword {
    std::string_view keyword; ///< to be found in the line, which is in upper case and without blanks
    bool is_size;             ///< true if a number follows, false if a radix name does
    fault_code code;
    KVR_ERROR_STATES state;
    // Three parts of the error message. The line is inserted between the second and the third.
    std::string_view complaint;
    std::string_view introduction;
    std::string_view location;
};

/// In the order in which lines are tested. Header comment list i + 1 follows keyword i.
extern const std::array<header_keyword, 4> header_keywords;
inline constexpr std::size_t width_keyword = 0;
inline constexpr std::size_t depth_keyword = 1;
inline constexpr std::size_t address_radix_keyword = 2;
inline constexpr std::size_t data_radix_keyword = 3;

/// Fills the table of radix keywords. Its last entry stays empty.
void fill_radix_names(mif_memory& memory);

/// Parses the number of a width or depth line: the first run of decimal digits, from 1 to 2,147,483,647. The
/// first ";" of the line must follow it. A line with "WIDTH" sets the word size. Any other line sets the
/// depth, which resizes the words and clears the set of addresses already set.
std::optional<text_fault> parse_size_line(mif_memory& memory, std::string_view line);

/// Parses the radix of an address or data radix line: the first radix name found anywhere in it. The first
/// ";" of the line must follow it. A line with both keywords sets both radixes.
std::optional<text_fault> parse_radix_line(mif_memory& memory, std::string_view line);

} // namespace kvr
