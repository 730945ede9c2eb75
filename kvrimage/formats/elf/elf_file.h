#pragma once

#include "kvrimage/formats/format.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Bytes of an ELF file that are put into a memory.
struct elf_part {
    std::string name; ///< "segment 0", "section .text"
    std::uint64_t virtual_address = 0;
    std::uint64_t physical_address = 0; ///< where it is loaded
    std::uint64_t offset = 0;           ///< in the file
    std::uint64_t size = 0;             ///< bytes in the file
    std::uint64_t room = 0;             ///< bytes in the memory
};

/// What an ELF file says of itself. Nothing in it is checked against the size of the file.
struct elf_facts {
    bool is_64_bits = false;
    byte_order order = byte_order::little;
    std::uint64_t entry = 0;
    bool is_object = false;         ///< to be linked: it has sections only
    std::vector<elf_part> segments; ///< that are loaded, in the order of the file
    std::vector<elf_part>
        sections;        ///< by their names, in the order of the file; without those without a name
    std::string damaged; ///< the header or table that cannot be read; "" when all can
    std::string reason;  ///< why
};

/// The facts of @p contents; nothing when they are no ELF file of 32 or 64 bits.
[[nodiscard]] std::optional<elf_facts> read_elf_facts(std::string_view contents, bool with_sections);

} // namespace kvrimage
