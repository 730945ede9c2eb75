#pragma once

#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/diagnostics/places.h"
#include "kvrimage/formats/format.h"
#include "kvrimage/formats/readmem/readmem_parser.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Gathers what is wrong with the pieces of a list of words, one cause in one diagnostic.
class readmem_findings {
public:
    /// @p contents are kept alive by the caller
    readmem_findings(std::string_view contents, const read_options& options, radix digits_radix);

    /// Notes what the piece itself shows.
    void take(const readmem_piece& piece);
    /// A word whose prefix is none of its digits, or may be.
    void add_prefix(const readmem_piece& word, bool may_be_digits);
    /// An address, as the file has it, that is within a word.
    void add_within_word(const readmem_piece& address);
    /// A word after the highest address of all.
    void add_beyond_all(const span& word) { beyond_all.add(word); }

    [[nodiscard]] bool has_comments() const noexcept { return any_comments; }
    /// Words and other pieces that cannot be read.
    [[nodiscard]] std::uint64_t unreadable() const noexcept { return faults; }

    /// Reports all. @param unit_bytes that the addresses count for a word
    void report(diagnostic_list& list, std::uint64_t unit_bytes) const;

private:
    struct cause {
        places where;
        span first; ///< the text that the message quotes
        std::vector<text_edit> edits;
        bool is_complete = true; ///< each place has its edits
    };

    void on_word(const readmem_piece& word);
    void on_underscores(const span& word);
    void on_address(const readmem_piece& address);
    void add(cause& to, const span& where, std::vector<text_edit> edits = {}) const;
    static void add_repairable(diagnostic_list& list, const cause& of, diagnostic shown,
                               std::string_view repair);
    void report_characters(diagnostic_list& list) const;
    void report_words(diagnostic_list& list) const;
    void report_comments(diagnostic_list& list) const;
    void report_addresses(diagnostic_list& list, std::uint64_t unit_bytes) const;

    std::string_view text;
    bool wants_edits;
    radix digits_are;
    bool any_comments = false;
    std::uint64_t faults = 0;

    cause mark;
    cause separators;
    cause hash_comments;
    cause dash_comments;
    cause open_comment;
    cause prefixes;
    cause doubtful_prefixes;
    cause underscores;
    cause high_impedance;
    cause stray;
    std::map<char, cause> bad_digits; ///< by the digit; the first text is the word
    cause misspelled;                 ///< addresses
    cause bad_addresses;
    cause outside;
    cause within_word;
    places beyond_all;
};

} // namespace kvrimage
