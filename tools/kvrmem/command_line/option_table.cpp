#include "tools/kvrmem/command_line/option_table.h"

#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/memory_image.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <array>

namespace kvrmem {

namespace {

constexpr std::uint32_t deepest_memory = 0xFFFFFFFF;
constexpr std::uint32_t largest_column_count = 4096;

constexpr const char* format_choices = "mif hex rif";
constexpr const char* radix_choices = "bin oct dec uns hex";
constexpr const char* word_radix_choices = "bin oct dec uns hex fixed:";

[[noreturn]] void refuse(std::string_view name, std::string_view value, std::string_view what) {
    throw tool_error(exit_code::wrong_usage, fmt::format("--{} {}: {}", name, value, what));
}

KVR_FILE_TYPES parse_format(std::string_view name, std::string_view value) {
    const auto format = format_of_name(value);
    if (!format) {
        refuse(name, value, "a format is mif, hex (or ihex) or rif");
    }
    return *format;
}

KVR_MEMORY_RADIXES parse_radix(std::string_view name, std::string_view value) {
    const auto radix = radix_of_name(value);
    if (!radix) {
        refuse(name, value, "a radix is bin, oct, dec, uns or hex");
    }
    return *radix;
}

word_radix parse_word_radix(std::string_view name, std::string_view value) {
    const auto radix = word_radix_of_name(value);
    if (!radix) {
        refuse(name, value,
               "a radix is bin, oct, dec, uns, hex, or fixed:I.F with I integer and F fraction bits");
    }
    return *radix;
}

std::uint32_t parse_size(std::string_view name, std::string_view value, std::uint32_t largest) {
    const auto number = read_human_size(value, largest);
    if (!number || *number == 0) {
        refuse(name, value, fmt::format("this needs a number from 1 to {}", largest));
    }
    return *number;
}

address_range parse_range(std::string_view name, std::string_view value) {
    const auto range = read_address_range(value);
    if (!range) {
        refuse(name, value, "a range is FIRST..LAST, for example 0x10..0x1F, or one address");
    }
    return *range;
}

color_choice parse_color(std::string_view name, std::string_view value) {
    const auto color = color_choice_of_name(value);
    if (!color) {
        refuse(name, value, "colour is auto, always or never");
    }
    return *color;
}

std::string parse_file_name(std::string_view name, std::string_view value) {
    if (value.empty()) {
        refuse(name, "''", "this needs the name of a file");
    }
    return std::string(value);
}

constexpr std::array<option_entry, 25> table = {{
    {option_id::from, '\0', "from", "FORMAT", format_choices,
     "format of the input: mif, hex, rif (default: by extension)",
     [](arguments& into, std::string_view name, const char* value) {
         into.from = parse_format(name, value);
     }},
    {option_id::to, '\0', "to", "FORMAT", format_choices, "format of the output (default: by extension)",
     [](arguments& into, std::string_view name, const char* value) { into.to = parse_format(name, value); }},
    {option_id::from_radix, '\0', "from", "RADIX", word_radix_choices,
     "radix of VALUE: bin, oct, dec, uns, hex, fixed:I.F (default: by its prefix)",
     [](arguments& into, std::string_view name, const char* value) {
         into.from_radix = parse_word_radix(name, value);
     }},
    {option_id::to_radix, '\0', "to", "RADIX", word_radix_choices,
     "radix of the result (default: show the value in all of them)",
     [](arguments& into, std::string_view name, const char* value) {
         into.to_radix = parse_word_radix(name, value);
     }},
    {option_id::width, 'w', "width", "BITS", "",
     "word width, where the file does not say it (Intel HEX, RIF) or a new one",
     [](arguments& into, std::string_view name, const char* value) {
         into.width = parse_size(name, value, widest_word);
     }},
    {option_id::depth, 'd', "depth", "WORDS", "",
     "number of words (default: the file's own, or up to its highest address)",
     [](arguments& into, std::string_view name, const char* value) {
         into.depth = parse_size(name, value, deepest_memory);
     }},
    {option_id::data_radix, '\0', "data-radix", "RADIX", radix_choices,
     "radix of the words in a MIF: bin, oct, dec, uns, hex",
     [](arguments& into, std::string_view name, const char* value) {
         into.data_radix = parse_radix(name, value);
     }},
    {option_id::address_radix, '\0', "address-radix", "RADIX", radix_choices,
     "radix of the addresses in a MIF: bin, oct, dec, uns, hex",
     [](arguments& into, std::string_view name, const char* value) {
         into.address_radix = parse_radix(name, value);
     }},
    {option_id::fill, '\0', "fill", "VALUE", "",
     "value for words that are never set: 31, -5, 0x1F, 0b1010, 0o17",
     [](arguments& into, std::string_view, const char* value) { into.fill = value; }},
    {option_id::no_runs, '\0', "no-runs", nullptr, "", "give every address of a MIF a line of its own",
     [](arguments& into, std::string_view, const char*) { into.no_runs = true; }},
    {option_id::output, 'o', "output", "FILE", "FILE", "write to FILE; - is standard output",
     [](arguments& into, std::string_view name, const char* value) {
         into.output = parse_file_name(name, value);
     }},
    {option_id::json, '\0', "json", nullptr, "", "answer in JSON",
     [](arguments& into, std::string_view, const char*) { into.json = true; }},
    {option_id::fix, '\0', "fix", nullptr, "",
     "write a repaired file to --output FILE, where the repair is certain",
     [](arguments& into, std::string_view, const char*) { into.fix = true; }},
    {option_id::radix, 'r', "radix", "RADIX", word_radix_choices,
     "show words in bin, oct, dec (signed), uns, hex or fixed:I.F",
     [](arguments& into, std::string_view name, const char* value) {
         into.radix = parse_word_radix(name, value);
     }},
    {option_id::columns, 'c', "columns", "N", "", "N words or characters a line (default: what fits)",
     [](arguments& into, std::string_view name, const char* value) {
         into.columns = parse_size(name, value, largest_column_count);
     }},
    {option_id::range, '\0', "range", "A..B", "", "only the addresses A to B: 0x10..0x1F, 5..9, 7",
     [](arguments& into, std::string_view name, const char* value) {
         into.range = parse_range(name, value);
     }},
    {option_id::is_signed, '\0', "signed", nullptr, "", "take words for two's complement numbers",
     [](arguments& into, std::string_view, const char*) { into.is_signed = true; }},
    {option_id::quiet, 'q', "quiet", nullptr, "", "say nothing; the exit code is the answer",
     [](arguments& into, std::string_view, const char*) { into.quiet = true; }},
    {option_id::git, '\0', "git", nullptr, "", "take the seven operands that git gives a diff driver",
     [](arguments& into, std::string_view, const char*) { into.git = true; }},
    {option_id::force, '\0', "force", nullptr, "", "replace a file that is there already",
     [](arguments& into, std::string_view, const char*) { into.force = true; }},
    {option_id::force_conversion, '\0', "force", nullptr, "",
     "write although comments are lost, or OUT becomes huge",
     [](arguments& into, std::string_view, const char*) { into.force = true; }},
    {option_id::force_overwrite, '\0', "force", nullptr, "",
     "replace the file of --output although comments in it are lost",
     [](arguments& into, std::string_view, const char*) { into.force = true; }},
    {option_id::library, '\0', "library", nullptr, "", "show what the library's own conversion gives",
     [](arguments& into, std::string_view, const char*) { into.library = true; }},
    {option_id::color, '\0', "color", "WHEN", "auto always never",
     "colour: auto (on a terminal), always, never",
     [](arguments& into, std::string_view name, const char* value) {
         into.color = parse_color(name, value);
     }},
    {option_id::help, 'h', "help", nullptr, "", "show this help",
     [](arguments& into, std::string_view, const char*) { into.help = true; }},
}};

} // namespace

std::string with_letter(fmt::format_string<char> format, const option_entry& entry) {
    if (entry.letter == '\0') {
        return "";
    }
    return fmt::format(format, char{entry.letter});
}

std::span<const option_entry> option_table() noexcept {
    return table;
}

} // namespace kvrmem
