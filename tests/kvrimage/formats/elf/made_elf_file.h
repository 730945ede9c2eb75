#pragma once

#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kvrimage_tests {

/// A loaded segment or a section of a generated file.
struct made_part {
    std::string name; ///< for a section
    std::uint64_t virtual_address = 0;
    std::uint64_t physical_address = 0; ///< for a segment
    std::string contents;
    std::uint64_t more_room = 0; ///< reserved bytes after the contents
};

struct made_elf {
    bool is_64_bits = false;
    kvrimage::byte_order order = kvrimage::byte_order::little;
    std::uint16_t type = 2; ///< an executable file
    std::uint64_t entry = 0;
    std::vector<made_part> segments;
    std::vector<made_part> sections; ///< a section with the contents of a segment shares its bytes
};

/// The bytes of the file: the header, the table of segments, the contents, the table of sections.
[[nodiscard]] std::string bytes_of_elf(const made_elf& file);

} // namespace kvrimage_tests
