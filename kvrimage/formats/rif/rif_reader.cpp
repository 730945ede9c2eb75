#include "kvrimage/formats/rif/rif_reader.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/exchange/line_place.h"
#include "kvrimage/formats/fast_word_lines.h"
#include "kvrimage/formats/foreign_content.h"
#include "kvrimage/formats/rif/rif_diagnostics.h"
#include "kvrimage/formats/rif/rif_format.h"
#include "kvrimage/formats/rif/rif_parser.h"
#include "kvrimage/formats/rif/rif_search.h"
#include "kvrimage/formats/rif/rif_sniff.h"
#include "kvrimage/formats/word_list.h"

#include <utility>

namespace kvrimage {

namespace {

class rif_reading final : public rif_sink {
public:
    rif_reading(std::string_view contents, const read_options& given)
        : text(contents),
          options(given),
          list(given.most_diagnostics),
          diagnostics(contents, options, list),
          parser(contents, *this),
          words(contents, options, radix::hex, {},
                {.may_begin_high = true, .first_line = [contents](std::uint64_t address) {
                     return line_place(contents, *first_rif_word(contents, address)).line;
                 }}) {}

    read_result read() {
        while (!parser.at_end()) {
            if (!read_fast_line()) {
                parser.parse_line();
            }
        }
        report();
        if (list.has_broken() && is_hardly_rif(text.substr(0, sniffed_bytes))) {
            if (auto foreign = foreign_content(text, &rif_format, certainty::certain)) {
                return only_finding(rif_format, text, *std::move(foreign));
            }
        }
        read_result result;
        result.facts.as = &rif_format;
        result.facts.has_comments = diagnostics.has_comments();
        words.finish(list, result);
        result.facts.diagnostics_left_out = list.left_out();
        result.diagnostics = list.finish(text);
        return result;
    }

    void take(const rif_piece& piece) override {
        diagnostics.take(piece);
        if (piece.what == rif_piece::kind::word && piece.address != no_rif_address) {
            read_word(piece);
        }
    }

private:
    /// Returns false and changes nothing if the current line is not regular.
    bool read_fast_line() {
        const fast_word_line line = find_fast_word_line(text, parser.position());
        const std::uint64_t address = line.is_address ? line.address : parser.next_address();
        if (line.end == 0 || address > deepest_memory - line.count) {
            return false;
        }
        if (line.count != 0) {
            add_words(address, line);
            diagnostics.count_regular_words(line.count);
        }
        parser.skip_to(line.end, address + line.count);
        return true;
    }

    void add_words(std::uint64_t address, const fast_word_line& line) {
        if (words.add_spaced(address, {line.words, line.length, line.count, line.has_lower_case})) {
            return;
        }
        const auto first_word = static_cast<std::uint64_t>(line.words - text.data());
        for (std::size_t index = 0; index < line.count; ++index) {
            words.add(address + index, line[index], {first_word + index * (line.length + 1), line.length});
        }
    }

    void read_word(const rif_piece& piece) {
        if (piece.address > highest_rif_address) {
            beyond_all.add(piece.where);
        } else if (piece.fault.length != 0) {
            words.add_unreadable(piece.address, piece.where);
        } else {
            words.add(piece.address, piece.where.in(text), piece.where);
        }
    }

    void report() {
        diagnostics.finish();
        if (!beyond_all.empty()) {
            list.add(diagnose::address_outside(beyond_all, "100000000", highest_rif_address_text));
        }
    }

    std::string_view text;
    read_options options;
    diagnostic_list list;
    rif_diagnostics diagnostics;
    rif_parser parser;
    word_list words;
    places beyond_all;
};

} // namespace

read_result read_rif(std::string_view contents, const read_options& options) {
    return rif_reading(contents, options).read();
}

} // namespace kvrimage
