#pragma once

#include <string_view>

namespace kvr_fuzz {

/// Ends the program with @p what on the standard error that it was started with: a finding.
[[noreturn]] void report_finding(std::string_view what);

/// @param what says what is wrong.
inline void expect(bool holds, std::string_view what) {
    if (!holds) {
        report_finding(what);
    }
}

} // namespace kvr_fuzz
