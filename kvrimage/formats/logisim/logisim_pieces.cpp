#include "kvrimage/formats/logisim/logisim_pieces.h"

#include "kvrimage/bytes/byte_pieces.h"
#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/formats/logisim/logisim_parser.h"
#include "kvrimage/formats/piece_output.h"
#include "kvrimage/image/word_text.h"

namespace kvrimage {

namespace {

class logisim_piece_finder {
public:
    logisim_piece_finder(const read_options& options, const read_result& ours, const piece_taker& taker)
        : words(taker, options.base.value_or(0)),
          bytes(taker, options.base.value_or(0),
                bytes_of_width(ours.image ? ours.image->width() : options.width.value_or(bits_per_byte))),
          holds_bytes(ours.facts.unit == address_unit::byte) {}

    void take(const logisim_piece& piece) const {
        using enum logisim_piece::kind;
        if (piece.what == header) {
            words.add(text_piece::kind::keyword, piece.where);
        } else if (piece.what == comment) {
            words.add(text_piece::kind::comment, piece.where);
        } else if (piece.what == address) {
            add_address(piece);
        } else if (piece.what == word) {
            add_word(piece);
        }
    }

private:
    /// One that cannot be read is a piece of another kind.
    void add_address(const logisim_piece& piece) const {
        if (holds_bytes) {
            bytes.add_address(piece.where, *piece.address, 1);
        } else {
            words.add(text_piece::kind::address, piece.where, piece.address);
        }
    }
    /// A run of bytes is one piece of the words that it touches.
    void add_word(const logisim_piece& piece) const {
        if (!piece.address) {
            words.add(text_piece::kind::word, piece.where);
        } else if (!holds_bytes) {
            words.add(text_piece::kind::word, piece.where, *piece.address, piece.last_address());
        } else {
            bytes.add_run(piece.where, *piece.address, piece.last_address());
        }
    }

    piece_output words;
    byte_pieces bytes;
    bool holds_bytes;
};

} // namespace

void find_logisim_pieces(std::string_view contents, const read_options& options, const read_result& ours,
                         const piece_taker& take) {
    const logisim_piece_finder finder(options, ours, take);
    for_each_logisim_piece(contents, [&finder](const logisim_piece& piece) { finder.take(piece); });
}

} // namespace kvrimage
