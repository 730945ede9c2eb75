#pragma once

#include "kvrimage/formats/mif/mif_tokens.h"

namespace kvrimage {

/// Parses the part of a MIF before the statements: settings, CONTENT, BEGIN.
class mif_header_parser {
public:
    mif_header_parser(mif_tokens& of, mif_sink& to) : tokens(of), sink(to) {}

    /// Parses up to the first statement or END. Returns false if the file ends before CONTENT, BEGIN or a
    /// statement.
    bool read();

private:
    /// A spelling of CONTENT or BEGIN and its correction; "" if it is correct.
    struct spelling {
        span where;
        std::string_view meant;
    };

    bool read_one();
    void parse_setting(mif_keyword keyword);
    void parse_glued_setting(mif_keyword keyword, std::size_t name_length);
    void find_missing_equals(const mif_setting& found);
    void find_end_of_setting(mif_setting& found);
    void parse_unknown();
    void find_header_text(const mif_token& first, std::uint64_t end);
    [[nodiscard]] bool ends_after_word();
    void parse_semicolons();
    [[nodiscard]] spelling keyword_with_blanks();
    void parse_content(const spelling& found);
    void begin(const span& keyword);
    void parse_begin();
    void parse_begin_with_blanks(const span& where);
    void find_begin(const span& content);
    [[nodiscard]] bool is_statement_ahead();

    mif_tokens& tokens;
    mif_sink& sink;
};

/// Returns the keyword with this name, ignoring letter case.
[[nodiscard]] std::optional<mif_keyword> mif_keyword_of(std::string_view name) noexcept;
/// Returns the name of a keyword, such as "WIDTH".
[[nodiscard]] std::string_view name_of(mif_keyword keyword) noexcept;

} // namespace kvrimage
