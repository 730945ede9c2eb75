#pragma once

#include "tools/kvrmem/command_line/option_table.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace kvrmem {

// Lists of options shared by several commands.

/// Options for reading a file.
inline constexpr std::array reading_options = {option_id::from, option_id::width,      option_id::depth,
                                               option_id::unit, option_id::order,      option_id::base,
                                               option_id::pad,  option_id::read_choice};

/// Options for writing a memory made from files.
inline constexpr std::array writing_options = {option_id::to,         option_id::write_choice,
                                               option_id::data_radix, option_id::address_radix,
                                               option_id::no_runs,    option_id::force_conversion};

/// Combines @p lists into one list.
template <std::size_t... sizes>
[[nodiscard]] constexpr auto united_options(const std::array<option_id, sizes>&... lists) {
    std::array<option_id, (sizes + ...)> all{};
    auto* end = all.begin();
    ((end = std::copy(lists.begin(), lists.end(), end)), ...);
    return all;
}

} // namespace kvrmem
