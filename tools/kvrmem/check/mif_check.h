#pragma once

#include "tools/kvrmem/check/check_fault.h"
#include "tools/kvrmem/check/check_mif_header.h"
#include "tools/kvrmem/check/check_source.h"
#include "tools/kvrmem/memory/memory_input.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kvrmem {

/// What is checked, and where the faults go.
struct mif_check {
    const check_source& source;
    const input_options& options;
    fault_list& faults;
    mif_header_lines header;
    bool blocked = false; ///< the library takes all lines for the header's: the content is read only here
    bool saw_missing_end = false;
    bool saw_bad_value = false;
    bool saw_bad_address = false;
};

/// Adds a fault that marks what stands in the line @p line in front of its comment.
void add_at_line(mif_check& check, severity level, const char* code, std::uint64_t line, std::string message,
                 std::string hint, std::optional<repair> mended = std::nullopt);

} // namespace kvrmem
