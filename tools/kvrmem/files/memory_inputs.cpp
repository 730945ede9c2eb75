#include "tools/kvrmem/files/memory_inputs.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <utility>

namespace kvrmem {

std::string memory_inputs::names() const {
    std::vector<std::string> all;
    for (const memory_input& each : files) {
        all.push_back(each.name());
    }
    return fmt::format("{}", fmt::join(all, ", "));
}

memory_inputs read_memories(const arguments& given) {
    memory_inputs inputs;
    for (const std::string& path : given.files) {
        memory_input& input = inputs.files.emplace_back(read_memory(given, path));
        inputs.images.push_back(std::move(*input.result.image));
        inputs.size += input.file.contents().size();
    }
    return inputs;
}

} // namespace kvrmem
