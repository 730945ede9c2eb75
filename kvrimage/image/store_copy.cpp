#include "kvrimage/image/store_copy.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace kvrimage {

namespace {

/// Copies the words in order of addresses. Words beyond those copied may hold anything in the meantime.
class store_copier {
public:
    explicit store_copier(const kvr::word_store& words) : from(words) { to.resize(from.size(), ""); }

    kvr::word_store copy() {
        for (std::uint64_t next = 0; next < from.size();) {
            next += copy_at(static_cast<std::uint32_t>(next));
        }
        return std::move(to);
    }

private:
    /// Copies one stretch from @p address on and returns its length.
    std::uint64_t copy_at(std::uint32_t address) {
        const kvr::word_row row = from.row_at(address);
        if (row.count != 0 && row.length != 0) {
            to.set_side_by_side(address, row.all(), row.length);
            return row.count;
        }
        const std::uint64_t in_cycle = address >= known_until ? copy_cycle(from.cycle_at(address)) : 0;
        return in_cycle != 0 ? in_cycle : copy_run(from.run_at(address));
    }

    /// Copies @p cycle, or returns 0 if its words must be copied one by one. The fill is written up to the
    /// end: words set within a fill split it into pieces, and the later pieces are then already there.
    std::uint64_t copy_cycle(const kvr::word_cycle& cycle) {
        known_until = std::uint64_t{cycle.last} + 1;
        const std::uint64_t length = known_until - cycle.first;
        if (cycle.period <= 1) {
            return 0;
        }
        if (is_copied(cycle)) {
            return length;
        }
        if (length < cycle.period) {
            return 0;
        }
        std::vector<std::string_view> texts;
        for (std::uint32_t index = 0; index < cycle.period; ++index) {
            texts.push_back(from[cycle.first + index]);
        }
        to.fill(cycle.first, to.size() - 1, texts);
        return length;
    }

    [[nodiscard]] bool is_copied(const kvr::word_cycle& cycle) const {
        if (to.cycle_at(cycle.first).period != cycle.period) { // the copy was filled up to the end
            return false;
        }
        const std::uint32_t length = std::min(cycle.last - cycle.first, cycle.period - 1) + 1;
        std::uint32_t index = 0;
        while (index < length && to[cycle.first + index] == from[cycle.first + index]) {
            ++index;
        }
        return index == length;
    }

    std::uint64_t copy_run(const kvr::word_run& run) {
        const kvr::word_run there = to.run_at(run.first);
        if (there.text != run.text || there.last < run.last) {
            to.fill(run.first, run.last, {run.text});
        }
        return std::uint64_t{run.last} - run.first + 1;
    }

    const kvr::word_store& from;
    kvr::word_store to;
    std::uint64_t known_until = 0; ///< end of the cycles already examined
};

} // namespace

kvr::word_store copy_of(const kvr::word_store& words) {
    return store_copier(words).copy();
}

} // namespace kvrimage
