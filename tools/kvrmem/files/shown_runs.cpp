#include "tools/kvrmem/files/shown_runs.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace kvrmem {

namespace {

constexpr std::size_t most_shown_ranges = 8;

} // namespace

std::string shown_range(const kvrimage::address_range& range) {
    return range.first == range.last ? fmt::format("0x{:X}", range.first)
                                     : fmt::format("0x{:X}..0x{:X}", range.first, range.last);
}

std::string shown_ranges(std::span<const kvrimage::address_range> ranges) {
    std::string text;
    for (const kvrimage::address_range& range : ranges.first(std::min(ranges.size(), most_shown_ranges))) {
        text += (text.empty() ? "" : ", ") + shown_range(range);
    }
    return text + (ranges.size() > most_shown_ranges ? " ..." : "");
}

std::string set_addresses(const kvrimage::memory_image& image) {
    std::vector<kvrimage::address_range> ranges;
    for (const kvrimage::run& each : image.runs()) {
        if (!each.value) {
            continue;
        }
        if (!ranges.empty() && ranges.back().last + 1 == each.addresses.first) {
            ranges.back().last = each.addresses.last;
        } else if (ranges.size() > most_shown_ranges) {
            break;
        } else {
            ranges.push_back(each.addresses);
        }
    }
    return ranges.empty() ? "no address" : shown_ranges(ranges);
}

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
