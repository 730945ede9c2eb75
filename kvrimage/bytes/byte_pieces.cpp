#include "kvrimage/bytes/byte_pieces.h"

#include <algorithm>

namespace kvrimage {

void byte_pieces::add_address(const span& where, std::uint64_t address, std::uint64_t count) const {
    text_piece piece{.what = text_piece::kind::address, .where = where};
    if (address >= base) {
        const std::uint64_t last = address - base + std::max<std::uint64_t>(count, 1) - 1;
        piece.addresses = address_range{(address - base) / word_bytes, last / word_bytes};
        piece.in_file = address;
    }
    take(piece);
}

void byte_pieces::add_data(std::uint64_t address, std::uint64_t count, const byte_spans& span_of) const {
    std::uint64_t done = 0;
    if (address < base) {
        done = std::min(count, base - address);
        take({.what = text_piece::kind::word, .where = span_of(0, done)});
    }
    while (done < count) {
        const std::uint64_t offset = address + done - base;
        const std::uint64_t bytes = std::min(count - done, word_bytes - offset % word_bytes);
        const std::uint64_t word = offset / word_bytes;
        take({.what = text_piece::kind::word,
              .where = span_of(done, bytes),
              .addresses = address_range{word, word},
              .in_file = address + done,
              .is_part = bytes < word_bytes});
        done += bytes;
    }
}

void byte_pieces::add_run(const span& where, std::uint64_t first, std::uint64_t last) const {
    text_piece piece{.what = text_piece::kind::word, .where = where};
    if (first >= base) {
        piece.addresses = address_range{(first - base) / word_bytes, (last - base) / word_bytes};
        piece.in_file = first;
        piece.is_part = word_bytes > 1;
    }
    take(piece);
}

} // namespace kvrimage
