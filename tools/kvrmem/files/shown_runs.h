#pragma once

#include "kvrimage/formats/format.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kvrmem {

/// Splits @p range at the borders of the ranges @p unreadable and calls @p take with each part in order: true
/// for unreadable parts, false for the others.
void for_each_part(const kvrimage::address_range& range,
                   const std::vector<kvrimage::address_range>& unreadable,
                   const std::function<void(const kvrimage::address_range&, bool)>& take);

/// Returns "0x5" or "0x5..0x8".
[[nodiscard]] std::string shown_range(const kvrimage::address_range& range);

/// Returns the first eight of @p ranges, "0x0..0x7, 0x10", and " ..." if there are more.
[[nodiscard]] std::string shown_ranges(std::span<const kvrimage::address_range> ranges);

/// Returns the set addresses of @p image like shown_ranges(), or "no address".
[[nodiscard]] std::string set_addresses(const kvrimage::memory_image& image);

/// Consecutive addresses with the same word or state.
struct shown_run {
    kvrimage::address_range addresses;
    std::optional<kvrimage::word> value; ///< nothing: not set
    bool is_unreadable = false;          ///< the word in the file is ambiguous and therefore not set
};

/// Calls @p take with the runs of @p range in the image of @p result, in address order.
void for_each_shown_run(const kvrimage::read_result& result, const kvrimage::address_range& range,
                        const std::function<void(const shown_run&)>& take);

} // namespace kvrmem
