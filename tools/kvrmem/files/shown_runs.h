#pragma once

#include "kvrimage/formats/format.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kvrmem {

/// Calls @p take with parts of @p range, in order, that lie within one of the ranges @p unreadable (true) or
/// between them (false).
void for_each_part(const kvrimage::address_range& range,
                   const std::vector<kvrimage::address_range>& unreadable,
                   const std::function<void(const kvrimage::address_range&, bool)>& take);

/// "0x5", "0x5..0x8"
[[nodiscard]] std::string shown_range(const kvrimage::address_range& range);

/// "0x0..0x7, 0x10": the first eight of @p ranges, and " ..." where there are more.
[[nodiscard]] std::string shown_ranges(std::span<const kvrimage::address_range> ranges);

/// Where @p image has words, as shown_ranges() shows it; "no address" where it has none.
[[nodiscard]] std::string set_addresses(const kvrimage::memory_image& image);

/// Neighbouring addresses that a command shows alike.
struct shown_run {
    kvrimage::address_range addresses;
    std::optional<kvrimage::word> value; ///< nothing: not set
    bool is_unreadable = false;          ///< the file's word is in doubt, and so it is not set
};

/// Calls @p take with the runs of @p range of the image in @p result, in order of addresses.
void for_each_shown_run(const kvrimage::read_result& result, const kvrimage::address_range& range,
                        const std::function<void(const shown_run&)>& take);

} // namespace kvrmem
