#include "kvrimage/formats/coe/coe_pieces.h"

#include "kvrimage/formats/coe/coe_parser.h"
#include "kvrimage/formats/piece_output.h"

namespace kvrimage {

void find_coe_pieces(std::string_view contents, const read_options& options, const read_result& /*ours*/,
                     const piece_taker& take) {
    const piece_output pieces(take, options.base.value_or(0));
    std::uint64_t address = 0;
    for_each_coe_piece(contents, [&](const coe_piece& piece) {
        using enum coe_piece::kind;
        if (piece.what == comment) {
            pieces.add(text_piece::kind::comment, piece.where);
        } else if (piece.what == radix) {
            pieces.add(text_piece::kind::setting, piece.where);
        } else if (piece.what == radix_name || piece.what == vector) {
            pieces.add(text_piece::kind::keyword, piece.where);
        } else if (piece.what == word) {
            pieces.add(text_piece::kind::word, piece.where, address++);
        }
    });
}

} // namespace kvrimage
