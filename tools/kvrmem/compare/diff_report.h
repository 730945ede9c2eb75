#pragma once

#include "kvrimage/compare/compare.h"
#include "kvrimage/formats/format.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/json.h"
#include "tools/kvrmem/platform/terminal.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kvrmem {

/// One of two compared memories.
struct diff_side {
    std::string name; ///< escaped for terminals
    std::string path; ///< unchanged bytes
    kvrimage::read_result result;

    [[nodiscard]] const kvrimage::memory_image& image() const { return result.image.value(); }
};

/// Returns the different sizes of two memories: "depth: 16 and 32 words"; "" if they are equal. The depth of
/// a file that does not state it is not compared.
[[nodiscard]] std::string difference_in_size(const diff_side& left, const diff_side& right);

/// The schema of all output of `diff --json`.
inline constexpr const char* diff_schema = "kvrmem-diff-1";

// Common parts of reports.

/// Returns "256 x 16 bits".
[[nodiscard]] std::string form_of(const diff_side& side);
/// Returns "--- a.mif (MIF, 256 x 16 bits)" and a line with "+++" for the right memory.
[[nodiscard]] std::string diff_heads(const diff_side& left, const diff_side& right, const painter& paint);
/// Returns file, format, width and depth.
[[nodiscard]] json_value side_as_json(const diff_side& side);
/// Returns the total number of addresses in @p ranges.
[[nodiscard]] std::uint64_t count_words(const std::vector<kvrimage::address_range>& ranges);

/// The output of a comparison on standard output. A report refers to its memories.
class diff_report {
public:
    virtual ~diff_report() = default;
    diff_report() = default;
    diff_report(const diff_report&) = delete;
    diff_report& operator=(const diff_report&) = delete;
    virtual void take(const kvrimage::difference& found) = 0;
    /// @param unreadable addresses that were not compared, in order
    virtual void finish(bool equal, const std::vector<kvrimage::address_range>& unreadable) = 0;
};

/// Returns a report without output.
[[nodiscard]] std::unique_ptr<diff_report> make_quiet_report();

/// Returns a report with a line for each difference, in the colors of @p paint, and their count.
[[nodiscard]] std::unique_ptr<diff_report> make_text_report(const diff_side& left, const diff_side& right,
                                                            const word_radix& radix, const painter& paint);

/// Returns a report in the schema "kvrmem-diff-1". Differences are written immediately, since they may exceed
/// the memory.
[[nodiscard]] std::unique_ptr<diff_report> make_json_report(const diff_side& left, const diff_side& right,
                                                            const word_radix& radix);

} // namespace kvrmem
