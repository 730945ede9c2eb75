#include "kvrimage/formats/rif/rif_formatter.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/formats/rif/rif_parser.h"
#include "kvrimage/layout/canonical_digits.h"
#include "kvrimage/layout/list_layout.h"

#include <fmt/format.h>

namespace kvrimage {

std::string lay_out_rif(std::string_view contents, const read_options& /*options*/, const read_result& ours) {
    const std::size_t word_digits = canonical_word_digits(radix::hex, ours.image->width());
    list_layout layout(contents, "");
    bool is_after_address = false;
    for_each_rif_piece(contents, [&](const rif_piece& piece) {
        if (piece.what == rif_piece::kind::address) {
            layout.add(piece.where,
                       fmt::format("@{}", kvr::to_lower_case(canonical_number(piece.digits.in(contents), 1))),
                       true);
            is_after_address = true;
        } else if (piece.what == rif_piece::kind::word) {
            layout.add(piece.where, canonical_number(piece.where.in(contents), word_digits) + " ",
                       is_after_address);
            is_after_address = false;
        }
    });
    return layout.finish();
}

} // namespace kvrimage
