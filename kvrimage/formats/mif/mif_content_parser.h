#pragma once

#include "kvrimage/formats/mif/mif_tokens.h"

namespace kvrimage {

/// Reads the statements of a MIF, END, and what follows it.
class mif_content_parser {
public:
    mif_content_parser(mif_tokens& of, mif_sink& to) : tokens(of), sink(to) {}

    void read();

private:
    /// What the line at hand has had so far.
    enum class before : std::uint8_t { begin, statement };

    bool read_one();
    void read_regular_lines();
    void parse_semicolon();
    void parse_left_out();
    void parse_stray();
    void parse_without_address();
    void find_missing_end();
    void parse_statement();
    void parse_end();
    void parse_after_end();

    // The parts of a statement. False when it ends with the part.
    bool parse_address();
    bool parse_range();
    void parse_range_without_brackets();
    bool find_misspelt_range(const std::vector<span>& words, bool has_separator);
    bool parse_colon();
    void parse_values();
    bool parse_value_or_end();
    bool begins_another_statement();
    [[nodiscard]] std::uint64_t last_line_begin(std::uint64_t begin, std::uint64_t end) const;
    void end_without_semicolon(std::uint64_t next);
    void give_up();

    mif_token take();
    void find_line_faults(const mif_token& first);
    void find(mif_syntax what, const span& where, std::optional<text_edit> repair = {},
              std::string instead = {});
    void find_in_statement(mif_syntax what, const span& where, std::optional<text_edit> repair = {},
                           std::string instead = {});

    mif_tokens& tokens;
    mif_sink& sink;
    mif_statement statement;
    std::vector<mif_tokens::cursor> value_places; ///< before each of the values
    std::vector<span> glued;                      ///< values that go on with one of the line before
    std::uint64_t last_end = 0;                   ///< of the token taken last
    bool last_starts_line = false;                ///< that of the value taken last
    before line_has = before::begin;
    std::size_t line_with_comment = static_cast<std::size_t>(-1); ///< whose text after a comment was found
    std::uint32_t lines_alone = 0; ///< so many more statements are read before regular lines are tried
    std::uint32_t next_alone = 1;
};

} // namespace kvrimage
