#pragma once

#include "kvr/memory/store/word_pattern.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kvr {

/// The words of a page with few words set: stretches of words, each with its pattern. A single word
/// is a stretch of one, and adjacent stretches of the same texts are one, so that a single word here and
/// there, a part of a range line and equal words cost next to nothing.
class word_pieces {
public:
    /// Adjacent indexes, from `first` to `last` (inclusive), whose words follow `texts`.
    struct piece {
        std::uint16_t first;
        std::uint16_t last;
        pattern_ref texts;
    };

    /// What applies to the indexes from the given one to `last`.
    struct stretch {
        const word_pattern* texts; ///< none where there is no piece
        std::uint32_t last;
    };

    /// In ascending order; none overlap.
    [[nodiscard]] const std::vector<piece>& all() const noexcept { return pieces; }

    [[nodiscard]] stretch stretch_at(std::uint32_t index) const noexcept;

    /// Extends the piece that ends directly before @p index, if all its words are @p text, by one word
    /// that no piece holds; false, without a change, when there is no such piece or word.
    bool extend(std::uint32_t index, std::string_view text) noexcept;

    /// Assigns @p texts to the indexes from @p first to @p last, or no piece when there are none. Adds at
    /// most two pieces. Nothing has changed when it throws.
    void assign(std::uint32_t first, std::uint32_t last, pattern_ref texts);

    /// The pattern of a piece that touches @p index and has @p text in all its words; none when there is
    /// no such piece.
    [[nodiscard]] pattern_ref neighbour_with(std::uint32_t index, std::string_view text) const noexcept;

private:
    using iterator = std::vector<piece>::iterator;

    iterator cut_out(std::uint32_t first, std::uint32_t last) noexcept;
    void join_neighbours(iterator added) noexcept;

    std::vector<piece> pieces;
};

} // namespace kvr
