#include "kvrimage/formats/logisim/logisim_formatter.h"

#include "kvrimage/formats/logisim/logisim_parser.h"
#include "kvrimage/layout/canonical_digits.h"
#include "kvrimage/layout/list_layout.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrimage {

namespace {

/// Returns the digits of the largest address of a word or in the file.
std::size_t address_digits_of_logisim(std::string_view contents) {
    std::uint64_t largest = 0;
    for_each_logisim_piece(contents, [&largest](const logisim_piece& piece) {
        if (piece.what == logisim_piece::kind::word) {
            largest = std::max(largest, piece.last_address());
        } else if (piece.what == logisim_piece::kind::address) {
            largest = std::max(largest, *piece.address);
        }
    });
    return fmt::formatted_size("{:x}", largest);
}

/// Returns the text of a word, or of a run of a word.
std::string logisim_word(const logisim_piece& piece, std::string_view contents, std::size_t digits) {
    const std::string word = canonical_number(piece.digits.in(contents), digits);
    return piece.digits.length == piece.where.length ? word : fmt::format("{}*{}", piece.count, word);
}

} // namespace

std::string lay_out_logisim(std::string_view contents, const read_options& /*options*/,
                            const read_result& ours) {
    using kind = logisim_piece::kind;
    const bool holds_bytes = ours.facts.unit == address_unit::byte;
    const std::size_t word_digits = holds_bytes ? 2 : canonical_word_digits(radix::hex, ours.image->width());
    const std::size_t address_digits = address_digits_of_logisim(contents);
    list_layout layout(contents);
    for_each_logisim_piece(contents, [&](const logisim_piece& piece) {
        if (piece.what == kind::header) {
            layout.add(piece.where, logisim_variant_of(piece.where.in(contents))->line, true);
        } else if (piece.what == kind::comment) {
            layout.add_comment(piece.where, true);
        } else if (piece.what == kind::address) {
            layout.add(piece.where, fmt::format("{:0{}x}:", *piece.address, address_digits), true);
        } else {
            layout.add(piece.where, logisim_word(piece, contents, word_digits));
        }
    });
    return layout.finish();
}

} // namespace kvrimage
