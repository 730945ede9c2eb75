#include "tools/kvrmem/command_line/zsh_completion.h"

#include "tools/kvrmem/command_line/command_words.h"
#include "tools/kvrmem/commands/commands.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

constexpr std::string_view zsh_head =
    R"(#compdef kvrmem
# zsh completion for kvrmem: a file _kvrmem in a folder of $fpath, or to be sourced after compinit

# Choices, which a blank follows unless they end in ":".
_kvrmem_choices() { # OPTION_OF_COMPADD... - CHOICE...
    local -i mark=${@[(ie)-]} status_of_all=1
    local -a given=("${(@)@[1, mark - 1]}") choices=("${(@)@[mark + 1, -1]}")
    local -a ended=(${choices:#*:}) open=(${(M)choices:#*:})
    compadd "$given[@]" -a ended && status_of_all=0
    compadd "$given[@]" -S '' -a open && status_of_all=0
    return status_of_all
}

)";

/// When zsh autoloads the file, it runs it as the body of _kvrmem, which must also complete on the first
/// call.
constexpr std::string_view zsh_foot = R"(
_kvrmem() {
    if (( CURRENT == 2 )); then
        _kvrmem_first_word
        return
    fi
    local command=$words[2]
    shift words
    (( CURRENT-- ))
    _kvrmem_after_word $command
}

if [[ $funcstack[1] == _kvrmem ]]; then
    _kvrmem "$@"
else
    compdef _kvrmem kvrmem
fi
)";

/// Quotes any @p text as one word.
std::string zsh_quoted(std::string_view text) {
    return '\'' + replaced(std::string(text), "'", R"('\'')") + '\'';
}

/// Escapes @p text for an argument of _arguments.
std::string zsh_escaped(std::string_view text) {
    std::string result(text);
    for (const std::string_view special : {R"(\)", "[", "]", ":"}) {
        result = replaced(result, special, fmt::format(R"(\{})", special));
    }
    return result;
}

/// Returns the part that describes the value of @p entry in an argument of _arguments; "" if it takes none.
std::string zsh_value(const option_entry& entry) {
    if (entry.value == nullptr) {
        return "";
    }
    std::string action = " "; // no suggestions
    if (is_path_option(entry)) {
        action = "_files";
    } else if (!entry.choices.empty()) {
        action = fmt::format("_kvrmem_choices - {}", zsh_escaped(entry.choices));
    }
    return fmt::format(":{}:{}", zsh_escaped(entry.value), action);
}

/// Returns how the value follows @p spelling: "=" in the same word after "=", "+" directly in the same word;
/// both also allow the next word.
std::string_view zsh_value_place(std::string_view spelling, const option_entry& entry) {
    if (entry.value == nullptr) {
        return "";
    }
    return spelling.starts_with("--") ? "=" : "+";
}

/// Returns a line for each spelling. Each excludes the others.
std::string zsh_option(const option_entry& entry) {
    const std::vector<std::string> spellings = spellings_of(entry);
    std::string lines;
    for (const std::string& spelling : spellings) {
        const std::string argument =
            fmt::format("({}){}{}[{}]{}", fmt::join(spellings, " "), spelling,
                        zsh_value_place(spelling, entry), zsh_escaped(entry.help), zsh_value(entry));
        lines += fmt::format("            {} \\\n", zsh_quoted(argument));
    }
    return lines;
}

/// Returns the arguments of _arguments that describe the operands.
std::string zsh_operands(const command& which) {
    const operand_words operands = operands_of(which);
    if (operands.paths == any_number) {
        return " '*:file:_files'";
    }
    std::string text;
    for (std::size_t index = 1; index <= operands.paths; ++index) {
        text += fmt::format(" '{}:file:_files'", index);
    }
    if (!operands.others.empty()) { // a blank action would suppress options beside the operands
        text += ' ' + zsh_quoted(fmt::format("*:{}:()", zsh_escaped(operands.others)));
    }
    return text;
}

std::string zsh_command_case(const command& which) {
    std::string text = fmt::format("    {})\n        _arguments -s -S \\\n", which.name);
    for (const option_entry* entry : options_of(which)) {
        text += zsh_option(*entry);
    }
    return text + fmt::format("           {} ;;\n", zsh_operands(which));
}

std::string zsh_program_word_case(const program_word& word) {
    if (word.choices.empty()) {
        return "";
    }
    return fmt::format("    {}) (( CURRENT == 2 )) && _kvrmem_choices - {} ;;\n", word.name, word.choices);
}

std::string zsh_after_word_function() {
    std::string text = "_kvrmem_after_word() { # WORD\n"
                       "    case $1 in\n";
    for (const command* which : all_commands()) {
        text += zsh_command_case(*which);
    }
    for (const program_word& word : program_words()) {
        text += zsh_program_word_case(word);
    }
    return text + "    esac\n"
                  "}\n";
}

/// Returns an element of an array for _describe.
std::string zsh_described(std::string_view name, std::string_view help) {
    return fmt::format("        {}\n", zsh_quoted(fmt::format("{}:{}", zsh_escaped(name), help)));
}

std::string zsh_first_word_function() {
    std::string names;
    std::string options;
    for (const command* which : all_commands()) {
        names += zsh_described(which->name, which->summary);
    }
    for (const program_word& word : program_words()) {
        (word.name.starts_with('-') ? options : names) += zsh_described(word.name, word.help);
    }
    return fmt::format("_kvrmem_first_word() {{\n"
                       "    local -a names=(\n{}    )\n"
                       "    local -a options=(\n{}    )\n"
                       "    if [[ $PREFIX == -* ]]; then\n"
                       "        _describe -o option options\n"
                       "    else\n"
                       "        _describe command names\n"
                       "    fi\n"
                       "}}\n\n",
                       names, options);
}

} // namespace

std::string zsh_completion() {
    return fmt::format("{}{}{}{}", zsh_head, zsh_first_word_function(), zsh_after_word_function(), zsh_foot);
}

} // namespace kvrmem
