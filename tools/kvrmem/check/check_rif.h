#pragma once

#include "tools/kvrmem/check/check_fault.h"
#include "tools/kvrmem/check/check_source.h"
#include "tools/kvrmem/memory/memory_input.h"

namespace kvrmem {

/// check_mif() for RIF.
void check_rif(const check_source& source, const input_options& options, fault_list& faults);

} // namespace kvrmem
