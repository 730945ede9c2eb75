#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/image/address_range.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace kvrimage {

/// A meaningful piece of a file's text.
struct text_piece {
    /// The kinds of pieces.
    enum class kind : std::uint8_t {
        comment,  ///< with its delimiters
        keyword,  ///< fixed word of the format: the name of a setting, "END"
        setting,  ///< the value of a setting
        address,  ///< in the file's unit
        word,     ///< a word or a part of it
        checksum, ///< of a line
        record    ///< length or type of a record
    };

    kind what = kind::comment; ///< kind of the piece
    span where;                ///< bytes of the piece
    /// For a word: the memory addresses that it sets. For an address: the memory addresses set from there on,
    /// or only the first one if the end is open. Empty if they are unknown or outside the memory.
    std::optional<address_range> addresses = std::nullopt;
    std::uint64_t step = 1; ///< distance of the addresses that a word sets, from the first of `addresses` on
    std::uint64_t in_file = 0; ///< for a piece with addresses: the first one in the file's unit
    bool is_part = false;      ///< the word lacks some of its bytes; another piece may set them
};

/// Receives the pieces of a text in order.
using piece_taker = std::function<void(const text_piece& piece)>;

} // namespace kvrimage
