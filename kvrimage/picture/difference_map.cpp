#include "kvrimage/picture/difference_map.h"

namespace kvrimage {

difference_kind kind_of(const difference& found) noexcept {
    return !found.right  ? difference_kind::left_only
           : !found.left ? difference_kind::right_only
                         : difference_kind::changed;
}

void difference_map::take(const difference& found, const address_range& offsets) {
    const auto kind = static_cast<std::size_t>(kind_of(found));
    totals[kind] += offsets.last - offsets.first + 1;
    grid.for_each_column(offsets.first, offsets.last,
                         [&](std::uint32_t column, std::uint64_t words) { counted[column][kind] += words; });
}

} // namespace kvrimage
