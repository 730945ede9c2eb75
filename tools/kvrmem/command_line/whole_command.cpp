#include "tools/kvrmem/command_line/whole_command.h"

#include "tools/kvrmem/command_line/command_words.h"
#include "tools/kvrmem/numbers/human_number.h"
#include "tools/kvrmem/operations/operation.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <variant>

namespace kvrmem {

namespace {

struct other_name {
    std::string_view given;
    std::string_view meant;
};

/// Names of these options in other tools.
constexpr std::array<other_name, 33> other_names = {{
    {"--bits", "--width"},
    {"--word-width", "--width"},
    {"--word-size", "--width"},
    {"--wordsize", "--width"},
    {"--data-width", "--width"},
    {"--word-bits", "--width"},
    {"--words", "--depth"},
    {"--size", "--depth"},
    {"--length", "--depth"},
    {"--byte-order", "--endian"},
    {"--endianness", "--endian"},
    {"--byteorder", "--endian"},
    {"--little-endian", "--endian little"},
    {"--little", "--endian little"},
    {"--le", "--endian little"},
    {"--big-endian", "--endian big"},
    {"--big", "--endian big"},
    {"--be", "--endian big"},
    {"--offset", "--base"},
    {"--start", "--base"},
    {"--origin", "--base"},
    {"--base-address", "--base"},
    {"--start-address", "--base"},
    {"--load-address", "--base"},
    {"--format", "--to"},
    {"--output-format", "--to"},
    {"--output-type", "--to"},
    {"--input-format", "--from"},
    {"--fill-value", "--fill"},
    {"--default", "--fill"},
    {"--gap-fill", "--fill"},
    {"--padding", "--pad"},
    {"--radix", "--data-radix"},
}};

/// Returns the name in "--width 32", without its hyphens.
std::string_view name_in(std::string_view option) {
    const std::string_view name = option.substr(0, option.find_first_of(" ="));
    return name.substr(std::min(name.find_first_not_of('-'), name.size()));
}

/// Returns the option of @p which with the name @p name; null if there is none.
const option_entry* entry_called(const command& which, std::string_view name) {
    const auto table = option_table();
    const auto found = std::ranges::find_if(table, [&which, name](const option_entry& entry) {
        return entry.name == name && takes(which, entry.id);
    });
    return found != table.end() ? &*found : nullptr;
}

/// Returns whether @p word is @p option, possibly with its value.
bool says(std::string_view word, const option_entry& option) {
    const bool is_short =
        option.letter != '\0' && word.size() > 1 && word[0] == '-' && word[1] == option.letter;
    return is_short || (word.starts_with("--") && name_in(word) == option.name);
}

/// Returns whether the value of @p option is the next word.
bool has_value_behind(std::string_view word, const option_entry& option) {
    return option.value != nullptr &&
           (word.starts_with("--") ? word.find('=') == std::string_view::npos : word.size() == 2);
}

} // namespace

std::string shell_word(const std::string& word) {
    const auto is_plain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               std::string_view("_-+=:,./@%").find(c) != std::string_view::npos;
    };
    return !word.empty() && std::ranges::all_of(word, is_plain)
               ? word
               : fmt::format("'{}'", replaced(word, "'", R"('\'')"));
}

std::string command_with(const arguments& given, std::span<const std::string> added) {
    if (given.words.empty() || std::ranges::find(given.files, "-") != given.files.end()) {
        return "";
    }
    std::string line = "kvrmem " + given.words.front();
    std::string options;
    std::vector<const option_entry*> replaced_ones;
    for (const std::string& option : added) {
        const option_entry* const entry = entry_called(*given.which, name_in(option));
        if (entry == nullptr) {
            return "";
        }
        replaced_ones.push_back(entry);
        options += " " + option;
    }
    // Operations apply in command-line order, so the preceding ones must already be in the line.
    const bool comes_last = !given.operations.empty();
    line += comes_last ? "" : options;
    for (std::size_t index = 1; index < given.words.size(); ++index) {
        const std::string& word = given.words[index];
        const auto found = std::ranges::find_if(
            replaced_ones, [&word](const option_entry* option) { return says(word, *option); });
        if (found == replaced_ones.end()) {
            line += " " + shell_word(word);
        } else if (has_value_behind(word, **found)) {
            ++index;
        }
    }
    return comes_last ? line + options : line;
}

arguments with_options(arguments given, std::span<const std::string> added) {
    for (const std::string& option : added) {
        std::string_view rest = option;
        while (!rest.empty()) {
            const std::size_t end = std::min(rest.find(" --"), rest.size());
            const std::string_view one = rest.substr(0, end);
            rest.remove_prefix(std::min(end + 1, rest.size()));
            const option_entry* const entry = entry_called(*given.which, name_in(one));
            if (entry != nullptr) {
                const std::string value(one.substr(std::min(one.find(' ') + 1, one.size())));
                given.options.push_back(entry->id);
                entry->take(given, entry->name, value.c_str());
            }
        }
    }
    return given;
}

std::vector<kvrimage::address_range> asked_addresses(const arguments& given) {
    std::vector<kvrimage::address_range> asked;
    for (const auto& each : {given.put, given.verify}) {
        if (each) {
            asked.push_back({*each, *each});
        }
    }
    if (given.range) {
        asked.push_back(*given.range);
    }
    for (const operation& each : given.operations) {
        if (const auto* const only = std::get_if<only_words>(&each.what)) {
            asked.insert(asked.end(), only->ranges.begin(), only->ranges.end());
        } else if (const auto* const except = std::get_if<except_words>(&each.what)) {
            asked.insert(asked.end(), except->ranges.begin(), except->ranges.end());
        }
    }
    for (std::size_t index = operands_of(*given.which).paths; index < given.files.size(); ++index) {
        if (const auto range = read_address_range(given.files[index])) {
            asked.push_back(*range);
        }
    }
    return asked;
}

std::string command_with_replaced(std::span<const std::string> words, std::string_view wrong,
                                  std::string_view right) {
    std::string line = "kvrmem";
    for (const std::string& word : words) {
        const bool is_it = word == wrong || (word.starts_with(wrong) && word[wrong.size()] == '=');
        line += " " + (is_it && word == wrong ? std::string(right)
                       : is_it                ? shell_word(std::string(right) + word.substr(wrong.size()))
                                              : shell_word(word));
    }
    return line;
}

std::optional<std::string_view> option_meant_by(const command& which, std::string_view given) {
    for (const other_name& each : other_names) {
        if (each.given == given && entry_called(which, name_in(each.meant)) != nullptr) {
            return each.meant;
        }
    }
    return std::nullopt;
}

} // namespace kvrmem
