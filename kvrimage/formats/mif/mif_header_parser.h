#pragma once

#include "kvrimage/formats/mif/mif_tokens.h"

namespace kvrimage {

/// Reads what precedes the statements of a MIF: settings, CONTENT, BEGIN.
class mif_header_parser {
public:
    mif_header_parser(mif_tokens& of, mif_sink& to) : tokens(of), sink(to) {}

    /// Ends before the first statement or END. False when the file ends before there is a CONTENT, BEGIN, or
    /// statement.
    bool read();

private:
    /// A way to write CONTENT or BEGIN, and the right one; "" where it is right.
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

/// The keyword called @p name, in any letter case; nothing for other names.
[[nodiscard]] std::optional<mif_keyword> mif_keyword_of(std::string_view name) noexcept;
/// "WIDTH" and the like.
[[nodiscard]] std::string_view name_of(mif_keyword keyword) noexcept;

} // namespace kvrimage
