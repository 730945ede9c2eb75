#pragma once

#include "tools/kvrmem/check/check_fault.h"
#include "tools/kvrmem/check/check_source.h"
#include "tools/kvrmem/memory/memory_input.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kvrmem {

/// Adds to @p faults what is wrong with @p source in the format that @p options name.
void check_format(const check_source& source, const input_options& options, fault_list& faults);

/// One change that was made.
struct change {
    std::uint64_t line;
    std::uint64_t column;
    std::string what;
};

/// A file after its repairs: every byte that no repair has touched is as it was.
struct repaired_file {
    check_source source;
    std::vector<change> changes;
    fault_list left; ///< what no repair has mended
};

/// Mends what can be mended for certain, until nothing of that is left.
[[nodiscard]] repaired_file repair_faults(const check_source& source, const input_options& options);

} // namespace kvrmem
