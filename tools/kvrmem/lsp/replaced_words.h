#pragma once

#include "kvrimage/exchange/text_piece.h"
#include "kvrimage/image/word.h"
#include "tools/kvrmem/lsp/document.h"

#include <cstdint>
#include <optional>

namespace kvrmem::lsp {

/// How later pieces of a text set the addresses of a word again.
struct replaced_words {
    std::uint64_t count = 0;        ///< number of addresses set again
    std::uint64_t first_offset = 0; ///< of the first word that sets one of them again
    std::uint64_t last_offset = 0;  ///< of the last such word
    /// End of the text that sets the first address and does not yet set it again.
    std::uint64_t end_before = 0;
    std::optional<std::uint64_t> kept; ///< the first address not set again
};

/// Finds the later words that set addresses of @p piece again.
/// @param piece a word with addresses, or the words of a range_around()
[[nodiscard]] replaced_words words_replaced_after(document& of, const kvrimage::text_piece& piece);

/// Returns the range statement that contains @p piece, which has addresses, as one piece from its address to
/// its last word; nothing if there is none.
[[nodiscard]] std::optional<kvrimage::text_piece> range_around(document& of,
                                                               const kvrimage::text_piece& piece);

/// Returns the word in the text of @p piece, regardless of later pieces; nothing if it is unreadable. If all
/// of its addresses are set again, the text before that is parsed once more.
[[nodiscard]] std::optional<kvrimage::word> word_said_by(document& of, const kvrimage::text_piece& piece,
                                                         const replaced_words& replaced);

} // namespace kvrmem::lsp
