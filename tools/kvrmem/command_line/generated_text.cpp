#include "tools/kvrmem/command_line/generated_text.h"

#include "tools/kvrmem/command_line/bash_completion.h"
#include "tools/kvrmem/command_line/fish_completion.h"
#include "tools/kvrmem/command_line/manual_page.h"
#include "tools/kvrmem/command_line/zsh_completion.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <algorithm>
#include <array>

namespace kvrmem {

namespace {

struct generator {
    std::string_view kind;
    std::string (*make)();
};

std::string main_manual_page() {
    return manual_page();
}

constexpr std::array<generator, 4> generators = {{{"man", main_manual_page},
                                                  {"bash", bash_completion},
                                                  {"zsh", zsh_completion},
                                                  {"fish", fish_completion}}};

} // namespace

std::vector<std::string_view> generated_kinds() {
    std::vector<std::string_view> kinds;
    kinds.reserve(generators.size());
    for (const generator& entry : generators) {
        kinds.push_back(entry.kind);
    }
    return kinds;
}

std::string generated_text(std::span<const std::string> words) {
    const std::string_view kind = words.empty() ? std::string_view() : words.front();
    const auto* const found = std::ranges::find(generators, kind, &generator::kind);
    if (found == generators.end()) {
        usage_error("--generate: expected man, bash, zsh or fish");
    }
    if (words.size() == 1) {
        return found->make();
    }
    if (kind != "man" || words.size() > 2) {
        usage_error(kind == "man" ? "--generate man takes one command" : "--generate takes one operand");
    }
    return manual_page(find_command(words.subspan(1)));
}

} // namespace kvrmem
