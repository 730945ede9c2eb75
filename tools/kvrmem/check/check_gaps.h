#pragma once

#include "tools/kvrmem/check/check_fault.h"
#include "tools/kvrmem/memory/word_lines.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kvrmem {

/// Warns of the words of a memory that no line sets. Without a @p depth the memory lasts from the lowest to
/// the highest word that is set. @p hint tells what the library holds there.
void check_gaps(const word_lines& lines, std::optional<std::uint32_t> depth, const std::string& hint,
                fault_list& faults);

} // namespace kvrmem
