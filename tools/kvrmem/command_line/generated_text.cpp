#include "tools/kvrmem/command_line/generated_text.h"

#include "tools/kvrmem/commands/commands.h"

#include <fmt/format.h>

#include <array>
#include <vector>

namespace kvrmem {

namespace {

std::string replaced(std::string text, std::string_view what, std::string_view with) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size())) {
        text.replace(at, what.size(), with);
    }
    return text;
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

bool takes_path(const option_entry& entry) {
    return std::string_view(entry.choices) == "FILE";
}

// The manual page.

/// Nothing, for groff, but what follows does not begin its line.
constexpr std::string_view no_request = R"(\&)";

/// Text as it is to be printed: hyphens that can be copied, and no line that groff takes for a request.
std::string for_man(std::string_view text) {
    // Behind a line end of its own the first line is one like the others.
    std::string result = "\n" + replaced(replaced(std::string(text), R"(\)", R"(\e)"), "-", R"(\-)");
    for (const char* request : {".", "'"}) {
        result = replaced(result, fmt::format("\n{}", request), fmt::format("\n{}{}", no_request, request));
    }
    return result.substr(1);
}

std::string man_option(const option_entry& entry) {
    std::string title = with_letter(R"(\fB\-{}\fR, )", entry);
    title += fmt::format(R"(\fB\-\-{}\fR)", for_man(entry.name));
    if (entry.value != nullptr) {
        title += fmt::format(" \\fI{}\\fR", for_man(entry.value));
    }
    return fmt::format(".TP\n{}\n{}\n", title, for_man(entry.help));
}

std::string man_command(const command& which) {
    std::string text = fmt::format(".SS kvrmem {0} [options] {1}\n{2}\n.PP\n{3}.PP\n.nf\n{4}.fi\n",
                                   which.name, for_man(which.operands), for_man(which.summary),
                                   for_man(which.description), for_man(which.examples));
    for (const option_entry* entry : options_of(which)) {
        text += man_option(*entry);
    }
    return text;
}

constexpr std::string_view man_head =
    ".TH KVRMEM 1 \"\" \"kvrmem " KVRMEM_VERSION "\" \"User Commands\"\n"
    ".SH NAME\n"
    "kvrmem \\- read, check, edit, compare, draw and convert memory initialization files\n"
    ".SH SYNOPSIS\n"
    ".B kvrmem\n"
    ".I command\n"
    "[options] [operands]\n"
    ".SH DESCRIPTION\n"
    "The files give an on\\-chip RAM or ROM its first contents: MIF, Intel HEX with word addresses, and "
    "RIF.\n"
    "The extensions .mif, .hex, .ihex and .rif tell the format; \\- is standard input or output.\n"
    "Numbers are written 31, \\-5, 0x1F, 0b1010 or 0o17, with _ between digits where that helps.\n"
    "Values are exact: what does not fit is refused, never cut.\n"
    ".SH COMMANDS\n";

constexpr std::string_view man_foot =
    ".SH OPTIONS WITHOUT A COMMAND\n"
    ".TP\n\\fB\\-\\-help\\fR\nshow the commands\n"
    ".TP\n\\fB\\-\\-version\\fR\nshow the version\n"
    ".TP\n\\fB\\-\\-generate\\fR \\fIman\\fR | \\fIbash\\fR | \\fIzsh\\fR | \\fIfish\\fR\n"
    "print this page, or a completion\n"
    ".SH EXIT STATUS\n"
    ".TP\n.B 0\nfine\n"
    ".TP\n.B 1\nthe answer to the question asked is no\n"
    ".TP\n.B 2\nbad input: a file holds something wrong\n"
    ".TP\n.B 3\ninput or output failed\n"
    ".TP\n.B 4\nwrong usage\n"
    ".TP\n.B 5\ninternal error, or out of memory\n"
    ".SH ENVIRONMENT\n"
    ".TP\n.B NO_COLOR\nset to anything: no colour, unless \\-\\-color asks for it\n"
    ".TP\n.B TERM\n\"dumb\": no colour either\n"
    ".TP\n.B LC_ALL, LC_CTYPE, LANG\nthe first that is set tells whether a plot in the terminal may be drawn "
    "in UTF\\-8\n";

std::string manual_page() {
    std::string text(man_head);
    for (const command* which : all_commands()) {
        text += man_command(*which);
    }
    return text.append(man_foot);
}

// Completions.

std::string command_names() {
    std::string names;
    for (const command* which : all_commands()) {
        names += fmt::format("{} ", which->name);
    }
    return names;
}

/// The bash command that prints what can stand for the option's value.
std::string bash_words(const option_entry& entry) {
    if (takes_path(entry)) {
        return "compgen -f -- \"$current\"";
    }
    return fmt::format("compgen -W '{}' -- \"$current\"", entry.choices);
}

/// The cases of a shell's "case" for the options of @p which that take a value.
std::string bash_values(const command& which) {
    std::string text;
    for (const option_entry* entry : options_of(which)) {
        if (entry->value == nullptr) {
            continue;
        }
        text += fmt::format("        {}--{}) mapfile -t COMPREPLY < <({}); return ;;\n",
                            with_letter("-{} | ", *entry), entry->name, bash_words(*entry));
    }
    return text;
}

