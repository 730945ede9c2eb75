#include "kvrimage/formats/readmem/readmem_pieces.h"

#include "kvrimage/formats/piece_output.h"
#include "kvrimage/formats/readmem/readmem_addresses.h"
#include "kvrimage/formats/readmem/readmem_parser.h"

namespace kvrimage {

namespace {

bool is_readmem_comment(const readmem_piece& piece) {
    using enum readmem_piece::kind;
    return piece.what == line_comment || piece.what == block_comment || piece.what == open_comment ||
           piece.what == other_comment;
}

void find_readmem_pieces(std::string_view contents, const read_options& options, const piece_taker& take,
                         radix digits_radix) {
    const std::uint64_t unit = readmem_unit_bytes(contents, options, digits_radix);
    const piece_output pieces(take, options.base.value_or(0) / unit);
    readmem_addresses addresses(unit);
    for_each_readmem_piece(contents, digits_radix, [&](const readmem_piece& piece) {
        if (is_readmem_comment(piece)) {
            pieces.add(text_piece::kind::comment, piece.where);
        } else if (piece.what == readmem_piece::kind::address) {
            addresses.take(piece);
            pieces.add(text_piece::kind::address, piece.where, addresses.peek());
        } else if (piece.what == readmem_piece::kind::word) {
            pieces.add(text_piece::kind::word, piece.where, addresses.peek());
            addresses.advance();
        }
    });
}

} // namespace

void find_readmemh_pieces(std::string_view contents, const read_options& options, const read_result& /*ours*/,
                          const piece_taker& take) {
    find_readmem_pieces(contents, options, take, radix::hex);
}

void find_readmemb_pieces(std::string_view contents, const read_options& options, const read_result& /*ours*/,
                          const piece_taker& take) {
    find_readmem_pieces(contents, options, take, radix::bin);
}

} // namespace kvrimage
