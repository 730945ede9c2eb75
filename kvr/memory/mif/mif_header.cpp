#include "kvr/memory/mif/mif_header.h"

#include "kvr/memory/mif/mif_line.h"

#include <limits>

namespace kvr {

const std::array<header_keyword, 4> header_keywords = {{
    {"WIDTH", true, fault_code::width_syntax, ERROR_STATE_INVALID_WIDTH,
     "Width description in MIF file is of illegal syntax. ", " Invalid width description -- ",
     " -- found in file "},
    {"DEPTH=", true, fault_code::depth_syntax, ERROR_STATE_INVALID_DEPTH,
     "Depth description in MIF file is of illegal syntax. ", " Invalid depth description -- ",
     " -- found in file "},
    {"ADDRESS_RADIX=", false, fault_code::address_radix_syntax, ERROR_STATE_INVALID_ADDRESS_RADIX,
     "Address radix description in MIF file is of illegal syntax. ", " Invalid address radix description -- ",
     " -- found in file "},
    {"DATA_RADIX=", false, fault_code::data_radix_syntax, ERROR_STATE_INVALID_DATA_RADIX,
     "Memory radix description in MIF file is of illegal syntax. ", " Invalid memory radix description -- ",
     " -- found in file -- "},
}};

namespace {

/// Returns the value of @p digits, or 0, which is no valid width or depth, if it is too large.
std::uint32_t size_from(std::string_view digits) {
    constexpr std::uint64_t largest = std::numeric_limits<std::int32_t>::max();
    std::uint64_t number = 0;
    for (const char digit : digits) {
        number = number * 10 + static_cast<std::uint64_t>(digit - '0');
        if (number > largest) {
            return 0;
        }
    }
    return static_cast<std::uint32_t>(number);
}

/// The radix name of a line and its position.
struct radix_choice {
    KVR_MEMORY_RADIXES radix;
    std::size_t position;
};

/// The empty name at the end of the table matches any line, so there is always a result.
radix_choice find_radix(const mif_memory& memory, std::string_view line) {
    const auto* entry = memory.radix_names.data();
    while (line.find(entry->name) == std::string_view::npos) {
        ++entry;
    }
    return {entry->radix, line.find(entry->name)};
}

} // namespace

void fill_radix_names(mif_memory& memory) {
    memory.radix_names = {{{"BIN", RADIX_BIN},
                           {"DEC", RADIX_DEC},
                           {"UNS", RADIX_UNS},
                           {"HEX", RADIX_HEX},
                           {"OCT", RADIX_OCT},
                           {"", RADIX_NONE}}};
}

std::optional<text_fault> parse_size_line(mif_memory& memory, std::string_view line) {
    constexpr std::string_view digits = "0123456789";
    const bool is_width = contains(line, "WIDTH");
    const fault_code code = is_width ? fault_code::width_syntax : fault_code::depth_syntax;
    const std::size_t begin = line.find_first_of(digits);
    if (begin == std::string_view::npos) {
        return text_fault{code, 0, line.size()};
    }
    const std::size_t end = std::min(line.find_first_not_of(digits, begin), line.size());
    const std::uint32_t number = size_from(line.substr(begin, end - begin));
    const std::size_t semicolon = line.find(';');
    if (number == 0 || semicolon == std::string_view::npos || semicolon < end) {
        return text_fault{code, begin, end - begin};
    }
    if (is_width) {
        memory.word_size = number;
    } else {
        memory.resize_words(number);
        memory.address_set.clear();
    }
    return std::nullopt;
}

std::optional<text_fault> parse_radix_line(mif_memory& memory, std::string_view line) {
    const bool is_address = contains(line, header_keywords[address_radix_keyword].keyword);
    const bool is_data = contains(line, header_keywords[data_radix_keyword].keyword);
    const radix_choice choice = find_radix(memory, line);
    const std::size_t semicolon = line.find(';');
    if (semicolon == std::string_view::npos || semicolon <= choice.position) {
        return text_fault{is_address ? fault_code::address_radix_syntax : fault_code::data_radix_syntax, 0,
                          line.size()};
    }
    if (is_address) {
        memory.address_radix = choice.radix;
    }
    if (is_data) {
        memory.memory_radix = choice.radix;
    }
    return std::nullopt;
}

} // namespace kvr
