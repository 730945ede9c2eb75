#include "tools/kvrmem/command_line/bash_completion.h"

#include "tools/kvrmem/command_line/command_words.h"
#include "tools/kvrmem/commands/commands.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

/// The part before the tables. COMP_WORDBREAKS splits "--to=fixed:" into four words, of which a completion
/// replaces the last.
constexpr std::string_view bash_head = R"(# bash completion for kvrmem; needs bash 4.3

# Sets "words" to the words before the cursor and "current" to the one at it, each put together again where
# COMP_WORDBREAKS has split it.
_kvrmem_split() {
    local line=${COMP_LINE:0:COMP_POINT} word index
    for ((index = 0; index <= COMP_CWORD; index++)); do
        word=${COMP_WORDS[index]}
        if [[ $index -eq 0 || $line == [[:space:]]* ]]; then
            line=${line#"${line%%[![:space:]]*}"}
            words+=('')
        fi
        [[ $index -lt $COMP_CWORD ]] || word=$line
        words[-1]+=$word
        line=${line#"$word"}
    done
    current=${words[-1]}
    unset 'words[-1]'
}

# Offers the candidates that begin with the current word, without the part of it that stays on the line.
_kvrmem_offer() { # CANDIDATE...
    local candidate
    for candidate; do
        [[ $candidate != "$current"* ]] || COMPREPLY+=("${candidate#"$kept"}")
    done
    [[ ${#COMPREPLY[@]} -ne 1 || $kept${COMPREPLY[0]} != *: ]] || compopt -o nospace
}

_kvrmem_offer_files() {
    compopt -o bashdefault -o default
}

# Offers the values of an option, each after PREFIX.
_kvrmem_offer_values() { # COMMAND OPTION PREFIX
    local values files
    _kvrmem_values "$1" "$2" || return
    if [[ $files && $kept != "$3"* ]]; then # COMP_WORDBREAKS has no "=": the prefix is replaced, too
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -P "$3" -f -- "${current#"$3"}")
    elif [[ $files ]]; then
        _kvrmem_offer_files
    else
        _kvrmem_offer "${values[@]/#/$3}"
    fi
}

# Counts the operands between the command and the cursor. Sets "before" to the option or redirection that the current
# word belongs to, and "ended" when there are no more options.
_kvrmem_scan() { # COMMAND WORD...
    local word command=$1 values files
    for word in "${@:2}"; do
        if [[ $before ]]; then
            before=
        elif [[ $word =~ ^(\&|[0-9]*)[\<\>] ]]; then
            [[ $word != *[\<\>\|\&] ]] || before='>'
        elif [[ $ended || $word != -?* ]]; then
            operands+=1
        elif [[ $word == -- ]]; then
            ended=yes
        elif _kvrmem_values "$command" "$word"; then
            before=$word
        fi
    done
}

_kvrmem_after_command() { # COMMAND
    local options paths before='' ended=''
    local -i operands=0
    _kvrmem_command "$1" || return
    _kvrmem_scan "$1" "${words[@]:2}"
    if [[ $before == '>' || $current =~ ^(\&|[0-9]*)[\<\>] ]]; then
        _kvrmem_offer_files
    elif [[ $before ]]; then
        _kvrmem_offer_values "$1" "$before" ''
    elif [[ ! $ended && $current == --*=* ]]; then
        _kvrmem_offer_values "$1" "${current%%=*}" "${current%%=*}="
    elif [[ ! $ended && $current == -* ]]; then
        _kvrmem_offer "${options[@]}"
    elif [[ $paths == all || $operands -lt $paths ]]; then
        _kvrmem_offer_files
    fi
}

)";

constexpr std::string_view bash_foot = R"(
_kvrmem() {
    local words=() current=''
    COMPREPLY=()
    _kvrmem_split
    local kept=${current%"$2"}
    if [[ ${#words[@]} -eq 1 ]]; then
        _kvrmem_first_word
    else
        _kvrmem_after_command "${words[1]}" || [[ ${#words[@]} -ne 2 ]] || _kvrmem_after_word "${words[1]}"
    fi
}
complete -F _kvrmem kvrmem
)";

/// Returns the assignment of the values of @p entry.
std::string bash_values(const option_entry& entry) {
    return is_path_option(entry) ? "values=() files=yes" : fmt::format("values=({}) files=''", entry.choices);
}

std::string bash_value_case(const command& which, const option_entry& entry) {
    std::vector<std::string> patterns;
    for (const std::string& spelling : spellings_of(entry)) {
        patterns.push_back(fmt::format("'{} {}'", which.name, spelling));
    }
    return fmt::format("    {}) {} ;;\n", fmt::join(patterns, " | "), bash_values(entry));
}

std::string bash_value_function() {
    std::string text = "# Sets \"values\" and \"files\"; fails for an option that takes no value.\n"
                       "_kvrmem_values() { # COMMAND OPTION\n"
                       "    case \"$1 $2\" in\n";
    for (const command* which : all_commands()) {
        for (const option_entry* entry : options_of(*which)) {
            if (entry->value != nullptr) {
                text += bash_value_case(*which, *entry);
            }
        }
    }
    return text + "    *) return 1 ;;\n"
                  "    esac\n"
                  "}\n";
}

std::string bash_command_case(const command& which) {
    std::vector<std::string> options;
    for (const option_entry* entry : options_of(which)) {
        options.push_back(fmt::format("--{}", entry->name));
    }
    const std::size_t paths = operands_of(which).paths;
    return fmt::format("    {}) paths={} options=({}) ;;\n", which.name,
                       paths == any_number ? "all" : fmt::format("{}", paths), fmt::join(options, " "));
}

std::string bash_command_function() {
    std::string text = "# Sets \"options\", and \"paths\" to the number of operands that are paths.\n"
                       "_kvrmem_command() { # COMMAND\n"
                       "    case $1 in\n";
    for (const command* which : all_commands()) {
        text += bash_command_case(*which);
    }
    return text + "    *) return 1 ;;\n"
                  "    esac\n"
                  "}\n";
}

std::string bash_first_word_function() {
    std::string names = command_names();
    std::string options;
    for (const program_word& word : program_words()) {
        (word.name.starts_with('-') ? options : names).append(" ").append(word.name);
    }
    return fmt::format("_kvrmem_first_word() {{\n"
                       "    case $current in\n"
                       "    -*) _kvrmem_offer{} ;;\n"
                       "    *) _kvrmem_offer {} ;;\n"
                       "    esac\n"
                       "}}\n",
                       options, names);
}

std::string bash_after_word_function() {
    std::string text = "_kvrmem_after_word() { # WORD\n"
                       "    case $1 in\n";
    for (const program_word& word : program_words()) {
        if (!word.choices.empty()) {
            text += fmt::format("    {}) _kvrmem_offer {} ;;\n", word.name, word.choices);
        }
    }
    return text + "    esac\n"
                  "}\n";
}

} // namespace

std::string bash_completion() {
    return fmt::format("{}{}\n{}\n{}\n{}{}", bash_head, bash_value_function(), bash_command_function(),
                       bash_first_word_function(), bash_after_word_function(), bash_foot);
}

} // namespace kvrmem
