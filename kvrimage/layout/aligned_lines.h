#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Builds the lines of a file. Comments at the ends of adjacent lines are aligned in one column.
class aligned_lines {
public:
    /// @param ending line end, "\n" or "\r\n"; must outlive this object
    /// @param longest maximum line length with comments; longer lines get their comment on a line of its own
    explicit aligned_lines(std::string_view ending,
                           std::size_t longest = std::numeric_limits<std::size_t>::max())
        : line_end(ending),
          limit(longest) {}

    /// Inserts a blank line before the next line, unless that is the first one.
    void separate() { is_separated = true; }
    /// Begins a line with text.
    /// @param comment_indent indent of its comments if they do not fit at its end and precede it
    void begin_line(std::string text, std::string_view comment_indent = "");
    /// Appends to the current line; its comments stay at its end. Begins a line if there is none or it has
    /// comments only.
    void append(std::string_view text);
    /// Adds a comment at the end of the current line. Returns false if there is no line, or if its last
    /// comment extends to the end of the line.
    /// @param goes_to_end true if nothing may follow the comment on its line
    [[nodiscard]] bool add_comment(std::string_view comment, bool goes_to_end);
    /// Begins a line that has a comment only.
    void begin_comment_line(std::string_view indent, std::string_view comment, bool goes_to_end);

    /// True if there is a current line and it has text.
    [[nodiscard]] bool has_open_text() const noexcept { return is_open && !current.is_comment; }
    /// Returns the length of the current line without comments.
    [[nodiscard]] std::size_t length() const noexcept { return current.text.size(); }
    /// Returns all lines. May be called once only.
    [[nodiscard]] std::string finish();

private:
    struct line {
        std::string text;
        std::string comment_indent;
        std::string comment; ///< all comments at the end of the line
        bool is_comment = false;
        bool is_complete = false; ///< nothing may follow its comment
        bool is_separated = false;
    };

    void open(line next);
    void close();
    void write_run();
    void write(const line& one, std::size_t column);
    void write_comment(std::string_view indent, std::string_view comment);
    [[nodiscard]] bool fits(const line& one, std::size_t column) const;

    std::string_view line_end;
    std::size_t limit;
    std::string out;
    std::vector<line> run; ///< adjacent lines with comments at their ends
    line current;
    bool is_open = false;
    bool is_separated = false;
};

} // namespace kvrimage