std::string bash_command(const command& which) {
    std::string names;
    for (const option_entry* entry : options_of(which)) {
        names += fmt::format("--{} ", entry->name);
    }
    return fmt::format("    {})\n"
                       "        options='{}'\n"
                       "        case $previous in\n{}"
                       "        esac ;;\n",
                       which.name, names, bash_values(which));
}

std::string bash_completion() {
    std::string text =
        "# bash completion for kvrmem\n"
        "_kvrmem() {\n"
        "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} options=\n"
        "    COMPREPLY=()\n"
        "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n";
    text += fmt::format(
        "        mapfile -t COMPREPLY < <(compgen -W '{}help --help --version' -- \"$current\")\n",
        command_names());
    text += "        return\n"
            "    fi\n"
            "    case ${COMP_WORDS[1]} in\n";
    for (const command* which : all_commands()) {
        text += bash_command(*which);
    }
    return text + fmt::format("    help)\n"
                              "        mapfile -t COMPREPLY < <(compgen -W '{}' -- \"$current\"); return ;;\n"
                              "    esac\n"
                              "    case $current in\n"
                              "    -*) mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$current\") ;;\n"
                              "    *) mapfile -t COMPREPLY < <(compgen -f -- \"$current\") ;;\n"
                              "    esac\n"
                              "}}\n"
                              "complete -o filenames -F _kvrmem kvrmem\n",
                              command_names());
}

/// @p text inside of single quotes, for zsh and fish.
std::string in_single_quotes(std::string_view text) {
    return "'" + replaced(std::string(text), "'", "'\\''") + "'";
}

std::string zsh_text(std::string_view text) {
    std::string result(text);
    for (const std::string_view special : {"\\", "[", "]", ":"}) {
        result = replaced(result, special, fmt::format("\\{}", special));
    }
    return result;
}

/// What zsh needs to know of the option's value; "" when it takes none.
std::string zsh_value(const option_entry& entry) {
    if (entry.value == nullptr) {
        return "";
    }
    std::string values = "_files";
    if (!takes_path(entry)) {
        values = fmt::format("({})", entry.choices);
    }
    return fmt::format(":{}:{}", zsh_text(entry.value), values);
}

/// @p name with its hyphens.
std::string zsh_line(std::string_view name, const option_entry& entry) {
    const std::string option = fmt::format("{}[{}]{}", name, zsh_text(entry.help), zsh_value(entry));
    return fmt::format("            {} \\\n", in_single_quotes(option));
}

std::string zsh_option(const option_entry& entry) {
    std::string lines;
    if (entry.letter != '\0') {
        lines = zsh_line(with_letter("-{}", entry), entry);
    }
    return lines + zsh_line(fmt::format("--{}", entry.name), entry);
}

std::string zsh_completion() {
    std::string text = "#compdef kvrmem\n"
                       "_kvrmem() {\n"
                       "    local -a commands=(\n";
    for (const command* which : all_commands()) {
        text += fmt::format("        {}\n",
                            in_single_quotes(fmt::format("{}:{}", which->name, zsh_text(which->summary))));
    }
    text += "    )\n"
            "    if (( CURRENT == 2 )); then\n"
            "        _describe command commands\n"
            "        return\n"
            "    fi\n"
            "    local command=$words[2]\n"
            "    shift words\n"
            "    (( CURRENT-- ))\n"
            "    case $command in\n";
    for (const command* which : all_commands()) {
        text += fmt::format("    {})\n        _arguments \\\n", which->name);
        for (const option_entry* entry : options_of(*which)) {
            text += zsh_option(*entry);
        }
        text += "            '*:file:_files' ;;\n";
    }
    return text + "    help) _describe command commands ;;\n"
                  "    esac\n"
                  "}\n"
                  "_kvrmem \"$@\"\n";
}

std::string fish_option(const command& which, const option_entry& entry) {
    std::string line =
        fmt::format("complete -c kvrmem -n '__fish_seen_subcommand_from {}' -l {}", which.name, entry.name);
    line += with_letter(" -s {}", entry);
    if (takes_path(entry)) {
        line += " -r -F";
    } else if (entry.value != nullptr) {
        line += fmt::format(" -x -a {}", in_single_quotes(entry.choices));
    }
    return line + fmt::format(" -d {}\n", in_single_quotes(entry.help));
}

std::string fish_completion() {
    std::string text = "# fish completion for kvrmem\n"
                       "complete -c kvrmem -n __fish_use_subcommand -l help -d 'show the commands'\n"
                       "complete -c kvrmem -n __fish_use_subcommand -l version -d 'show the version'\n";
    for (const command* which : all_commands()) {
        text += fmt::format("complete -c kvrmem -n __fish_use_subcommand -f -a {} -d {}\n", which->name,
                            in_single_quotes(which->summary));
        for (const option_entry* entry : options_of(*which)) {
            text += fish_option(*which, *entry);
        }
    }
    return text;
}

struct generator {
    std::string_view kind;
    std::string (*make)();
};

constexpr std::array<generator, 4> generators = {
    {{"man", manual_page}, {"bash", bash_completion}, {"zsh", zsh_completion}, {"fish", fish_completion}}};

} // namespace

std::string generated_text(std::string_view kind) {
    for (const generator& entry : generators) {
        if (kind == entry.kind) {
            return entry.make();
        }
    }
    throw tool_error(exit_code::wrong_usage, "--generate makes man, bash, zsh or fish");
}

} // namespace kvrmem
