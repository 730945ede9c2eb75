#pragma once

#include "tools/kvrmem/compare/difference.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/terminal.h"

#include <memory>

namespace kvrmem {

/// What a comparison of two memories prints on the standard output. Reports view the memories that they are
/// made for.
class diff_report {
public:
    virtual ~diff_report() = default;
    diff_report() = default;
    diff_report(const diff_report&) = delete;
    diff_report& operator=(const diff_report&) = delete;
    virtual void take(const difference& found) = 0;
    virtual void finish(bool equal) = 0;
};

/// Nothing.
[[nodiscard]] std::unique_ptr<diff_report> make_quiet_report();

/// A line for every difference, in colors of @p paint, and their count.
[[nodiscard]] std::unique_ptr<diff_report> make_text_report(const diff_side& left, const diff_side& right,
                                                            const word_radix& radix, const painter& paint);

/// The schema "kvrmem-diff-1". Differences are written as they are found: there may be more of them than
/// memory.
[[nodiscard]] std::unique_ptr<diff_report> make_json_report(const diff_side& left, const diff_side& right,
                                                            const word_radix& radix);

} // namespace kvrmem
