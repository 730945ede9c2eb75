#include "tools/kvrmem/command_line/command_words.h"

#include "tools/kvrmem/command_line/generated_text.h"
#include "tools/kvrmem/command_line/help_topics.h"
#include "tools/kvrmem/commands/commands.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>

namespace kvrmem {

namespace {

/// The names of path operands in usage lines.
constexpr std::array<std::string_view, 5> path_names = {"FILE", "IN", "OUT", "A", "B"};

/// The usage line of commands with any number of paths.
constexpr std::string_view any_path = "FILE...";

std::string_view first_word(std::string_view text) {
    return text.substr(0, text.find(' '));
}

bool is_path_name(std::string_view operand) {
    return std::find(path_names.begin(), path_names.end(), operand) != path_names.end();
}

} // namespace

std::vector<program_word> program_words() {
    return {{"help", "SUBJECT", names_with_help(), "show the help of a command, or a page about a topic"},
            {"--help", "", "", "show the commands"},
            {"--version", "", "", "show the version"},
            {"--generate", "KIND", fmt::format("{}", fmt::join(generated_kinds(), " ")),
             "print a manual page (man, man COMMAND), or a completion (bash, zsh, fish)"}};
}

std::string command_names() {
    std::vector<std::string_view> names;
    for (const command* which : all_commands()) {
        names.emplace_back(which->name);
    }
    return fmt::format("{}", fmt::join(names, " "));
}

std::vector<const option_entry*> options_of(const command& which) {
    std::vector<const option_entry*> options;
    for (const option_entry& entry : option_table()) {
        if (takes(which, entry.id)) {
            options.push_back(&entry);
        }
    }
    return options;
}

bool is_path_option(const option_entry& entry) noexcept {
    return entry.choices == "FILE";
}

operand_words operands_of(const command& which) {
    operand_words operands;
    std::string_view usage = which.operands;
    while (is_path_name(first_word(usage))) {
        ++operands.paths;
        usage.remove_prefix(std::min(usage.size(), first_word(usage).size() + 1));
    }
    if (usage == any_path) {
        operands.paths = any_number;
    } else if (operands.paths < which.most_files) {
        operands.others = usage;
    }
    return operands;
}

std::vector<std::string> spellings_of(const option_entry& entry) {
    std::vector<std::string> spellings;
    if (entry.letter != '\0') {
        spellings.push_back(with_letter("-{}", entry));
    }
    spellings.push_back(fmt::format("--{}", entry.name));
    return spellings;
}

std::string replaced(std::string text, std::string_view what, std::string_view with) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size())) {
        text.replace(at, what.size(), with);
    }
    return text;
}

std::string wrapped(std::string text, std::size_t columns) {
    for (std::size_t begin = 0; text.size() - begin > columns;) {
        const std::size_t blank = text.rfind(' ', begin + columns);
        text[blank] = '\n';
        begin = blank + 1;
    }
    return text;
}

} // namespace kvrmem
