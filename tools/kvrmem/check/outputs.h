#pragma once

#include "tools/kvrmem/check/check_output.h"
#include "tools/kvrmem/command_line/option_table.h"

#include <memory>

namespace kvrmem {

// Outputs of `check` for other programs, printed at the end. @p given is kept alive by the caller.

/// Returns an output in the Static Analysis Results Interchange Format, version 2.1.0, as one log: the rules
/// with results, and a result for each fault with its first place, the others as related locations, and the
/// repair if it is certain. Columns count Unicode code points.
[[nodiscard]] std::unique_ptr<check_output> make_sarif_output(const arguments& given);

/// Returns an output of workflow commands, "::error file=...::message", followed by the summary line of the
/// text output.
[[nodiscard]] std::unique_ptr<check_output> make_github_output(const arguments& given);

/// Returns an output with a test suite for each file and a test case for each fault, or one test case for a
/// file without faults. Errors are failures; with --strict warnings are, too.
[[nodiscard]] std::unique_ptr<check_output> make_junit_output(const arguments& given);

/// Returns a code quality report: an array with an object for each fault. Fingerprints depend on file, code
/// and message, not on the line.
[[nodiscard]] std::unique_ptr<check_output> make_gitlab_output(const arguments& given);

} // namespace kvrmem
