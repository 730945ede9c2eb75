#include "tools/kvrmem/commands/commands.h"

#include "tools/kvrmem/command_line/suggestion.h"

#include <fmt/format.h>

#include <array>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

constexpr std::array<const command*, 16> commands = {
    &convert_command, &check_command, &info_command,  &get_command,     &dump_command, &set_command,
    &fill_command,    &split_command, &join_command,  &merge_command,   &sum_command,  &diff_command,
    &plot_command,    &new_command,   &radix_command, &formats_command,
};

} // namespace

std::span<const command* const> all_commands() noexcept {
    return commands;
}

const command& find_command(std::string_view name, std::span<const std::string_view> other_words) {
    std::vector<std::string_view> names(other_words.begin(), other_words.end());
    for (const command* entry : commands) {
        if (name == entry->name) {
            return *entry;
        }
        names.emplace_back(entry->name);
    }
    const std::string nearest = nearest_of(name, names);
    throw tool_error(exit_code::wrong_usage,
                     nearest.empty()
                         ? fmt::format("there is no command '{}'; see kvrmem --help", name)
                         : fmt::format("there is no command '{}'; did you mean '{}'?", name, nearest));
}

} // namespace kvrmem
