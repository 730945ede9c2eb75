#include "kvrimage/image/united_ranges.h"

#include <algorithm>
#include <utility>

namespace kvrimage {

std::vector<address_range> united(std::vector<address_range> ranges) {
    std::ranges::sort(ranges, {}, &address_range::first);
    std::vector<address_range> result;
    for (const address_range& range : ranges) {
        // After sorting, the previous range of one that begins at 0 begins there too.
        if (!result.empty() && (range.first == 0 || range.first - 1 <= result.back().last)) {
            result.back().last = std::max(result.back().last, range.last);
        } else {
            result.push_back(range);
        }
    }
    return result;
}

std::vector<address_range> ranges_without(std::vector<address_range> ranges,
                                          std::vector<address_range> holes) {
    holes = united(std::move(holes));
    std::vector<address_range> result;
    for (address_range rest : united(std::move(ranges))) {
        bool is_left = true;
        for (auto hole = std::ranges::lower_bound(holes, rest.first, {}, &address_range::last);
             is_left && hole != holes.end() && hole->first <= rest.last; ++hole) {
            if (hole->first > rest.first) {
                result.push_back({rest.first, hole->first - 1});
            }
            is_left = hole->last < rest.last;
            rest.first = is_left ? hole->last + 1 : rest.first;
        }
        if (is_left) {
            result.push_back(rest);
        }
    }
    return result;
}

} // namespace kvrimage
