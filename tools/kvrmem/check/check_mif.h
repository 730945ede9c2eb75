#pragma once

#include "tools/kvrmem/check/check_fault.h"
#include "tools/kvrmem/check/check_source.h"
#include "tools/kvrmem/memory/memory_input.h"

namespace kvrmem {

/// Adds to @p faults what is wrong with the MIF file @p source: an error if and only if the library refuses
/// it or a width or depth in @p options does not hold, and warnings for what the library reads though it is
/// hardly meant so.
void check_mif(const check_source& source, const input_options& options, fault_list& faults);

} // namespace kvrmem
