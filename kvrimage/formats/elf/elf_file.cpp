#include "kvrimage/formats/elf/elf_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <gelf.h>
#include <memory>

namespace kvrimage {

namespace {

struct elf_closer {
    void operator()(Elf* file) const noexcept { static_cast<void>(elf_end(file)); }
};
using open_elf = std::unique_ptr<Elf, elf_closer>;

open_elf open_contents(std::string_view contents) {
    static_cast<void>(elf_version(EV_CURRENT));
    // The library only reads the memory, although its interface takes a non-const pointer.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    return open_elf(elf_memory(const_cast<char*>(contents.data()), contents.size()));
}

/// Records the damage that the library reports.
void note_damage(elf_facts& facts, std::string_view what) {
    if (facts.damaged.empty()) {
        constexpr int latest_error = -1;
        facts.damaged = what;
        facts.reason = elf_errmsg(latest_error);
    }
}

void read_segments(Elf* file, elf_facts& facts) {
    std::size_t count = 0;
    if (elf_getphdrnum(file, &count) != 0) {
        note_damage(facts, "the number of segments");
        return;
    }
    for (std::size_t index = 0; index < count; ++index) {
        GElf_Phdr header;
        if (gelf_getphdr(file, static_cast<int>(index), &header) == nullptr) {
            note_damage(facts, "the table of segments");
            return;
        }
        if (header.p_type == PT_LOAD) {
            facts.segments.push_back({fmt::format("segment {}", index), header.p_vaddr, header.p_paddr,
                                      header.p_offset, header.p_filesz, header.p_memsz});
        }
    }
}

/// Returns the load address of a section: it has the same distance to its segment as in the file.
std::uint64_t physical_address_of(const GElf_Shdr& header, const std::vector<elf_part>& segments) {
    const auto found = std::ranges::find_if(segments, [&header](const elf_part& each) {
        return header.sh_offset >= each.offset && header.sh_offset - each.offset < each.size;
    });
    return found != segments.end() ? found->physical_address + (header.sh_offset - found->offset)
                                   : header.sh_addr;
}

void read_sections(Elf* file, elf_facts& facts) {
    std::size_t names = 0;
    if (elf_getshdrstrndx(file, &names) != 0) {
        note_damage(facts, "the table of sections");
        return;
    }
    for (Elf_Scn* section = nullptr; (section = elf_nextscn(file, section)) != nullptr;) {
        GElf_Shdr header{}; // stays unnamed if the library is out of memory
        static_cast<void>(gelf_getshdr(section, &header));
        const char* const name = elf_strptr(file, names, header.sh_name);
        if (name == nullptr) {
            note_damage(facts, "the name of a section");
        } else if (*name != '\0') {
            const std::uint64_t size = header.sh_type == SHT_NOBITS ? 0 : header.sh_size;
            facts.sections.push_back({name, header.sh_addr, physical_address_of(header, facts.segments),
                                      header.sh_offset, size, header.sh_size});
        }
    }
}

} // namespace

std::optional<elf_facts> read_elf_facts(std::string_view contents, bool with_sections) {
    const open_elf file = open_contents(contents);
    GElf_Ehdr header;
    if (gelf_getehdr(file.get(), &header) == nullptr) { // also for a null or non-ELF file
        return std::nullopt;
    }
    elf_facts facts;
    facts.is_64_bits = header.e_ident[EI_CLASS] == ELFCLASS64;
    facts.order = header.e_ident[EI_DATA] == ELFDATA2MSB ? byte_order::big : byte_order::little;
    facts.entry = header.e_entry;
    facts.is_object = header.e_type == ET_REL;
    read_segments(file.get(), facts);
    if (with_sections) {
        read_sections(file.get(), facts);
    }
    return facts;
}

} // namespace kvrimage
