#pragma once

#include "kvrimage/exchange/assignment.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace kvrimage {

/// A range of addresses that get their words from one assignment. Valid while the assignment is.
struct edit_piece {
    std::uint64_t first;
    std::uint64_t last; ///< inclusive
    const assignment* source;
    std::uint64_t begin; ///< the address of the first word of `source`

    [[nodiscard]] std::uint64_t size() const noexcept { return last - first + 1; }
    [[nodiscard]] bool is_constant() const noexcept { return source->words.size() == 1; }
    /// Returns the period of the words in addresses, at most size().
    [[nodiscard]] std::uint64_t period() const noexcept;
    /// Returns the word for @p address, which must lie in the piece.
    [[nodiscard]] const word& word_at(std::uint64_t address) const noexcept;
    /// Returns the word for @p address in the form that image_words stores.
    [[nodiscard]] std::string text_at(std::uint64_t address) const;
};

/// Pieces without overlaps, in order of addresses.
class edit_pieces {
public:
    /// Makes the pieces of @p assignments, which must outlive this object and have at least one word each. Of
    /// two assignments for one address the later one wins. Adjacent pieces with the same constant word are
    /// merged.
    /// @param base added to the addresses of the assignments; the sums must fit 64 bits
    explicit edit_pieces(std::span<const assignment> assignments, std::uint64_t base = 0);

    [[nodiscard]] bool empty() const noexcept { return pieces.empty(); }
    [[nodiscard]] bool touch(const address_range& addresses) const;
    /// Removes and returns the parts of pieces within @p addresses.
    std::vector<edit_piece> take(const address_range& addresses);
    /// Returns the remaining pieces in order.
    [[nodiscard]] std::vector<edit_piece> all() const;

private:
    void split_at(std::uint64_t address);
    void unite();

    std::map<std::uint64_t, edit_piece> pieces; ///< by first address
};

} // namespace kvrimage
