#pragma once

#include "kvr/keywords/folded_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// Finds the places of Count names, ignoring ASCII letter case. A hash table with open addressing, made at
/// compile time and at most half full, of places in the array of names.
template <std::size_t Count>
class keyword_index {
public:
    /// @p names must outlive the index. Names that differ only in letter case are one keyword.
    constexpr explicit keyword_index(const std::array<std::string_view, Count>& names) : names_(names) {
        for (std::size_t place = 0; place < Count; ++place) {
            add(place);
        }
    }

    /// Returns the number of keywords. Takes time proportional to the slots.
    [[nodiscard]] constexpr std::size_t size() const noexcept {
        std::size_t used = 0;
        for (const slot& each : slots_) {
            used += each.place_plus_1 != 0 ? 1U : 0U;
        }
        return used;
    }

    /// Returns the first place of @p text, or Count if it is missing.
    [[nodiscard]] constexpr std::size_t find(std::string_view text) const noexcept {
        if (text.size() > longest_) {
            return Count;
        }
        const std::uint32_t place_plus_1 = slots_[slot_of(text, folded_hash(text))].place_plus_1;
        return place_plus_1 == 0 ? Count : place_plus_1 - 1;
    }

    /// Returns the last spelling of the name first found at @p place, a result of find().
    [[nodiscard]] constexpr std::string_view last_spelling(std::size_t place) const noexcept {
        return names_[last_place_[place]];
    }

private:
    /// All zero if free: in a constant array, g++ 12 turns other initial values of elements that the
    /// constructor does not set into zeros.
    struct slot {
        std::uint32_t hash = 0;
        std::uint32_t place_plus_1 = 0;
    };
    static constexpr std::size_t slot_count = std::bit_ceil(2 * Count + 2);

    /// Returns the slot of @p text, or the free slot where it would be inserted.
    [[nodiscard]] constexpr std::size_t slot_of(std::string_view text, std::uint64_t hash) const noexcept {
        std::size_t at = hash >> (64 - std::countr_zero(slot_count));
        while (slots_[at].place_plus_1 != 0 && !holds(slots_[at], text, hash)) {
            at = (at + 1) % slot_count;
        }
        return at;
    }

    [[nodiscard]] constexpr bool holds(const slot& candidate, std::string_view text,
                                       std::uint64_t hash) const noexcept {
        return candidate.hash == static_cast<std::uint32_t>(hash) &&
               equal_folded(names_[candidate.place_plus_1 - 1], text);
    }

    constexpr void add(std::size_t place) {
        const std::string_view name = names_[place];
        const std::uint64_t hash = folded_hash(name);
        slot& home = slots_[slot_of(name, hash)];
        if (home.place_plus_1 == 0) {
            home = {static_cast<std::uint32_t>(hash), static_cast<std::uint32_t>(place + 1)};
            longest_ = std::max(longest_, name.size());
        }
        last_place_[home.place_plus_1 - 1] = static_cast<std::uint32_t>(place);
    }

    const std::array<std::string_view, Count>& names_;
    std::array<slot, slot_count> slots_{};
    std::array<std::uint32_t, Count> last_place_{};
    std::size_t longest_ = 0;
};

} // namespace kvr
