#pragma once

#include "kvrimage/exchange/text_piece.h"

#include <cstdint>
#include <functional>

namespace kvrimage {

/// Returns the place in a file of @p count data bytes, starting with byte number @p first.
using byte_spans = std::function<span(std::uint64_t first, std::uint64_t count)>;

/// Reports the words of a file whose addresses count bytes.
class byte_pieces {
public:
    /// @param taker must outlive this object
    /// @param base_of_file the byte address of word 0
    byte_pieces(const piece_taker& taker, std::uint64_t base_of_file, std::uint32_t bytes_of_word)
        : take(taker),
          base(base_of_file),
          word_bytes(bytes_of_word) {}

    /// Reports an address that applies to @p count bytes of data.
    void add_address(const span& where, std::uint64_t address, std::uint64_t count) const;
    /// Reports the data at @p address, one piece for each word that they touch.
    void add_data(std::uint64_t address, std::uint64_t count, const byte_spans& span_of) const;

    /// Reports a byte that is repeated from address @p first to @p last by one place of the file.
    void add_run(const span& where, std::uint64_t first, std::uint64_t last) const;

private:
    const piece_taker& take;
    std::uint64_t base;
    std::uint64_t word_bytes;
};

} // namespace kvrimage
