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

/// One of two memories that are compared.
struct diff_side {
    std::string name; ///< as a terminal may show it
    std::string path; ///< the same, every byte as it is
    kvrimage::read_result result;

    [[nodiscard]] const kvrimage::memory_image& image() const { return result.image.value(); }
};

/// How the sizes of two memories differ: "depth: 16 and 32 words"; "" where they do not. The depth of a file
/// that does not say it is no difference.
[[nodiscard]] std::string difference_in_size(const diff_side& left, const diff_side& right);

/// The schema of all that `diff --json` prints.
inline constexpr const char* diff_schema = "kvrmem-diff-1";

// What reports have in common.

/// "256 x 16 bits"
[[nodiscard]] std::string form_of(const diff_side& side);
/// "--- a.mif (MIF, 256 x 16 bits)", and a line with "+++" for the right one.
[[nodiscard]] std::string diff_heads(const diff_side& left, const diff_side& right, const painter& paint);
/// File, format, width and depth.
[[nodiscard]] json_value side_as_json(const diff_side& side);
/// How many addresses @p ranges have together.
[[nodiscard]] std::uint64_t count_words(const std::vector<kvrimage::address_range>& ranges);

/// What a comparison of two memories prints on the standard output. Reports view the memories that they are
/// made for.
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
