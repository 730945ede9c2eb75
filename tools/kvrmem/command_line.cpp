#include "tools/kvrmem/command_line.h"

#include "tools/kvrmem/file_format.h"
#include "tools/kvrmem/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <getopt.h>
#include <string_view>

namespace kvrmem {

namespace {

[[noreturn]] void usage_error(const std::string& message) {
    throw tool_error(exit_code::wrong_usage, message);
}

KVR_FILE_TYPES parse_format(std::string_view option, std::string_view value) {
    const auto format = format_of_name(value);
    if (!format) {
        usage_error(fmt::format("--{} {}: a format is mif, hex (or ihex) or rif", option, value));
    }
    return *format;
}

KVR_MEMORY_RADIXES parse_radix(std::string_view option, std::string_view value) {
    const auto radix = radix_of_name(value);
    if (!radix) {
        usage_error(fmt::format("--{} {}: a radix is bin, oct, dec, uns or hex", option, value));
    }
    return *radix;
}

/// A number from 1 to @p largest, in decimal or behind "0x".
std::uint32_t parse_size(std::string_view option, std::string_view value, std::uint32_t largest) {
    const bool is_hex = value.substr(0, 2) == "0x" || value.substr(0, 2) == "0X";
    const std::string_view digits = is_hex ? value.substr(2) : value;
    std::uint32_t number = 0;
    const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), number, is_hex ? 16 : 10);
    if (digits.empty() || end.ec != std::errc() || end.ptr != digits.data() + digits.size() || number == 0 ||
        number > largest) {
        usage_error(fmt::format("--{} {}: this needs a number from 1 to {}", option, value, largest));
    }
    return number;
}

constexpr std::uint32_t widest_word = 1U << 20;
constexpr std::uint32_t deepest_memory = 0xFFFFFFFF;

/// An option: the letter is its name inside the tool.
struct option_entry {
    char letter;
    const char* name;
    const char* value; ///< what the help calls its value; null when it takes none
    const char* help;
    void (*take)(arguments& into, std::string_view name, const char* value);
};

constexpr std::array<option_entry, 9> option_table = {{
    {'f', "from", "FORMAT", "format of the input: mif, hex, rif (default: by extension)",
     [](arguments& into, std::string_view name, const char* value) {
         into.from = parse_format(name, value);
     }},
    {'t', "to", "FORMAT", "format of the output (default: by extension)",
     [](arguments& into, std::string_view name, const char* value) { into.to = parse_format(name, value); }},
    {'w', "width", "BITS", "word width, where the file does not say it (Intel HEX, RIF) or a new one",
     [](arguments& into, std::string_view name, const char* value) {
         into.width = parse_size(name, value, widest_word);
     }},
    {'d', "depth", "WORDS", "number of words (default: the file's own, or up to its highest address)",
     [](arguments& into, std::string_view name, const char* value) {
         into.depth = parse_size(name, value, deepest_memory);
     }},
    {'D', "data-radix", "RADIX", "radix of the words in a MIF: bin, oct, dec, uns, hex",
     [](arguments& into, std::string_view name, const char* value) {
         into.data_radix = parse_radix(name, value);
     }},
    {'A', "address-radix", "RADIX", "radix of the addresses in a MIF: bin, oct, dec, uns, hex",
     [](arguments& into, std::string_view name, const char* value) {
         into.address_radix = parse_radix(name, value);
     }},
    {'F', "fill", "VALUE", "value for words that are never set: 31, -5, 0x1F, 0b1010, 0o17",
     [](arguments& into, std::string_view, const char* value) { into.fill = value; }},
    {'n', "no-runs", nullptr, "give every address of a MIF a line of its own",
     [](arguments& into, std::string_view, const char*) { into.no_runs = true; }},
    {'h', "help", nullptr, "show this help",
     [](arguments& into, std::string_view, const char*) { into.help = true; }},
}};

bool takes(const command& which, const option_entry& entry) {
    return std::strchr(which.options, entry.letter) != nullptr;
}

/// The table for getopt_long: the options of @p which, with the index into option_table as their value.
std::vector<option> long_options(const command& which) {
    std::vector<option> options;
    for (std::size_t index = 0; index < option_table.size(); ++index) {
        const option_entry& entry = option_table[index];
        if (takes(which, entry)) {
            options.push_back({entry.name, entry.value != nullptr ? required_argument : no_argument, nullptr,
                               static_cast<int>(index) + 256});
        }
    }
    options.push_back({nullptr, 0, nullptr, 0});
    return options;
}

std::string name_of_bad_option(char** words) {
    return optopt != 0 && optopt < 256 ? fmt::format("-{}", static_cast<char>(optopt)) : words[optind - 1];
}

void require_files(const command& which, std::size_t count) {
    if (count < which.least_files) {
        usage_error(fmt::format("too few files: kvrmem {} {}", which.name, which.operands));
    }
    if (count > which.most_files) {
        usage_error(fmt::format("too many files: kvrmem {} {}", which.name, which.operands));
    }
}

} // namespace

arguments parse_arguments(const command& which, int count, char** words) {
    arguments parsed;
    const std::vector<option> options = long_options(which);
    opterr = 0;
    optind = 1;
    for (int found = 0; (found = getopt_long(count, words, ":h", options.data(), nullptr)) != -1;) {
        if (found == ':') {
            usage_error(fmt::format("{} needs a value", words[optind - 1]));
        }
        if (found == '?') {
            usage_error(fmt::format("kvrmem {} has no option {}; see kvrmem {} --help", which.name,
                                    name_of_bad_option(words), which.name));
        }
        if (found == 'h') {
            parsed.help = true;
            continue;
        }
        const option_entry& entry = option_table[static_cast<std::size_t>(found - 256)];
        entry.take(parsed, entry.name, optarg);
    }
    parsed.files.assign(words + optind, words + count);
    if (!parsed.help) {
        require_files(which, parsed.files.size());
    }
    return parsed;
}

std::string help_for(const command& which) {
    std::string text = fmt::format("{}\n\nExamples\n{}\nUsage\n  kvrmem {} [options] {}\n\nOptions\n",
                                   which.summary, which.examples, which.name, which.operands);
    for (const option_entry& entry : option_table) {
        if (takes(which, entry)) {
            const std::string name = fmt::format("--{}{}{}", entry.name, entry.value != nullptr ? " " : "",
                                                 entry.value != nullptr ? entry.value : "");
            text += fmt::format("  {:<24}{}\n", name, entry.help);
        }
    }
    return text;
}

} // namespace kvrmem
