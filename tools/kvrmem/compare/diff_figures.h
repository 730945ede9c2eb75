#pragma once

#include "tools/kvrmem/compare/diff_report.h"
#include "tools/kvrmem/platform/terminal.h"

#include <memory>

namespace kvrmem {

/// The statistics of a comparison to show.
enum class diff_figures : std::uint8_t {
    summary, ///< numbers of different words and bits, in one line
    blocks   ///< the same for blocks of addresses and for bits, with colored headings
};

/// Returns a report of statistics as text.
[[nodiscard]] std::unique_ptr<diff_report> make_figures_report(const diff_side& left, const diff_side& right,
                                                               diff_figures what, const painter& paint);

/// Returns a report of statistics in the schema "kvrmem-diff-1".
[[nodiscard]] std::unique_ptr<diff_report>
make_json_figures_report(const diff_side& left, const diff_side& right, diff_figures what);

} // namespace kvrmem
