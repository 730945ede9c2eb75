#include "kvrimage/image/united_ranges.h"

#include <algorithm>

namespace kvrimage {

std::vector<address_range> united(std::vector<address_range> ranges) {
    std::ranges::sort(ranges, {}, &address_range::first);
    std::vector<address_range> result;
    for (const address_range& range : ranges) {
        if (!result.empty() && range.first <= result.back().last + 1) {
            result.back().last = std::max(result.back().last, range.last);
        } else {
            result.push_back(range);
        }
    }
    return result;
}

} // namespace kvrimage
