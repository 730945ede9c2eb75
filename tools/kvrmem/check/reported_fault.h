#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "tools/kvrmem/check/check_output.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// A fault as reported to other programs.
struct reported_fault {
    std::string_view code;          ///< for example "too-wide"
    std::string_view documentation; ///< one sentence about all faults with that code
    std::string_view example;       ///< contents that cause it; may be ""
    std::string level;              ///< "error", "error for kvr" or "warning"
    bool is_error = true;
    bool is_broken = true; ///< an error for all consumers
    std::string summary;   ///< escaped UTF-8
    std::string message;   ///< the summary and the number of places
    std::string hint;      ///< escaped UTF-8; may be ""
    /// The diagnostic of the file's text; null for faults of its words. Valid as long as the checked file.
    const kvrimage::diagnostic* found = nullptr;

    /// Returns message and hint.
    [[nodiscard]] std::string sentence() const { return with_hint(message); }
    /// Returns summary and hint, which do not depend on the number of places.
    [[nodiscard]] std::string lasting_sentence() const { return with_hint(summary); }
    /// Returns the places kept, in file order; place{} for the whole file.
    [[nodiscard]] std::vector<kvrimage::place> places() const;

private:
    [[nodiscard]] std::string with_hint(const std::string& text) const {
        return hint.empty() ? text : text + "; " + hint;
    }
};

/// Returns all faults of @p file, those of its words last.
[[nodiscard]] std::vector<reported_fault> faults_of(const checked_file& file);

/// Returns the name of @p path for reports: UTF-8, "standard input" for "-".
[[nodiscard]] std::string reported_name(const std::string& path);

/// The region of a place. Columns count characters; each invalid byte counts as one.
struct text_region {
    std::uint64_t first_line = 1;
    std::uint64_t first_column = 1;
    std::uint64_t last_line = 1;
    std::uint64_t end_column = 1; ///< after the last character
};

/// Returns the region of the @p length bytes from @p offset of @p contents on, cut at the end. @param line
/// line of @p offset
[[nodiscard]] text_region region_of(std::string_view contents, std::uint64_t offset, std::uint64_t length,
                                    std::uint64_t line);

/// Returns the line of the byte at @p offset of @p contents, counted from the nearby place @p known.
[[nodiscard]] std::uint64_t line_at(std::string_view contents, std::uint64_t offset,
                                    const kvrimage::place& known);

} // namespace kvrmem
