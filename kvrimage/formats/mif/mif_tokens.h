#pragma once

#include "kvr/util/letter_case.h"
#include "kvrimage/formats/mif/mif_parser.h"

namespace kvrimage {

/// The longest line that the library kvr reads, without its line end.
inline constexpr std::size_t longest_kvr_line = 511;

struct mif_token {
    enum class kind : std::uint8_t { word, equals, semicolon, colon, open, close, comma, dots, end };

    kind what = kind::end;
    span at;
    bool starts_line = false;   ///< only blanks and comments precede it on its line
    bool after_comment = false; ///< a "%" precedes it on its line
    bool is_glued = false;      ///< only line ends and comments separate it from the previous word

    [[nodiscard]] bool is(kind one) const noexcept { return what == one; }
};

/// The current section of the file. It determines how comments are recognized.
enum class mif_section : std::uint8_t { header, content, after_end };

/// Splits a MIF into tokens and passes its comments to the sink.
class mif_tokens {
public:
    mif_tokens(std::string_view contents, mif_sink& comments_and_findings)
        : text(contents),
          sink(comments_and_findings) {}

    /// A position between two tokens.
    struct cursor {
        std::size_t at = 0;
        std::size_t line_begin = 0;
        bool percent_in_line = false;
        bool token_in_line = false;
        bool separated = true; ///< since the last token
        bool after_word = false;
    };

    /// Returns the next token without consuming it.
    const mif_token& peek();
    mif_token take();
    [[nodiscard]] const cursor& place() const noexcept { return has_ahead ? before_ahead : here; }
    void go_back_to(const cursor& earlier);
    /// Skips the rest of the line, up to and including its first ";". Returns the skipped text without
    /// trailing blanks.
    span skip_statement();

    /// Returns the start of the current line if no token of it was consumed; else nothing.
    [[nodiscard]] std::optional<std::size_t> line_without_tokens();
    /// Returns the start of the line of the last token, consumed or not.
    [[nodiscard]] std::size_t line() const noexcept { return here.line_begin; }
    /// Skips the first @p bytes bytes of the file.
    void skip_mark(std::size_t bytes) { here.at = bytes; }
    /// Skips whole lines from the current position on.
    void skip_lines(std::size_t bytes);

    void enter(mif_section next) { section = next; }
    [[nodiscard]] std::string_view contents() const noexcept { return text; }
    [[nodiscard]] std::string_view in(const span& where) const { return where.in(text); }
    /// Returns whether a line ends between the two offsets.
    [[nodiscard]] bool has_line_end(std::uint64_t from, std::uint64_t to) const;

private:
    void skip_blanks();
    void measure_line(std::size_t end);
    [[nodiscard]] std::optional<text_edit> shortened(const span& line) const;
    [[nodiscard]] std::optional<text_edit> statement_in_lines(const span& line) const;
    [[nodiscard]] std::optional<text_edit> comment_in_lines(const span& line) const;
    [[nodiscard]] std::size_t other_comment_mark() const;
    void skip_line_end();
    void skip_percent_comment();
    void skip_comment_of_lines(std::size_t close);
    void take_comment(std::size_t end);
    void find_once(mif_syntax what, const span& where, std::optional<text_edit> repair = {});
    [[nodiscard]] std::size_t end_of_line(std::size_t from) const;
    [[nodiscard]] std::size_t end_of_word(std::size_t from) const;
    [[nodiscard]] bool is_read_by_kvr(std::string_view line) const;
    mif_token read();

    std::string_view text;
    mif_sink& sink;
    mif_section section = mif_section::header;
    cursor here;
    std::size_t reported = 0;       ///< comments that begin before this offset were reported
    std::size_t measured_lines = 0; ///< lines that begin before this offset were measured
    span latest_lines;              ///< the last comment of several lines
    mif_token ahead;
    cursor before_ahead;
    bool has_ahead = false;
};

[[nodiscard]] inline text_edit insertion_at(std::uint64_t offset, std::string text) {
    return {offset, 0, std::move(text)};
}

/// Returns whether @p line begins like a statement, a setting, or the content: "0 :", "[", "WIDTH",
/// "CONTENT", "END".
[[nodiscard]] bool looks_like_mif(std::string_view line);

/// Returns whether the library interprets the header line @p line, even if it is not a setting.
[[nodiscard]] bool is_read_as_header(std::string_view line);

} // namespace kvrimage
