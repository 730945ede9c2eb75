#include "kvrimage/formats/elf/elf_reader.h"

#include "kvrimage/bytes/byte_blocks.h"
#include "kvrimage/bytes/words_of_bytes.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/formats/elf/elf_file.h"
#include "kvrimage/formats/elf/elf_format.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

constexpr std::uint64_t widest_span = std::uint64_t{256} << 20U;
/// How often the bytes of a file may be loaded: neighboring segments share some.
constexpr std::uint64_t most_loads = 4;

std::string_view title_of_order(byte_order order) {
    return order == byte_order::big ? "big endian" : "little endian";
}

/// Returns "segment 0" or "section .text".
std::string shown_part(const elf_part& part, bool is_section) {
    return (is_section ? "section " : "") + part.name;
}

class elf_reading {
public:
    elf_reading(std::string_view file, const read_options& given)
        : contents(file),
          options(given),
          sections_wanted(chosen(given.choices, "section")),
          is_virtual(chosen(given.choices, "address").value_or("") == "virtual"),
          list(given.most_diagnostics, given.wants_repairs),
          blocks(given.keeper) {}

    read_result read() {
        result.facts.as = &elf_format;
        const auto found = read_elf_facts(contents, sections_wanted.has_value());
        if (!found) {
            list.add(diagnose::not_elf({}));
        } else {
            read_parts(*found);
        }
        finish_byte_reading(contents, options, list, result);
        return std::move(result);
    }

private:
    void read_parts(const elf_facts& facts) {
        make_facts(facts);
        const std::vector<elf_part> parts = sections_wanted ? chosen_sections(facts) : loaded_segments(facts);
        if (list.has_broken()) {
            return;
        }
        load(parts);
        require_proportion();
        require_short_span();
        if (!list.has_broken()) {
            make_words(facts);
        }
    }

    void make_facts(const elf_facts& facts) {
        result.facts.more.push_back(
            {"class", fmt::format("{} bits, {}", facts.is_64_bits ? 64 : 32, title_of_order(facts.order))});
        result.facts.more.push_back({"start address", fmt::format("{:X}", facts.entry)});
        if (facts.entry != 0) { // 0 means that there is none
            result.facts.start_address = facts.entry;
        }
    }

    std::vector<elf_part> loaded_segments(const elf_facts& facts) {
        require_undamaged(facts);
        std::vector<elf_part> parts;
        std::ranges::copy_if(facts.segments, std::back_inserter(parts),
                             [](const elf_part& each) { return each.size != 0; });
        if (parts.empty() && !list.has_broken()) {
            list.add(diagnose::elf_no_contents(
                {}, facts.is_object ? "link the object file first, or read --section NAME" : ""));
        }
        return parts;
    }

    std::vector<elf_part> chosen_sections(const elf_facts& facts) {
        std::vector<elf_part> parts;
        std::string_view left = *sections_wanted;
        for (bool is_last = false; !is_last;) {
            const std::size_t comma = left.find(',');
            is_last = comma == std::string_view::npos;
            choose_section(left.substr(0, comma), facts, parts);
            left.remove_prefix(is_last ? left.size() : comma + 1);
        }
        return parts;
    }

    /// Several sections may have the same name.
    void choose_section(std::string_view name, const elf_facts& facts, std::vector<elf_part>& parts) {
        const std::size_t before = parts.size();
        std::ranges::copy_if(facts.sections, std::back_inserter(parts),
                             [name](const elf_part& each) { return each.name == name && each.size != 0; });
        if (parts.size() != before) {
            return;
        }
        const bool is_there =
            std::ranges::find(facts.sections, name, &elf_part::name) != facts.sections.end();
        if (is_there) {
            list.add(diagnose::elf_empty_section({}, name));
        } else if (!require_undamaged(facts)) {
            list.add(diagnose::elf_section({}, name, names_of_sections(facts)));
        }
    }

    static std::string names_of_sections(const elf_facts& facts) {
        std::string names;
        for (const elf_part& each : facts.sections) {
            if (each.size != 0) {
                names += (names.empty() ? "" : ", ") + each.name;
            }
        }
        return names;
    }

    /// Returns whether the file is damaged, and reports it.
    bool require_undamaged(const elf_facts& facts) {
        if (facts.damaged.empty()) {
            return false;
        }
        list.add(diagnose::elf_damaged({}, facts.damaged, facts.reason));
        return true;
    }

    void load(const std::vector<elf_part>& parts) {
        for (const elf_part& each : parts) {
            const std::string name = shown_part(each, sections_wanted.has_value());
            if (each.offset > contents.size() || each.size > contents.size() - each.offset) {
                list.add(diagnose::elf_beyond_file({}, name, each.offset, each.offset + (each.size - 1),
                                                   contents.size()));
                continue;
            }
            const std::uint64_t address = is_virtual ? each.virtual_address : each.physical_address;
            if (each.size - 1 > std::numeric_limits<std::uint64_t>::max() - address) {
                list.add(diagnose::elf_address_wraps({}, name));
                continue;
            }
            add(each, name, address);
        }
    }

    void add(const elf_part& part, const std::string& name, std::uint64_t address) {
        blocks.add(address, contents.substr(static_cast<std::size_t>(part.offset),
                                            static_cast<std::size_t>(part.size)));
        bytes += part.size;
        lowest = std::min(lowest, address);
        highest = std::max(highest, address + part.size - 1);
        const std::string not_set =
            part.room > part.size ? fmt::format(", {} more are not set", part.room - part.size) : "";
        result.facts.more.push_back(
            {name, fmt::format("{:X}..{:X}, {} bytes from offset {}{}", address, address + part.size - 1,
                               part.size, part.offset, not_set)});
    }

    void require_proportion() {
        if (bytes / most_loads > contents.size()) {
            list.add(diagnose::elf_out_of_proportion({}, bytes, contents.size()));
        }
    }

    void require_short_span() {
        const bool is_allowed =
            options.base || sections_wanted || chosen(options.choices, "sparse").has_value();
        if (!is_allowed && bytes != 0 && highest - lowest >= widest_span) {
            list.add(diagnose::elf_span({}, fmt::format("{:X}", lowest), fmt::format("{:X}", highest),
                                        (highest - lowest) >> 20U));
        }
    }

    void make_words(const elf_facts& facts) {
        read_options with_order = options;
        with_order.order = options.order.value_or(facts.order);
        if (*with_order.order != facts.order) {
            list.add(diagnose::elf_order({}, title_of_order(facts.order), title_of_order(*with_order.order)));
        }
        // Lines have no meaning here; messages state the address instead.
        make_words_of_bytes(
            blocks, with_order, [](std::uint64_t) { return span(); }, list, result);
    }

    std::string_view contents;
    const read_options& options;
    std::optional<std::string_view> sections_wanted;
    bool is_virtual;
    diagnostic_list list;
    read_result result;
    byte_blocks blocks;
    std::uint64_t bytes = 0;
    std::uint64_t lowest = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t highest = 0;
};

} // namespace

read_result read_elf(std::string_view contents, const read_options& options) {
    return elf_reading(contents, options).read();
}

certainty sniff_elf(std::string_view head) {
    constexpr std::string_view magic = "\x7F"
                                       "ELF";
    constexpr std::size_t class_and_order = 6;
    if (!head.starts_with(magic) || head.size() < class_and_order) {
        return certainty::no;
    }
    const auto is_known = [](char value) { return value == 1 || value == 2; };
    return is_known(head[4]) && is_known(head[5]) ? certainty::certain : certainty::likely;
}

} // namespace kvrimage
