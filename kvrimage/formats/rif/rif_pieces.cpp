#include "kvrimage/formats/rif/rif_pieces.h"

#include "kvrimage/formats/piece_output.h"
#include "kvrimage/formats/rif/rif_parser.h"

namespace kvrimage {

namespace {

/// Returns nothing for an unreadable address.
std::optional<std::uint64_t> known_address(const rif_piece& piece) {
    return piece.address != no_rif_address ? std::optional(piece.address) : std::nullopt;
}

} // namespace

void find_rif_pieces(std::string_view contents, const read_options& options, const read_result& /*ours*/,
                     const piece_taker& take) {
    const piece_output pieces(take, options.base.value_or(0));
    for_each_rif_piece(contents, [&pieces](const rif_piece& piece) {
        if (piece.what == rif_piece::kind::comment) {
            pieces.add(text_piece::kind::comment, piece.where);
        } else if (piece.what == rif_piece::kind::address) {
            pieces.add(text_piece::kind::address, piece.where, known_address(piece));
        } else if (piece.what == rif_piece::kind::word) {
            pieces.add(text_piece::kind::word, piece.where, known_address(piece));
        }
    });
}

} // namespace kvrimage
