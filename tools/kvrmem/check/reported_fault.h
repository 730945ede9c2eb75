#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "tools/kvrmem/check/check_output.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// A fault as reports for other programs show it.
struct reported_fault {
    std::string_view code;          ///< "too-wide"
    std::string_view documentation; ///< of all faults with that code, one sentence
    std::string_view example;       ///< what a file with it may hold; may be ""
    std::string level;              ///< "error", "error for kvr", "warning"
    bool is_error = true;
    bool is_broken = true; ///< an error for everybody
    std::string summary;   ///< visible, in UTF-8
    std::string message;   ///< the summary, and at how many places it is so
    std::string hint;      ///< visible, in UTF-8; may be ""
    /// What was found in the text of the file; null for what its words are. Valid as long as the checked
    /// file.
    const kvrimage::diagnostic* found = nullptr;

    /// Message and hint.
    [[nodiscard]] std::string sentence() const { return with_hint(message); }
    /// The same, which stays when the number of places changes.
    [[nodiscard]] std::string lasting_sentence() const { return with_hint(summary); }
    /// All that were kept, in file order; the file as a whole is one, place{}.
    [[nodiscard]] std::vector<kvrimage::place> places() const;

private:
    [[nodiscard]] std::string with_hint(const std::string& text) const {
        return hint.empty() ? text : text + "; " + hint;
    }
};

/// All faults of @p file, those of its words last.
[[nodiscard]] std::vector<reported_fault> faults_of(const checked_file& file);

/// The name of @p path in reports: UTF-8, "standard input" for "-".
[[nodiscard]] std::string reported_name(const std::string& path);

/// From where to where a place reaches. Columns count characters, of which each byte that is no UTF-8 is one.
struct text_region {
    std::uint64_t first_line = 1;
    std::uint64_t first_column = 1;
    std::uint64_t last_line = 1;
    std::uint64_t end_column = 1; ///< after the last character
};

/// The region of the @p length bytes from @p offset of @p contents on, of which that is cut off which follows
/// the end. @param line in which it begins
[[nodiscard]] text_region region_of(std::string_view contents, std::uint64_t offset, std::uint64_t length,
                                    std::uint64_t line);

/// The line of @p contents in which the byte at @p offset is, counted from @p known, a place near it.
[[nodiscard]] std::uint64_t line_at(std::string_view contents, std::uint64_t offset,
                                    const kvrimage::place& known);

} // namespace kvrmem
