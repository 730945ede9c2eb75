#include "tests/kvrimage/formats/elf/made_elf_file.h"

#include <algorithm>

namespace kvrimage_tests {

namespace {

using kvrimage::byte_order;

constexpr std::uint32_t loaded_segment = 1;
constexpr std::uint32_t section_of_contents = 1;
constexpr std::uint32_t section_of_names = 3;
constexpr std::uint32_t section_without_contents = 8;

class elf_maker {
public:
    explicit elf_maker(const made_elf& made) : file(made) {}

    std::string make() {
        const std::size_t header_size = file.is_64_bits ? 64 : 52;
        const std::size_t segment_size = file.is_64_bits ? 56 : 32;
        contents_begin = header_size + segment_size * file.segments.size();
        const std::string segments = segment_table();
        const std::string sections = section_table();
        header(header_size, segment_size);
        return out + segments + contents + sections;
    }

private:
    static void put(std::string& to, std::uint64_t value, unsigned bytes, byte_order order) {
        for (unsigned index = 0; index < bytes; ++index) {
            const unsigned place = order == byte_order::little ? index : bytes - 1 - index;
            to += static_cast<char>(value >> (8 * place));
        }
    }
    void half(std::string& to, std::uint64_t value) const { put(to, value, 2, file.order); }
    void word(std::string& to, std::uint64_t value) const { put(to, value, 4, file.order); }
    void wide(std::string& to, std::uint64_t value) const {
        put(to, value, file.is_64_bits ? 8 : 4, file.order);
    }

    std::string segment_table() {
        std::string table;
        for (const made_part& each : file.segments) {
            const std::uint64_t offset = contents_begin + contents.size();
            contents += each.contents;
            word(table, loaded_segment);
            if (file.is_64_bits) {
                word(table, 7);
            }
            wide(table, offset);
            wide(table, each.virtual_address);
            wide(table, each.physical_address);
            wide(table, each.contents.size());
            wide(table, each.contents.size() + each.more_room);
            if (!file.is_64_bits) {
                word(table, 7);
            }
            wide(table, 1);
        }
        return table;
    }

    void section(std::string& table, std::uint64_t name, std::uint32_t type, std::uint64_t address,
                 std::uint64_t offset, std::uint64_t size) const {
        word(table, name);
        word(table, type);
        wide(table, 0);
        wide(table, address);
        wide(table, offset);
        wide(table, size);
        word(table, 0);
        word(table, 0);
        wide(table, 1);
        wide(table, 0);
    }

    std::string section_table() {
        std::string names(1, '\0');
        std::string table;
        section(table, 0, 0, 0, 0, 0);
        for (const made_part& each : file.sections) {
            const std::size_t found = contents.find(each.contents);
            const std::size_t offset = found != std::string::npos ? found : contents.size();
            contents += found != std::string::npos ? "" : each.contents;
            section(table, names.size(),
                    each.contents.empty() ? section_without_contents : section_of_contents,
                    each.virtual_address, contents_begin + offset, each.contents.size() + each.more_room);
            names += each.name + '\0';
        }
        const std::size_t name = names.size();
        names += std::string(".shstrtab") + '\0';
        section(table, name, section_of_names, 0, contents_begin + contents.size(), names.size());
        contents += names;
        contents.append((8 - (contents_begin + contents.size()) % 8) % 8, '\0');
        return table;
    }

    void header(std::size_t header_size, std::size_t segment_size) {
        out = "\x7F"
              "ELF";
        out += file.is_64_bits ? '\2' : '\1';
        out += file.order == byte_order::little ? '\1' : '\2';
        out += '\1';
        out.append(9, '\0');
        half(out, file.type);
        half(out, 243);
        word(out, 1);
        wide(out, file.entry);
        wide(out, header_size);
        wide(out, contents_begin + contents.size());
        word(out, 0);
        half(out, header_size);
        half(out, segment_size);
        half(out, file.segments.size());
        half(out, file.is_64_bits ? 64 : 40);
        half(out, file.sections.size() + 2);
        half(out, file.sections.size() + 1);
    }

    const made_elf& file;
    std::size_t contents_begin = 0;
    std::string contents;
    std::string out;
};

} // namespace

std::string bytes_of_elf(const made_elf& file) {
    return elf_maker(file).make();
}

} // namespace kvrimage_tests
