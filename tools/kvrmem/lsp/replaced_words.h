#pragma once

#include "kvrimage/formats/text_piece.h"
#include "kvrimage/image/word.h"
#include "tools/kvrmem/lsp/document.h"

#include <cstdint>
#include <optional>

namespace kvrmem::lsp {

/// What later pieces of a text do to the addresses that a word sets.
struct replaced_words {
    std::uint64_t count = 0;           ///< of the addresses that are set again
    std::uint64_t first_offset = 0;    ///< of the first word that sets one of them again
    std::uint64_t last_offset = 0;     ///< of the last one
    std::uint64_t end_before = 0;      ///< the text before this sets the first address, and not again
    std::optional<std::uint64_t> kept; ///< the first address that is not set again
};

/// @param piece a word with addresses, or the words of a range_around()
[[nodiscard]] replaced_words words_replaced_after(document& of, const kvrimage::text_piece& piece);

/// The statement that sets a range of addresses, and that @p piece with addresses is of, as one piece from
/// its address to its last word; nothing where it is of none.
[[nodiscard]] std::optional<kvrimage::text_piece> range_around(document& of,
                                                               const kvrimage::text_piece& piece);

/// The word that @p piece itself says, whatever is set later; nothing where it cannot be read. Where all of
/// its addresses are set again, the text before that is read once more.
[[nodiscard]] std::optional<kvrimage::word> word_said_by(document& of, const kvrimage::text_piece& piece,
                                                         const replaced_words& replaced);

} // namespace kvrmem::lsp
