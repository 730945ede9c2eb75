#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/layout/aligned_lines.h"
#include "kvrimage/layout/source_lines.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// Lays out a list of words and addresses: what shares a line goes on to do so, and of blank lines one is
/// left. The pieces come in the order of the file.
class list_layout {
public:
    /// @param contents kept alive by the caller, as is @p between
    /// @param between what shares a line
    explicit list_layout(std::string_view contents, std::string_view between = " ");

    /// Writes @p text for @p piece. @param begins_line it never shares a line with what comes before it
    void add(const span& piece, std::string_view text, bool begins_line = false);
    /// A comment that follows what shares its line, or has a line of its own. @param goes_to_end it ends with
    /// its line
    void add_comment(const span& comment, bool goes_to_end);
    /// More for the piece that was added last.
    void append(std::string_view text) { lines.append(text); }
    /// The whole file; once.
    [[nodiscard]] std::string finish();

private:
    std::string_view contents;
    std::string_view joint;
    source_lines source;
    aligned_lines lines;
};

} // namespace kvrimage
