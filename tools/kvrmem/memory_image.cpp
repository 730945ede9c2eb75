#include "tools/kvrmem/memory_image.h"

namespace kvrmem {

std::optional<address_bounds> bounds_of(const kvr::word_store& words) {
    std::optional<address_bounds> bounds;
    for (std::uint64_t address = 0; address < words.size();) {
        const kvr::word_run run = words.run_at(static_cast<std::uint32_t>(address));
        if (!run.text.empty()) {
            bounds = address_bounds{bounds ? bounds->lowest : run.first, run.last};
        }
        address = std::uint64_t{run.last} + 1;
    }
    return bounds;
}

} // namespace kvrmem
