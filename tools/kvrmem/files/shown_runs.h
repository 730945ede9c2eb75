#pragma once

#include "kvrimage/formats/format.h"

#include <functional>
#include <optional>
#include <vector>

namespace kvrmem {

/// Calls @p take with parts of @p range, in order, that lie within one of the ranges @p unreadable (true) or
/// between them (false).
void for_each_part(const kvrimage::address_range& range,
                   const std::vector<kvrimage::address_range>& unreadable,
                   const std::function<void(const kvrimage::address_range&, bool)>& take);

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
