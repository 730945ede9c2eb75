#include "tools/kvrmem/memory/memory_image.h"

namespace kvrmem {

std::optional<address_bounds> bounds_of(const kvr::word_store& words) {
    std::optional<address_bounds> bounds;
    for (std::uint64_t address = 0; address < words.size();) {
        const kvr::word_row row = words.row_at(static_cast<std::uint32_t>(address));
        if (row.count != 0 && row.length != 0) {
            bounds.emplace(address_bounds{bounds ? bounds->lowest : static_cast<std::uint32_t>(address),
                                          static_cast<std::uint32_t>(address + row.count - 1)});
            address += row.count;
            continue;
        }
        const kvr::word_run run = words.run_at(static_cast<std::uint32_t>(address));
        if (!run.text.empty()) {
            bounds = address_bounds{bounds ? bounds->lowest : run.first, run.last};
        }
        address = std::uint64_t{run.last} + 1;
    }
    return bounds;
}

} // namespace kvrmem
