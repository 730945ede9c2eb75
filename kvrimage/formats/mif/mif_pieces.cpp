#include "kvrimage/formats/mif/mif_pieces.h"

#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/formats/mif/mif_header.h"
#include "kvrimage/formats/mif/mif_numbers.h"
#include "kvrimage/formats/mif/mif_parser.h"
#include "kvrimage/formats/mif/mif_words.h"
#include "kvrimage/formats/piece_output.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvrimage {

namespace {

class mif_piece_finder : public mif_sink {
public:
    mif_piece_finder(std::string_view contents, std::uint64_t base, const piece_taker& take)
        : text(contents),
          pieces(take, base),
          header(contents) {}

    /// A comment within a statement is passed on before it.
    void comment(const span& whole) override { comments.push_back(whole); }
    void setting(const mif_setting& found) override {
        header.take(found, ignored);
        add(text_piece::kind::keyword, found.name);
        add(text_piece::kind::setting, found.value);
    }
    void content(const span& keyword) override { add(text_piece::kind::keyword, keyword); }
    void begin(const span& keyword) override { add(text_piece::kind::keyword, keyword); }
    void end(const span& keyword, const span& /*semicolon*/) override {
        add(text_piece::kind::keyword, keyword);
    }
    void statement(const mif_statement& found) override {
        const mif_number_form form{header.radix_of(mif_keyword::address_radix), radix::hex, deepest_mif};
        const mif_addresses addresses = addresses_of(found, text, form);
        if (!found.sound || addresses.what != mif_addresses::fault::none) {
            add_unknown(found);
        } else {
            add_known(found, addresses);
        }
    }

    /// Passes on the remaining comments.
    void finish() { add_comments_before(text.size()); }

private:
    void add(text_piece::kind what, const span& where) {
        add_comments_before(where.offset);
        pieces.add(what, where);
    }
    void add(text_piece::kind what, const span& where, const address_range& addresses, std::uint64_t step) {
        add_comments_before(where.offset);
        pieces.add(what, where, addresses.first, addresses.last, step);
    }
    void add_comments_before(std::uint64_t offset) {
        for (; handed_out < comments.size() && comments[handed_out].offset < offset; ++handed_out) {
            pieces.add(text_piece::kind::comment, comments[handed_out]);
        }
    }
    void add_unknown(const mif_statement& found) {
        add(text_piece::kind::address, found.first);
        add(text_piece::kind::address, found.last);
        for (const span& value : found.values) {
            add(text_piece::kind::word, value);
        }
    }
    void add_known(const mif_statement& found, const mif_addresses& addresses) {
        add(text_piece::kind::address, found.first, {addresses.first, addresses.last}, 1);
        if (found.is_range()) {
            add(text_piece::kind::address, found.last, {addresses.first, addresses.last}, 1);
        }
        const std::uint64_t period = found.values.size();
        for (std::uint64_t index = 0; index < period; ++index) {
            const span& value = found.values[index];
            const std::uint64_t first = addresses.first + index;
            if (first > addresses.last) {
                add(text_piece::kind::word, value);
            } else {
                const std::uint64_t steps = (addresses.last - first) / period;
                add(text_piece::kind::word, value, {first, first + steps * period}, period);
            }
        }
    }

    std::string_view text;
    piece_output pieces;
    mif_header header;
    std::vector<span> comments;
    std::size_t handed_out = 0; ///< number of comments passed on
    diagnostic_list ignored{0};
};

} // namespace

void find_mif_pieces(std::string_view contents, const read_options& options, const read_result& /*ours*/,
                     const piece_taker& take) {
    mif_piece_finder finder(contents, options.base.value_or(0), take);
    parse_mif(contents, finder);
    finder.finish();
}

} // namespace kvrimage
