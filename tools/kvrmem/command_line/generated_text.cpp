#include "tools/kvrmem/command_line/generated_text.h"

#include "tools/kvrmem/command_line/bash_completion.h"
#include "tools/kvrmem/command_line/fish_completion.h"
#include "tools/kvrmem/command_line/manual_page.h"
#include "tools/kvrmem/command_line/zsh_completion.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <array>

namespace kvrmem {

namespace {

struct generator {
    std::string_view kind;
    std::string (*make)();
};

constexpr std::array<generator, 4> generators = {
    {{"man", manual_page}, {"bash", bash_completion}, {"zsh", zsh_completion}, {"fish", fish_completion}}};

} // namespace

std::vector<std::string_view> generated_kinds() {
    std::vector<std::string_view> kinds;
    kinds.reserve(generators.size());
    for (const generator& entry : generators) {
        kinds.push_back(entry.kind);
    }
    return kinds;
}

std::string generated_text(std::string_view kind) {
    for (const generator& entry : generators) {
        if (kind == entry.kind) {
            return entry.make();
        }
    }
    throw tool_error(exit_code::wrong_usage, "--generate makes man, bash, zsh or fish");
}

} // namespace kvrmem
