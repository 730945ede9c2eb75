#pragma once

#include <string_view>

namespace kvr_fuzz {

/// Ends the program with @p what on the standard error that it was started with: a finding.
[[noreturn]] void tell_finding(std::string_view what);

/// @param what says what does not hold.
inline void expect(bool holds, std::string_view what) {
    if (!holds) {
        tell_finding(what);
    }
}

} // namespace kvr_fuzz
