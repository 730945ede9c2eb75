#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Makes the lines of a file. The comments at the ends of neighbouring lines stand in one column.
class aligned_lines {
public:
    /// @param ending of each line, "\n" or "\r\n"; kept alive by the caller
    /// @param longest characters that a line may have where a comment would make it longer
    explicit aligned_lines(std::string_view ending,
                           std::size_t longest = std::numeric_limits<std::size_t>::max())
        : line_end(ending),
          limit(longest) {}

    /// Puts a blank line before the next line, unless it is the first one.
    void separate() { is_separated = true; }
    /// A line that says something.
    /// @param comment_indent of its comments where they have no room at its end, and come before it
    void begin_line(std::string text, std::string_view comment_indent = "");
    /// Goes on with the line at hand; its comments stay at its end. A line begins where there is none, or
    /// nothing but comments.
    void append(std::string_view text);
    /// Adds a comment at the end of the line at hand. False when there is none, or its comments go on to its
    /// end.
    /// @param goes_to_end nothing may follow it on its line
    [[nodiscard]] bool add_comment(std::string_view comment, bool goes_to_end);
    /// A line with nothing but a comment.
    void begin_comment_line(std::string_view indent, std::string_view comment, bool goes_to_end);

    /// True when the line at hand is there, and says something.
    [[nodiscard]] bool has_open_text() const noexcept { return is_open && !current.is_comment; }
    /// Characters of the line at hand, comments aside.
    [[nodiscard]] std::size_t length() const noexcept { return current.text.size(); }
    /// All lines; once.
    [[nodiscard]] std::string finish();

private:
    struct line {
        std::string text;
        std::string comment_indent;
        std::string comment; ///< of all that are at its end
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
    std::vector<line> run; ///< neighbouring lines with comments at their ends
    line current;
    bool is_open = false;
    bool is_separated = false;
};

} // namespace kvrimage
