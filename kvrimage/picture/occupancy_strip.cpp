#include "kvrimage/picture/occupancy_strip.h"

#include "kvrimage/image/word_text.h"

namespace kvrimage {

namespace {

bool begins_part(const column_grid& grid, std::uint32_t column) {
    return grid.part_of_column(column).first_column == column;
}

} // namespace

occupancy word_column::state() const noexcept {
    if (set == 0) {
        return occupancy::unset;
    }
    if (has_dont_care) {
        return occupancy::dont_care;
    }
    if (set < seen) {
        return occupancy::partly_set;
    }
    return is_in_run ? occupancy::run : occupancy::set;
}

void occupancy_strip::take(const text_run& run) {
    const bool is_set = !run.text.empty();
    const bool has_dont_care = is_set && !is_plain(run.text);
    const bool is_run = run.last > run.first && is_set;
    bool begins = true;
    cells.for_each_column(run, [&](std::uint32_t at, std::uint64_t words) {
        word_column& column = counted[at];
        column.seen += words;
        column.set += is_set ? words : 0;
        column.has_dont_care |= has_dont_care;
        if (is_run && words == cells.words_of(at)) {
            column.is_in_run = true;
            column.begins_run = begins;
            begins = false;
        }
    });
}

void occupancy_strip::add_set(std::uint64_t first, std::uint64_t last) {
    cells.for_each_column(first, last,
                          [this](std::uint32_t at, std::uint64_t words) { counted[at].set += words; });
}

std::vector<occupancy_stretch> occupancy_strip::stretches() const {
    std::vector<occupancy_stretch> found;
    for (std::uint32_t column = 0; column < counted.size(); ++column) {
        const occupancy state = counted[column].state();
        if (found.empty() || found.back().state != state || begins_part(cells, column)) {
            found.push_back({state, column, column});
        }
        found.back().end = column + 1;
    }
    return found;
}

} // namespace kvrimage
