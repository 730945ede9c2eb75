#pragma once

#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/diagnostics/places.h"
#include "kvrimage/formats/format.h"
#include "kvrimage/formats/rif/rif_parser.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace kvrimage {

/// The places of one cause and what repairs them.
struct rif_repair {
    places where;
    std::vector<text_edit> edits; ///< in order
    bool is_complete = true;      ///< false: some edits were left out, since nobody wants them
};

/// Finds what is wrong with the pieces of a RIF file, whatever its words are.
class rif_diagnostics {
public:
    /// All are kept alive by the caller.
    rif_diagnostics(std::string_view contents, const read_options& options, diagnostic_list& found);

    void take(const rif_piece& piece);
    /// For words that were read in another way and have no fault.
    void count_regular_words(std::uint64_t number) noexcept { words += number; }
    /// Adds what is known when the file has ended.
    void finish();

    [[nodiscard]] bool has_comments() const noexcept { return !comments.where.empty(); }

private:
    /// The words and addresses of a line, as far as they were seen.
    struct line_state {
        bool has_item = false;
        bool ends_with_address = false; ///< one that can be read
        span latest_address;
        std::uint64_t blanks_begin = 0; ///< of the blanks directly before the next item
    };
    using grouped_places = std::map<std::string, places, std::less<>>;
    using diagnose_text = diagnostic (*)(const places& where, std::string_view text);

    void on_item(const rif_piece& piece);
    void on_word(const rif_piece& piece);
    void on_address(const rif_piece& piece);
    void on_tabs(const span& where);
    void add_illegal(const span& where);
    void add_edit(rif_repair& cause, text_edit edit) const;
    void add_not_alone(const rif_piece& piece);
    void add_grouped(grouped_places& groups, const span& where, diagnose_text diagnose) const;
    void add_repair(const rif_repair& cause, diagnostic shown, std::string_view repair) const;
    void finish_prefixes();

    std::string_view text;
    bool wants_edits;
    std::size_t most_groups;
    diagnostic_list& list;

    line_state line;
    std::uint64_t words = 0;
    span latest_not_alone;
    std::uint64_t tab_line_end = 0; ///< of the line that was looked at last for a tab
    bool tab_line_has_address = false;

    grouped_places illegal;
    grouped_places bad_addresses;
    places unknown_digits; ///< the words with "U"
    span first_unknown_word;
    places outside;
    span first_outside;
    rif_repair comments;
    rif_repair spellings;
    std::string first_spelling; ///< as it should be
    rif_repair not_alone;
    rif_repair prefixes;
    rif_repair tabs;
    rif_repair carriage_returns;
};

/// The line end that new lines of @p text get: that of its first line.
[[nodiscard]] std::string_view rif_line_end(std::string_view text);

} // namespace kvrimage
