#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/image/address_range.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace kvrimage {

/// A piece of the text of a file that means something.
struct text_piece {
    /// What it is.
    enum class kind : std::uint8_t {
        comment,  ///< with its marks
        keyword,  ///< what gives the file its form: the name of a setting, "END"
        setting,  ///< the value of a setting
        address,  ///< an address, as the file counts
        word,     ///< a word, or a part of one
        checksum, ///< of a line
        record    ///< the length or the type of a record
    };

    kind what = kind::comment; ///< what it is
    span where;                ///< its bytes
    /// Of a word: the addresses of the memory that it sets. Of an address: those that are set from there on
    /// by what it belongs to, only the first one where that is open. Nothing where they are not known, or are
    /// not in the memory.
    std::optional<address_range> addresses = std::nullopt;
    std::uint64_t step = 1;    ///< a word sets the first of `addresses`, and every one so many after it
    std::uint64_t in_file = 0; ///< of a piece with addresses: the first one, as the file counts
    bool is_part = false; ///< a word of which another piece may set the rest: it has not all of its bytes
};

/// Takes the pieces of a text in order.
using piece_taker = std::function<void(const text_piece& piece)>;

} // namespace kvrimage
