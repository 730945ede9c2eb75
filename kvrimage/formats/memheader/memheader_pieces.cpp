#include "kvrimage/formats/memheader/memheader_pieces.h"

#include "kvrimage/formats/memheader/memheader_parser.h"
#include "kvrimage/formats/piece_output.h"

namespace kvrimage {

void find_memheader_pieces(std::string_view contents, const read_options& options,
                           const read_result& /*ours*/, const piece_taker& take) {
    const piece_output pieces(take, options.base.value_or(0));
    for_each_memheader_piece(contents, [&pieces](const memheader_piece& piece) {
        using enum memheader_piece::kind;
        if (piece.what == setting) {
            pieces.add(text_piece::kind::keyword, piece.name);
            pieces.add(text_piece::kind::setting, piece.value);
        } else if (piece.what == data) {
            pieces.add(text_piece::kind::keyword, piece.where);
        } else if (piece.what == address) {
            pieces.add(text_piece::kind::address, piece.where, piece.address);
        } else if (piece.what == word) {
            pieces.add(text_piece::kind::word, piece.where, piece.address);
        }
    });
}

} // namespace kvrimage
