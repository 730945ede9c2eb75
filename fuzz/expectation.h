#pragma once

#include <string_view>

namespace kvr_fuzz {

/// Writes @p what to the standard error that the program started with, and ends the program: a finding.
[[noreturn]] void report_finding(std::string_view what);

/// @param what describes the fault.
inline void expect(bool holds, std::string_view what) {
    if (!holds) {
        report_finding(what);
    }
}

} // namespace kvr_fuzz
