#include "tools/kvrmem/command_line/manual_page.h"

#include "tools/kvrmem/command_line/command_words.h"
#include "tools/kvrmem/command_line/format_names.h"
#include "tools/kvrmem/commands/commands.h"

#include <fmt/format.h>

#include <string_view>

namespace kvrmem {

namespace {

/// Nothing, for groff, but what follows does not begin its line.
constexpr std::string_view no_request = R"(\&)";

/// Text as it is to be printed: hyphens that can be copied, and no line that groff takes for a request.
std::string for_man(std::string_view text) {
    // After a line end of its own, the first line is like the others.
    std::string result = '\n' + replaced(replaced(std::string(text), R"(\)", R"(\e)"), "-", R"(\-)");
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
                                   for_man(with_names(which.description)), for_man(which.examples));
    for (const option_entry* entry : options_of(which)) {
        text += man_option(*entry);
    }
    return text;
}

constexpr const char* man_head =
    ".TH KVRMEM 1 \"\" \"kvrmem " KVRMEM_VERSION "\" \"User Commands\"\n"
    ".SH NAME\n"
    "kvrmem \\- read, check, edit, compare, draw and convert memory initialization files\n"
    ".SH SYNOPSIS\n"
    ".B kvrmem\n"
    ".I command\n"
    "[options] [operands]\n"
    ".SH DESCRIPTION\n"
    "The files give an on\\-chip RAM or ROM its first contents: {titles}.\n"
    "Name and contents tell the format, and kvrmem formats lists all; \\- is standard input or output.\n"
    "Numbers are written 31, \\-5, 0x1F, 0b1010 or 0o17, with _ between digits where that helps.\n"
    "Values are exact: what does not fit is refused, never cut.\n"
    ".SH COMMANDS\n";

std::string man_program_word(const program_word& word) {
    std::string title = fmt::format(R"(\fB{}\fR)", for_man(word.name));
    if (!word.value.empty()) {
        title += fmt::format(R"( \fI{}\fR)", for_man(word.value));
    }
    return fmt::format(".TP\n{}\n{}\n", title, for_man(word.help));
}

constexpr std::string_view man_foot =
    ".SH EXIT STATUS\n"
    ".TP\n.B 0\nsuccess\n"
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

} // namespace

std::string manual_page() {
    std::string text = with_names(man_head);
    for (const command* which : all_commands()) {
        text += man_command(*which);
    }
    text += ".SH WITHOUT A COMMAND\n";
    for (const program_word& word : program_words()) {
        text += man_program_word(word);
    }
    return text.append(man_foot);
}

} // namespace kvrmem
