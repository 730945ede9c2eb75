#pragma once

#include "kvrimage/formats/text_piece.h"

#include <cstdint>
#include <functional>

namespace kvrimage {

/// Where @p count bytes of the data from number @p first on are in a file.
using byte_spans = std::function<span(std::uint64_t first, std::uint64_t count)>;

/// Hands out the words of a file whose addresses count bytes.
class byte_pieces {
public:
    /// @param taker kept alive by the caller
    /// @param base_of_file the address of the byte that is the first of word 0
    byte_pieces(const piece_taker& taker, std::uint64_t base_of_file, std::uint32_t bytes_of_word)
        : take(taker),
          base(base_of_file),
          word_bytes(bytes_of_word) {}

    /// The address of @p count bytes of data.
    void add_address(const span& where, std::uint64_t address, std::uint64_t count) const;
    /// The data at @p address, a piece for each word that it has bytes of.
    void add_data(std::uint64_t address, std::uint64_t count, const byte_spans& span_of) const;

    /// The same byte from address @p first to @p last, in one place.
    void add_run(const span& where, std::uint64_t first, std::uint64_t last) const;

private:
    const piece_taker& take;
    std::uint64_t base;
    std::uint64_t word_bytes;
};

} // namespace kvrimage
