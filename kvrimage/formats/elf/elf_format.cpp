#include "kvrimage/formats/elf/elf_format.h"

#include "kvrimage/formats/elf/elf_reader.h"

#include <array>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 3> elf_extensions = {"elf", "axf", "out"};

constexpr std::array<choice_kind, 3> elf_read_choices = {{
    {"address", "KIND", "physical virtual", "load segments at physical or at virtual addresses"},
    {"section", "NAME,...", "", "read the sections NAME instead of the segments"},
    {"sparse", "", "", "accept contents that span more than 256 MiB"},
}};

} // namespace

const format elf_format = {
    .id = "elf",
    .title = "ELF",
    .extensions = elf_extensions,
    .counts = address_unit::byte,
    .has_lines = false,
    .sniff = sniff_elf,
    .read = read_elf,
    .read_choices = elf_read_choices,
};

} // namespace kvrimage
