#include "tools/kvrmem/command_line/manual_page.h"

#include "kvr/util/letter_case.h"
#include "tools/kvrmem/command_line/command_words.h"
#include "tools/kvrmem/command_line/format_names.h"
#include "tools/kvrmem/command_line/help_topics.h"
#include "tools/kvrmem/commands/commands.h"

#include <fmt/format.h>

#include <cstddef>
#include <string_view>

namespace kvrmem {

namespace {

constexpr std::size_t most_columns = 78; // linters of manual pages require at most 80

/// A zero-width character: the following text does not begin its line.
constexpr std::string_view no_request = R"(\&)";

/// Escapes text for groff: hyphens stay hyphens when copied, and no line is taken for a request.
std::string for_man(std::string_view text) {
    // The leading line end makes the first line like the others.
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
    return fmt::format(".TP\n{}\n{}\n", title, for_man(wrapped(entry.help, most_columns)));
}

/// Formats the paragraphs of @p text, which are separated by blank lines.
std::string man_paragraphs(std::string_view text) {
    return replaced(for_man(text), "\n\n", "\n.PP\n");
}

/// Formats lines verbatim. Each must end with a line feed.
std::string man_lines(std::string_view text) {
    return fmt::format(".nf\n{}.fi\n", for_man(text));
}

std::string man_title(std::string_view name) {
    return fmt::format(".TH {} 1 \"" KVRMEM_DATE "\" \"kvrmem " KVRMEM_VERSION "\" \"User Commands\"\n",
                       for_man(name));
}

std::string man_topic(const help_topic& topic) {
    return fmt::format(".SH {}\n{}", for_man(kvr::to_upper_case(topic.title)), man_lines(topic.text()));
}

/// Converts "Print single words." to "print single words" for the NAME section.
std::string man_purpose(const command& which) {
    std::string text = which.summary;
    text.front() = kvr::lower_case_of(text.front());
    text.pop_back(); // the period
    return for_man(text);
}

/// Returns the references to the pages of all commands.
std::string man_references() {
    std::string text;
    for (const command* which : all_commands()) {
        text += fmt::format("{}.BR kvrmem\\-{} (1)", text.empty() ? "" : " ,\n", for_man(which->name));
    }
    return text + "\n";
}

std::string man_summary(const command& which) {
    return fmt::format(".TP\n\\fB{}\\fR\n{}\n", for_man(which.name), for_man(which.summary));
}

constexpr std::string_view man_overview =
    ".SH NAME\n"
    "kvrmem \\- read, check, edit, compare, draw and convert memory initialization files\n"
    ".SH SYNOPSIS\n"
    ".B kvrmem\n"
    ".I command\n"
    "[options] [operands]\n"
    ".SH DESCRIPTION\n"
    "The files give an on\\-chip RAM or ROM its first contents: {titles}.\n"
    "Name and contents determine the format; kvrmem formats lists all formats; \\- is standard input or "
    "output.\n"
    ".SH COMMANDS\n"
    "Each has its own page,\n"
    ".BI kvrmem\\- command (1).\n";

std::string man_program_word(const program_word& word) {
    std::string title = fmt::format(R"(\fB{}\fR)", for_man(word.name));
    if (!word.value.empty()) {
        title += fmt::format(R"( \fI{}\fR)", for_man(word.value));
    }
    return fmt::format(".TP\n{}\n{}\n", title, for_man(word.help));
}

constexpr std::string_view man_exit_status = ".SH EXIT STATUS\n"
                                             ".TP\n.B 0\nsuccess\n"
                                             ".TP\n.B 1\nthe answer to the question asked is no\n"
                                             ".TP\n.B 2\nbad input: a file has an error\n"
                                             ".TP\n.B 3\ninput or output failed\n"
                                             ".TP\n.B 4\nwrong usage\n"
                                             ".TP\n.B 5\ninternal error, or out of memory\n";

constexpr std::string_view man_environment =
    ".SH ENVIRONMENT\n"
    ".TP\n.B NO_COLOR\nset to any value: no color, unless \\-\\-color requests it\n"
    ".TP\n.B TERM\n\"dumb\": no color\n"
    ".TP\n.B LC_ALL, LC_CTYPE, LANG\nthe first that is set determines if a plot in the terminal is drawn\n"
    "in UTF\\-8\n";

constexpr std::string_view man_see_also = ".SH SEE ALSO\n";

} // namespace

std::string manual_page() {
    std::string text = man_title("KVRMEM") + with_names(std::string(man_overview));
    for (const command* which : all_commands()) {
        text += man_summary(*which);
    }
    for (const help_topic& topic : help_topics()) {
        text += is_command(topic.name) ? "" : man_topic(topic);
    }
    text += ".SH WITHOUT A COMMAND\n";
    for (const program_word& word : program_words()) {
        text += man_program_word(word);
    }
    return text.append(man_exit_status).append(man_environment).append(man_see_also).append(man_references());
}

std::string manual_page(const command& which) {
    std::string text = man_title(kvr::to_upper_case(fmt::format("kvrmem-{}", which.name)));
    text += fmt::format(".SH NAME\nkvrmem\\-{} \\- {}\n", for_man(which.name), man_purpose(which));
    text += fmt::format(".SH SYNOPSIS\n.B kvrmem {}\n[options]{}{}\n", for_man(which.name),
                        *which.operands != '\0' ? " " : "", for_man(which.operands));
    text += fmt::format(".SH DESCRIPTION\n{}", man_paragraphs(with_names(which.description)));
    const help_topic* const topic = topic_called(which.name);
    text += topic != nullptr ? man_topic(*topic) : "";
    text += ".SH OPTIONS\n";
    for (const option_entry* entry : options_of(which)) {
        text += man_option(*entry);
    }
    text += fmt::format(".SH EXAMPLES\n{}", man_lines(which.examples));
    return text.append(man_exit_status).append(man_see_also).append(".BR kvrmem (1)\n");
}

} // namespace kvrmem
