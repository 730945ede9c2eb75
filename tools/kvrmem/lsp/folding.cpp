#include "tools/kvrmem/lsp/features.h"
#include "tools/kvrmem/lsp/outline.h"

#include <algorithm>
#include <cstddef>

namespace kvrmem::lsp {

namespace {

/// Adds a fold if it has more than one line.
void add_fold(const line_range& lines, const char* kind, json& all) {
    if (lines.last > lines.first) {
        all.push_back({{"startLine", lines.first}, {"endLine", lines.last}, {"kind", kind}});
    }
}

/// Adds the comments and blank lines between two blocks @p before and @p after a gap. A gap that is a single
/// comment already has its own fold.
void add_gap(document& of, const outline& found, const outline_block& before, const outline_block& after,
             json& all) {
    const std::size_t next = of.buffer().line_of(static_cast<std::size_t>(after.where.offset));
    const bool is_gap = after.addresses.first > before.addresses.last + 1 && next > before.lines.last + 1;
    if (!is_gap) {
        return;
    }
    const line_range lines{before.lines.last + 1, next - 1};
    if (std::ranges::find(found.comments, lines.first, &line_range::first) == found.comments.end()) {
        add_fold(lines, "region", all);
    }
}

} // namespace

json folding_ranges_in(document& of, const json& /*params*/) {
    const outline found = outline_of(of);
    json all = json::array();
    if (!found.settings.empty()) {
        const auto first = static_cast<std::size_t>(found.settings.front().name.offset);
        const auto last = static_cast<std::size_t>(found.settings.back().name.offset);
        add_fold({of.buffer().line_of(first), of.buffer().line_of(last)}, "region", all);
    }
    for (const line_range& each : found.comments) {
        add_fold(each, "comment", all);
    }
    for (const outline_block& each : found.blocks) {
        add_fold(each.lines, "region", all);
    }
    for (std::size_t index = 1; index < found.blocks.size(); ++index) {
        add_gap(of, found, found.blocks[index - 1], found.blocks[index], all);
    }
    for (const line_range& each : found.runs) {
        add_fold(each, "region", all);
    }
    return all;
}

} // namespace kvrmem::lsp
