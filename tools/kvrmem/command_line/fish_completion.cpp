#include "tools/kvrmem/command_line/fish_completion.h"

#include "tools/kvrmem/command_line/command_words.h"
#include "tools/kvrmem/commands/commands.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

constexpr std::string_view fish_head = R"(# fish completion for kvrmem

# Sets "words" to the words before the cursor, from the name of the tool on.
function __kvrmem_split --no-scope-shadowing
    set words (commandline --current-process --cut-at-cursor --tokenize)
    while string match --quiet '*=*' -- $words[1]
        set --erase words[1]
    end
end

function __kvrmem_at_first_word
    set -l words
    __kvrmem_split
    test (count $words) -eq 1
end

# Whether the cursor is at the word that follows WORD, the first one.
function __kvrmem_after_word # WORD
    set -l words
    __kvrmem_split
    set --query words[2]; and not set --query words[3]; and test $words[2] = $argv[1]
end

function __kvrmem_after_command # COMMAND
    set -l words
    __kvrmem_split
    set --query words[2]; and test $words[2] = $argv[1]
end

# Whether fewer than COUNT operands of COMMAND precede the cursor.
function __kvrmem_at_path # COMMAND COUNT OPTION_WITH_VALUE...
    set -l words
    __kvrmem_split
    set --query words[2]; and test $words[2] = $argv[1]; or return
    set -l operands
    set -l before
    set -l ended
    for word in $words[3..]
        if set --query before[1]
            set before
        else if set --query ended[1]; or not string match --quiet -- '-?*' $word
            set --append operands $word
        else if test $word = --
            set ended $word
        else if contains -- $word $argv[3..]
            set before $word
        end
    end
    test (count $operands) -lt $argv[2]
end

complete -c kvrmem -f
)";

/// Quotes any @p text as one word.
std::string fish_quoted(std::string_view text) {
    return '\'' + replaced(replaced(std::string(text), R"(\)", R"(\\)"), "'", R"(\')") + '\'';
}

/// Returns the placeholder for the value of @p entry; "" if it takes none.
std::string fish_value(const option_entry& entry) {
    if (entry.value == nullptr) {
        return "";
    }
    if (is_path_option(entry)) {
        return " -r -F";
    }
    return entry.choices.empty() ? " -x" : fmt::format(" -x -a {}", fish_quoted(entry.choices));
}

std::string fish_option(const command& which, const option_entry& entry) {
    return fmt::format("complete -c kvrmem -n '__kvrmem_after_command {}' -l {}{}{} -d {}\n", which.name,
                       entry.name, with_letter(" -s {}", entry), fish_value(entry), fish_quoted(entry.help));
}

std::string fish_paths(const command& which) {
    const std::size_t count = operands_of(which).paths;
    if (count == any_number) {
        return fmt::format("complete -c kvrmem -n '__kvrmem_after_command {}' -F\n", which.name);
    }
    if (count == 0) {
        return "";
    }
    std::vector<std::string> with_value;
    for (const option_entry* entry : options_of(which)) {
        if (entry->value != nullptr) {
            const std::vector<std::string> spellings = spellings_of(*entry);
            with_value.insert(with_value.end(), spellings.begin(), spellings.end());
        }
    }
    return fmt::format("complete -c kvrmem -n '__kvrmem_at_path {} {} {}' -F\n", which.name, count,
                       fmt::join(with_value, " "));
}

std::string fish_command(const command& which) {
    std::string text = fmt::format("complete -c kvrmem -n __kvrmem_at_first_word -a {} -d {}\n", which.name,
                                   fish_quoted(which.summary));
    for (const option_entry* entry : options_of(which)) {
        text += fish_option(which, *entry);
    }
    return text + fish_paths(which);
}

std::string fish_program_word(const program_word& word) {
    constexpr std::string_view hyphens = "--";
    const bool is_option = word.name.starts_with(hyphens);
    std::string text =
        fmt::format("complete -c kvrmem -n __kvrmem_at_first_word {} {} -d {}\n", is_option ? "-l" : "-a",
                    is_option ? word.name.substr(hyphens.size()) : word.name, fish_quoted(word.help));
    if (!word.choices.empty()) {
        text += fmt::format("complete -c kvrmem -n '__kvrmem_after_word {}' -a {}\n", word.name,
                            fish_quoted(word.choices));
    }
    return text;
}

} // namespace

std::string fish_completion() {
    std::string text(fish_head);
    for (const command* which : all_commands()) {
        text += fish_command(*which);
    }
    for (const program_word& word : program_words()) {
        text += fish_program_word(word);
    }
    return text;
}

} // namespace kvrmem
