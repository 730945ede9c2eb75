#pragma once

#include "tools/kvrmem/check/check_output.h"
#include "tools/kvrmem/command_line/option_table.h"

#include <memory>

namespace kvrmem {

// Outputs of `check` for other programs. They print when they are finished; @p given is kept alive by the
// caller.

/// One log of the Static Analysis Results Interchange Format, version 2.1.0: rules from the diagnostics table
/// as far as there are results, a result for each fault with its first place, the others as related
/// locations, and the repair where it is certain. Columns are those of Unicode code points.
[[nodiscard]] std::unique_ptr<check_output> make_sarif_output(const arguments& given);

/// Commands for the log of a workflow, "::error file=...::message", and the line that the text ends with.
[[nodiscard]] std::unique_ptr<check_output> make_github_output(const arguments& given);

/// A test suite for each file, with a test case for each fault, or one for a file without. An error is a
/// failure, with --strict also a warning.
[[nodiscard]] std::unique_ptr<check_output> make_junit_output(const arguments& given);

/// A report on the quality of code: an array with an object for each fault. Fingerprints hold as long as
/// file, code and message do, in whatever line.
[[nodiscard]] std::unique_ptr<check_output> make_gitlab_output(const arguments& given);

} // namespace kvrmem
