#include "kvrimage/formats/titxt/titxt_pieces.h"

#include "kvrimage/bytes/byte_pieces.h"
#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/formats/piece_output.h"
#include "kvrimage/formats/titxt/titxt_parser.h"
#include "kvrimage/image/word_text.h"

namespace kvrimage {

void find_titxt_pieces(std::string_view contents, const read_options& options, const read_result& ours,
                       const piece_taker& take) {
    const piece_output plain(take, 0);
    const byte_pieces bytes(
        take, options.base.value_or(0),
        bytes_of_width(ours.image ? ours.image->width() : options.width.value_or(bits_per_byte)));
    titxt_address addresses;
    for (titxt_parser parser(contents); parser.next();) {
        const titxt_piece& piece = parser.piece();
        const auto address = addresses.take(piece);
        if (piece.what == titxt_piece::kind::address) {
            bytes.add_address(piece.where, piece.address, 1);
        } else if (piece.what == titxt_piece::kind::end) {
            plain.add(text_piece::kind::keyword, piece.where);
        } else if (piece.what == titxt_piece::kind::bytes && address) {
            bytes.add_data(*address, piece.bytes.size(), [&](std::uint64_t first, std::uint64_t count) {
                const span begin = span_of_titxt_byte(contents, piece, first);
                return span{begin.offset,
                            span_of_titxt_byte(contents, piece, first + count - 1).end() - begin.offset};
            });
        }
    }
}

} // namespace kvrimage
