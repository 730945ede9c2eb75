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

/// A range of bytes of an ELF file that is loaded into memory.
struct elf_part {
    std::string name; ///< "segment 0", "section .text"
    std::uint64_t virtual_address = 0;
    std::uint64_t physical_address = 0; ///< load address
    std::uint64_t offset = 0;           ///< in the file
    std::uint64_t size = 0;             ///< bytes in the file
    std::uint64_t room = 0;             ///< bytes in memory
};

/// Properties of an ELF file. They are not checked against the file size.
struct elf_facts {
    bool is_64_bits = false;
    byte_order order = byte_order::little;
    std::uint64_t entry = 0;
    bool is_object = false;         ///< relocatable: it has sections only
    std::vector<elf_part> segments; ///< loadable ones, in file order
    /// Named sections, in file order.
    std::vector<elf_part> sections;
    std::string damaged; ///< the unreadable header or table; "" if all are readable
    std::string reason;  ///< the cause of the damage
};

/// Returns the facts of @p contents; nothing if it is not a 32-bit or 64-bit ELF file.
[[nodiscard]] std::optional<elf_facts> read_elf_facts(std::string_view contents, bool with_sections);

} // namespace kvrimage
