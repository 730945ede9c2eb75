#include "kvrimage/image/word_runs.h"

namespace kvrimage {

std::optional<text_cycle> cycle_finder::find(std::uint64_t address) {
    if (address < known_until) {
        return std::nullopt;
    }
    const text_cycle cycle = words.cycle_at(address);
    known_until = cycle.last + 1;
    if (cycle.period > 1 && length_of(cycle) / cycle.period >= 2) {
        return cycle;
    }
    return std::nullopt;
}

std::uint64_t visit_row_or_cycle(const image_words& words, cycle_finder& cycles, std::uint64_t first,
                                 const row_visitor& visit_row, const cycle_visitor& visit_cycle) {
    const kvr::word_row row = words.row_at(first);
    if (row.count != 0) {
        return visit_row(row, first); // a row is never part of a cycle
    }
    const auto cycle = cycles.find(first);
    return cycle ? visit_cycle(*cycle) : 0;
}

} // namespace kvrimage
