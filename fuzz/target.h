#pragma once

#include <span>
#include <string_view>

namespace kvr_fuzz {

/// A fuzz target.
struct target {
    std::string_view name;
    void (*run)(std::string_view input); ///< reports a finding if an expectation fails
    const char* options; ///< for libFuzzer, separated by blanks; the command line overrides them
};

/// The targets of this program.
[[nodiscard]] std::span<const target> all_targets() noexcept;

} // namespace kvr_fuzz
