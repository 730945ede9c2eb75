#pragma once

#include "kvrimage/diagnostics/diagnostic_text.h"
#include "kvrimage/formats/format.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/platform/json.h"
#include "tools/kvrmem/platform/terminal.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace kvrmem {

/// Maximum diagnostics of one class per file, shown as text and reported in JSON.
inline constexpr std::size_t most_shown = 100;
inline constexpr std::size_t most_in_json = 10000;

/// Numbers of the diagnostics kept, by class.
class diagnostic_counts {
public:
    diagnostic_counts() = default;
    explicit diagnostic_counts(const kvrimage::read_result& result);

    void add(const diagnostic_counts& other);
    [[nodiscard]] std::uint64_t of(kvrimage::diagnostic_class level) const noexcept {
        return counts[static_cast<std::size_t>(level)];
    }
    /// Returns the number of broken diagnostics and of those for consumers.
    [[nodiscard]] std::uint64_t errors() const noexcept;
    [[nodiscard]] std::uint64_t warnings() const noexcept { return of(kvrimage::diagnostic_class::suspect); }
    [[nodiscard]] std::uint64_t left_out() const noexcept { return not_kept; }
    [[nodiscard]] bool none() const noexcept { return errors() + warnings() + left_out() == 0; }
    /// Returns whether the check fails: there is an error or, with @p strict, a warning.
    [[nodiscard]] bool fail(bool strict) const noexcept {
        return errors() != 0 || (strict && warnings() != 0);
    }
    /// Returns "2 errors, 1 warning".
    [[nodiscard]] std::string text() const;

private:
    std::array<std::uint64_t, 3> counts{}; ///< by class
    std::uint64_t not_kept = 0;
};

/// Formats the diagnostics of @p result for the file @p name with @p contents, as lines.
[[nodiscard]] std::string report_as_text(const std::string& name, std::string_view contents,
                                         const kvrimage::read_result& result,
                                         const kvrimage::text_painter& paint);

/// Returns the member of "files" in the schema kvrmem-check-2.
[[nodiscard]] json_value report_as_json(const std::string& path, const kvrimage::read_result& result);

} // namespace kvrmem
