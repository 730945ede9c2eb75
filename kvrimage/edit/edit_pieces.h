#pragma once

#include "kvrimage/formats/format.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace kvrimage {

/// Neighbouring addresses that one assignment gives their words. Valid as long as the assignment is.
struct edit_piece {
    std::uint64_t first;
    std::uint64_t last; ///< inclusive
    const assignment* source;
    std::uint64_t begin; ///< the address of the first word of `source`

    [[nodiscard]] std::uint64_t size() const noexcept { return last - first + 1; }
    [[nodiscard]] bool is_constant() const noexcept { return source->words.size() == 1; }
    /// After how many addresses the words repeat, at most size().
    [[nodiscard]] std::uint64_t period() const noexcept;
    /// The word for @p address, which lies in the piece.
    [[nodiscard]] const word& word_at(std::uint64_t address) const noexcept;
    /// The same as image_words holds it.
    [[nodiscard]] std::string text_at(std::uint64_t address) const;
};

/// Pieces that do not overlap, in the order of their addresses.
class edit_pieces {
public:
    /// The pieces of @p assignments, which are kept alive by the caller, and which have a word each. Of two
    /// for one address the later counts; neighbours that hold one and the same word throughout are one piece.
    /// @param base the address of a piece for address 0 of an assignment; the sums fit 64 bits
    explicit edit_pieces(std::span<const assignment> assignments, std::uint64_t base = 0);

    [[nodiscard]] bool empty() const noexcept { return pieces.empty(); }
    [[nodiscard]] bool touch(const address_range& addresses) const;
    /// Removes what lies within @p addresses, and hands it out.
    std::vector<edit_piece> take(const address_range& addresses);
    /// What is left, in order.
    [[nodiscard]] std::vector<edit_piece> all() const;

private:
    void split_at(std::uint64_t address);
    void unite();

    std::map<std::uint64_t, edit_piece> pieces; ///< by their first addresses
};

} // namespace kvrimage
