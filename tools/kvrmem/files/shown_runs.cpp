#include "tools/kvrmem/files/shown_runs.h"

#include <algorithm>
#include <cstdint>

namespace kvrmem {

using kvrimage::address_range;

void for_each_part(const address_range& range, const std::vector<address_range>& unreadable,
                   const std::function<void(const address_range&, bool)>& take) {
    std::uint64_t first = range.first;
    auto next = std::ranges::lower_bound(unreadable, first, {}, &address_range::last);
    for (; next != unreadable.end() && next->first <= range.last; ++next) {
        if (next->first > first) {
            take({first, next->first - 1}, false);
        }
        const address_range part{std::max(first, next->first), std::min(next->last, range.last)};
        take(part, true);
        if (part.last == range.last) {
            return;
        }
        first = part.last + 1;
    }
    take({first, range.last}, false);
}

void for_each_shown_run(const kvrimage::read_result& result, const address_range& range,
                        const std::function<void(const shown_run&)>& take) {
    for (const kvrimage::run& run : result.image->runs(range)) {
        if (run.value) {
            take({run.addresses, run.value});
            continue;
        }
        for_each_part(run.addresses, result.unreadable,
                      [&take](const address_range& part, bool is_unreadable) {
                          take({part, std::nullopt, is_unreadable});
                      });
    }
}

} // namespace kvrmem
