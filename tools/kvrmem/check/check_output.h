#pragma once

#include "kvrimage/formats/format.h"
#include "tools/kvrmem/files/broken_file.h"
#include "tools/kvrmem/files/check_report.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/protection_report.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem {

/// The results for a file.
struct checked_file {
    memory_input input;
    std::optional<protection_result> protection; ///< with --ecc, for a readable file

    [[nodiscard]] std::uint64_t wrong_words() const { return protection ? protection->wrong() : 0; }
};

/// The results for all files of a run.
struct check_totals {
    diagnostic_counts found;
    std::uint64_t wrong_words = 0;          ///< words that contradict their check bits
    std::uint64_t files = 0;                ///< that could be checked
    std::uint64_t faulty = 0;               ///< of these, with diagnostics
    std::uint64_t refused = 0;              ///< that could not be checked
    exit_code refusal = exit_code::success; ///< the most severe reason why a file could not be checked

    void add(const checked_file& file) {
        const diagnostic_counts of_file(file.input.result);
        found.add(of_file);
        wrong_words += file.wrong_words();
        ++files;
        faulty += of_file.none() && file.wrong_words() == 0 ? 0U : 1U;
        if (std::ranges::any_of(file.input.result.diagnostics, is_wrong_usage)) {
            refusal = std::max(refusal, exit_code::wrong_usage);
        }
    }
    void refuse(exit_code reason) {
        ++refused;
        refusal = std::max(refusal, reason);
    }
    [[nodiscard]] exit_code verdict(bool strict) const {
        return std::max(refusal,
                        found.fail(strict) || wrong_words != 0 ? exit_code::negative : exit_code::success);
    }
    /// Returns "1 error, 2 words with wrong bits".
    [[nodiscard]] std::string faults() const;
};

/// Receives the results.
class check_output {
public:
    virtual ~check_output() = default;
    check_output() = default;
    check_output(const check_output&) = delete;
    check_output& operator=(const check_output&) = delete;

    /// Returns how many diagnostics of a class to keep.
    [[nodiscard]] virtual std::size_t most_diagnostics() const = 0;
    virtual void take(const checked_file& file) = 0;
    virtual void report_refused(const std::string& path, std::string_view reason) = 0;
    virtual void finish(const check_totals& totals) = 0;
};

/// Returns a line about the results for the files that could be checked. @p only is the name of the only
/// file, or "" for several.
[[nodiscard]] std::string summary_of(const check_totals& totals, const std::string& only);

} // namespace kvrmem
