#pragma once

#include "tools/kvrmem/compare/diff_report.h"
#include "tools/kvrmem/platform/terminal.h"

#include <memory>

namespace kvrmem {

/// What is shown of the figures of a comparison.
enum class diff_figures : std::uint8_t {
    summary, ///< how many words and bits differ, in one line
    blocks   ///< the same for blocks of addresses and for bits, with the heads in colors
};

/// Counts the differences and reports figures of them instead, as text.
[[nodiscard]] std::unique_ptr<diff_report> make_figures_report(const diff_side& left, const diff_side& right,
                                                               diff_figures what, const painter& paint);

/// The same in the schema "kvrmem-diff-1".
[[nodiscard]] std::unique_ptr<diff_report>
make_json_figures_report(const diff_side& left, const diff_side& right, diff_figures what);

} // namespace kvrmem
