#include "tools/kvrmem/commands/commands.h"

#include "tools/kvrmem/command_line/suggestion.h"
#include "tools/kvrmem/commands/other_commands.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

constexpr std::array<const command*, 18> commands = {
    &convert_command, &check_command,  &info_command,  &get_command,   &dump_command,    &set_command,
    &fill_command,    &format_command, &split_command, &join_command,  &merge_command,   &sum_command,
    &diff_command,    &plot_command,   &new_command,   &radix_command, &formats_command, &lsp_command,
};

} // namespace

std::span<const command* const> all_commands() noexcept {
    return commands;
}

bool is_command(std::string_view name) noexcept {
    return std::ranges::find(commands, name, &command::name) != commands.end();
}

const command& find_command(std::span<const std::string> words,
                            std::span<const std::string_view> other_words) {
    const std::string& name = words.front();
    std::vector<std::string_view> names(other_words.begin(), other_words.end());
    for (const command* entry : commands) {
        if (name == entry->name) {
            return *entry;
        }
        names.emplace_back(entry->name);
    }
    const std::string advice = advice_on_other_command(words);
    const std::string nearest = nearest_of(name, names);
    usage_error(fmt::format("there is no command '{}'; {}", name,
                            !advice.empty()    ? advice
                            : !nearest.empty() ? fmt::format("did you mean '{}'?", nearest)
                                               : "see kvrmem --help"));
}

} // namespace kvrmem
