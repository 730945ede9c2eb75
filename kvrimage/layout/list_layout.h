#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/layout/aligned_lines.h"
#include "kvrimage/layout/source_lines.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// Formats a list of words and addresses. Pieces on one line stay on one line, and several blank lines become
/// one. The pieces must come in the order of the file.
class list_layout {
public:
    /// @param contents must outlive this object, as must @p between
    /// @param between separates pieces on one line
    explicit list_layout(std::string_view contents, std::string_view between = " ");

    /// Writes @p text for @p piece. @param begins_line true if the piece always begins a line
    void add(const span& piece, std::string_view text, bool begins_line = false);
    /// Adds a comment after the piece on its line, or on a line of its own. @param goes_to_end true if it
    /// extends to the end of its line
    void add_comment(const span& comment, bool goes_to_end);
    /// Appends to the piece that was added last.
    void append(std::string_view text) { lines.append(text); }
    /// Returns the whole file. May be called once only.
    [[nodiscard]] std::string finish();

private:
    std::string_view contents;
    std::string_view joint;
    source_lines source;
    aligned_lines lines;
};

} // namespace kvrimage
