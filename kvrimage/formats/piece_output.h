#pragma once

#include "kvrimage/formats/text_piece.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// Hands out the pieces of a file whose addresses count words, by the addresses of the memory. What is empty
/// is no piece.
class piece_output {
public:
    /// @param taker kept alive by the caller
    /// @param base_of_file the address of the file that is that of word 0
    piece_output(const piece_taker& taker, std::uint64_t base_of_file) : take(taker), base(base_of_file) {}

    /// A piece that is of no address.
    void add(text_piece::kind what, const span& where) const { hand_out({.what = what, .where = where}); }
    /// A piece of the addresses @p first to @p last, which is not below it, as the file counts them.
    void add(text_piece::kind what, const span& where, std::uint64_t first, std::uint64_t last,
             std::uint64_t step = 1) const {
        text_piece piece{.what = what, .where = where};
        if (first >= base) {
            piece.addresses = address_range{first - base, last - base};
            piece.in_file = first;
            piece.step = first != last ? step : 1;
        }
        hand_out(piece);
    }
    /// A piece of one address; nothing: it is not known.
    void add(text_piece::kind what, const span& where, const std::optional<std::uint64_t>& address) const {
        address ? add(what, where, *address, *address) : add(what, where);
    }

private:
    void hand_out(const text_piece& piece) const {
        if (piece.where.length != 0) {
            take(piece);
        }
    }

    const piece_taker& take;
    std::uint64_t base;
};

} // namespace kvrimage
