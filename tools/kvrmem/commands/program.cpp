#include "tools/kvrmem/commands/program.h"

#include "kvrimage/files/file_error.h"
#include "tools/kvrmem/command_line/generated_text.h"
#include "tools/kvrmem/command_line/help_text.h"
#include "tools/kvrmem/command_line/help_topics.h"
#include "tools/kvrmem/command_line/idle_options.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/broken_file.h"
#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/progress.h"
#include "tools/kvrmem/platform/standard_output.h"
#include "tools/kvrmem/platform/terminal.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

using kvrmem::exit_code;

/// Standard input can be read only once.
void require_one_standard_input(const kvrmem::command& which, const kvrmem::arguments& given) {
    constexpr std::array<std::string_view, 4> readers_of_all = {"check", "diff", "join", "merge"};
    const bool reads_all = std::ranges::find(readers_of_all, which.name) != readers_of_all.end();
    const auto end = reads_all || given.files.empty() ? given.files.end() : given.files.begin() + 1;
    const auto times = std::count(given.files.begin(), end, "-") + (given.manifest == "-" ? 1 : 0);
    if (times > 1 && which.name != std::string_view("split")) { // split writes the manifest to it
        kvrmem::usage_error("- is given more than once: standard input can be read only once");
    }
}

/// @param color set to the choice in the command line
exit_code run_command(const kvrmem::command& which, int count, char** words, kvrmem::color_choice& color) {
    const kvrmem::arguments given = kvrmem::parse_arguments(which, count, words);
    color = given.color;
    if (given.help) {
        kvrmem::print(kvrmem::help_for(which));
        return exit_code::success;
    }
    kvrmem::refuse_idle_options(which, given);
    require_one_standard_input(which, given);
    kvrmem::start_progress();
    const exit_code answer = which.run(given);
    kvrmem::end_progress();
    return answer;
}

bool asks_for_help(std::string_view word) {
    return word == "--help" || word == "-h" || word == "help";
}

/// `kvrmem help help` shows the overview.
std::string help_on(std::string_view subject) {
    const kvrmem::help_topic* const topic = kvrmem::topic_called(subject);
    if (topic != nullptr && !kvrmem::is_command(subject)) {
        return kvrmem::page_of(*topic);
    }
    const std::array<std::string, 1> words = {std::string(subject)};
    return asks_for_help(subject) ? kvrmem::overview() : kvrmem::help_for(kvrmem::find_command(words));
}

/// @param count words of the command line, including the program's name and @p first
void require_at_most(int operands, int count, std::string_view first) {
    if (count - 2 > operands) {
        kvrmem::usage_error(fmt::format("{} takes {}", first, operands == 0 ? "no operand" : "one operand"));
    }
}

exit_code run(int count, char** words, kvrmem::color_choice& color) {
    if (count < 2) {
        throw kvrmem::tool_error(exit_code::wrong_usage, "no command given; see kvrmem --help");
    }
    const std::string_view first = words[1];
    if (asks_for_help(first)) {
        require_at_most(1, count, first);
        kvrmem::print(count > 2 ? help_on(words[2]) : kvrmem::overview());
        return exit_code::success;
    }
    if (first == "--version" || first == "-V") {
        require_at_most(0, count, first);
        kvrmem::print("kvrmem " KVRMEM_VERSION "\n");
        return exit_code::success;
    }
    if (first == "--generate") {
        kvrmem::print(kvrmem::generated_text(std::vector<std::string>(words + 2, words + count)));
        return exit_code::success;
    }
    constexpr std::array<std::string_view, 2> other_first_words = {"--help", "--version"};
    const std::vector<std::string> line(words + 1, words + count);
    return run_command(kvrmem::find_command(line, other_first_words), count - 1, words + 1, color);
}

int report(exit_code code, std::string_view message, kvrmem::color_choice color) {
    kvrmem::end_progress();
    kvrmem::print_failure(message, color);
    return static_cast<int>(code);
}

} // namespace

int kvrmem::run_program(int count, char** words) {
    kvrmem::color_choice color = kvrmem::color_choice::automatic;
    try {
        return static_cast<int>(run(count, words, color));
    } catch (const kvrmem::broken_file& error) {
        kvrmem::end_progress();
        kvrmem::print_message_as_it_is(error.shown());
        return static_cast<int>(error.code());
    } catch (const kvrimage::file_error& error) {
        // Where no signal ends the tool when nobody reads its output any more, it ends as silently.
        if (error.code() == std::errc::broken_pipe) {
            return static_cast<int>(exit_code::input_output);
        }
        return report(exit_code::input_output, error.what(), color);
    } catch (const kvrmem::tool_error& error) {
        return report(error.code(), error.message(), color);
    } catch (const std::bad_alloc&) {
        return report(exit_code::internal, "out of memory", color);
    } catch (const std::length_error&) { // a text or a vector that no memory of this machine holds
        return report(exit_code::internal, "out of memory", color);
    } catch (const std::exception& error) {
        return report(exit_code::internal, fmt::format("internal error: {}", error.what()), color);
    }
}
