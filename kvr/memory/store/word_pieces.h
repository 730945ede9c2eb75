#pragma once

#include "kvr/memory/store/word_pattern.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kvr {

/// The words of a sparse page: stretches of words, each with a pattern. A single word is a stretch of one.
/// Adjacent stretches with the same texts are merged, so scattered words, parts of range lines and equal
/// words take little memory.
class word_pieces {
public:
    /// Adjacent indexes from `first` to `last` (inclusive) whose words follow `texts`.
    struct piece {
        std::uint16_t first;
        std::uint16_t last;
        pattern_ref texts;
    };

    /// The state of the indexes from a given one to `last`.
    struct stretch {
        const word_pattern* texts; ///< null if there is no piece
        std::uint32_t last;
    };

    /// Returns the pieces in ascending order, without overlaps.
    [[nodiscard]] const std::vector<piece>& all() const noexcept { return pieces; }

    [[nodiscard]] stretch stretch_at(std::uint32_t index) const noexcept;

    /// Extends the piece directly before @p index, if all its words are @p text, by one word that is in no
    /// piece. Changes nothing and returns false if there is no such piece or word.
    bool extend(std::uint32_t index, std::string_view text) noexcept;

    /// Assigns @p texts to the indexes from @p first to @p last; null removes them from all pieces. Adds at
    /// most two pieces. If this throws, nothing has changed.
    void assign(std::uint32_t first, std::uint32_t last, pattern_ref texts);

    /// Returns the pattern of a piece that touches @p index and has @p text in all its words, or none.
    [[nodiscard]] pattern_ref neighbour_with(std::uint32_t index, std::string_view text) const noexcept;

private:
    using iterator = std::vector<piece>::iterator;

    iterator cut_out(std::uint32_t first, std::uint32_t last) noexcept;
    void join_neighbours(iterator added) noexcept;

    std::vector<piece> pieces;
};

} // namespace kvr
