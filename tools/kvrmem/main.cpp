#include "tools/kvrmem/commands.h"
#include "tools/kvrmem/standard_output.h"
#include "tools/kvrmem/tool_error.h"

#include <fmt/format.h>

#include <array>
#include <cstdio>
#include <new>
#include <string>
#include <string_view>

namespace {

using kvrmem::exit_code;

constexpr std::array<const kvrmem::command*, 2> commands = {&kvrmem::convert_command, &kvrmem::info_command};

std::string overview() {
    std::string text = "kvrmem reads, converts and inspects memory initialization files: MIF, Intel HEX with "
                       "word addresses, and RIF.\n\nExamples\n"
                       "  $ kvrmem convert sine.mif sine.hex\n"
                       "  $ kvrmem info sine.mif\n\nCommands\n";
    for (const kvrmem::command* entry : commands) {
        text += fmt::format("  {:<10}{}\n", entry->name, entry->summary);
    }
    return text + "\nkvrmem COMMAND --help tells more about a command.\n"
                  "Exit codes: 0 fine, 1 negative answer, 2 bad input, 3 input/output failure, "
                  "4 wrong usage, 5 internal or out of memory.\n";
}

const kvrmem::command& find_command(std::string_view name) {
    for (const kvrmem::command* entry : commands) {
        if (name == entry->name) {
            return *entry;
        }
    }
    throw kvrmem::tool_error(exit_code::wrong_usage,
                             fmt::format("there is no command '{}'; see kvrmem --help", name));
}

exit_code run(int count, char** words) {
    if (count < 2) {
        throw kvrmem::tool_error(exit_code::wrong_usage, "no command given; see kvrmem --help");
    }
    const std::string_view first = words[1];
    if (first == "--help" || first == "-h" || first == "help") {
        kvrmem::print(overview());
        return exit_code::fine;
    }
    if (first == "--version") {
        kvrmem::print("kvrmem " KVR_VERSION "\n");
        return exit_code::fine;
    }
    const kvrmem::command& which = find_command(first);
    const kvrmem::arguments arguments = kvrmem::parse_arguments(which, count - 1, words + 1);
    if (arguments.help) {
        kvrmem::print(kvrmem::help_for(which));
    } else {
        which.run(arguments);
    }
    return exit_code::fine;
}

int report(exit_code code, std::string_view message) {
    fmt::print(stderr, "kvrmem: {}\n", message);
    return static_cast<int>(code);
}

} // namespace

int main(int count, char** words) {
    try {
        return static_cast<int>(run(count, words));
    } catch (const kvrmem::tool_error& error) {
        return report(error.code(), error.what());
    } catch (const std::bad_alloc&) {
        return report(exit_code::internal, "out of memory");
    } catch (const std::exception& error) {
        return report(exit_code::internal, fmt::format("internal error: {}", error.what()));
    }
}
