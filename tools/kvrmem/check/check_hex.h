#pragma once

#include "tools/kvrmem/check/check_fault.h"
#include "tools/kvrmem/check/check_source.h"
#include "tools/kvrmem/memory/memory_input.h"

namespace kvrmem {

/// check_mif() for Intel HEX. What depends on the width of a word is checked when @p options or the records
/// tell it.
void check_hex(const check_source& source, const input_options& options, fault_list& faults);

} // namespace kvrmem
