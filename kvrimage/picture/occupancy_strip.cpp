#include "kvrimage/picture/occupancy_strip.h"

namespace kvrimage {

occupancy word_column::state() const noexcept {
    if (set == 0) {
        return occupancy::unset;
    }
    if (set < seen) {
        return occupancy::partly_set;
    }
    return is_in_run ? occupancy::run : occupancy::set;
}

void occupancy_strip::take(const text_run& run) {
    const bool is_set = !run.text.empty();
    const bool is_run = run.last > run.first && is_set;
    bool begins = true;
    cells.for_each_column(run, [&](std::uint32_t at, std::uint64_t words) {
        word_column& column = counted[at];
        column.seen += words;
        column.set += is_set ? words : 0;
        if (is_run && words == cells.last_of(at) - cells.first_of(at) + 1) {
            column.is_in_run = true;
            column.begins_run = begins;
            begins = false;
        }
    });
}

std::vector<occupancy_stretch> occupancy_strip::stretches() const {
    std::vector<occupancy_stretch> found;
    for (std::uint32_t column = 0; column < counted.size(); ++column) {
        const occupancy state = counted[column].state();
        if (found.empty() || found.back().state != state) {
            found.push_back({state, column, column});
        }
        found.back().end = column + 1;
    }
    return found;
}

} // namespace kvrimage
