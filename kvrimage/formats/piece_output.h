#pragma once

#include "kvrimage/exchange/text_piece.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// Passes on the pieces of a file whose addresses count words, with addresses of the memory. Empty pieces are
/// ignored.
class piece_output {
public:
    /// @param taker kept alive by the caller
    /// @param base_of_file the file address of word 0
    piece_output(const piece_taker& taker, std::uint64_t base_of_file) : take(taker), base(base_of_file) {}

    /// Adds a piece without an address.
    void add(text_piece::kind what, const span& where) const { hand_out({.what = what, .where = where}); }
    /// Adds a piece for the file addresses @p first to @p last, where @p first <= @p last.
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
    /// Adds a piece for one file address, or without an address if that is unknown.
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
