#pragma once

#include "kvr/numeric/character_block.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// A short text in two machine words, compared and hashed without a loop over its characters. Keys are equal
/// exactly if their texts differ only in ASCII letter case.
struct folded_key {
    static constexpr std::size_t longest_text = 16;

    std::uint64_t front = 0; ///< the first 8 characters, or all of them
    std::uint64_t back = 0;  ///< the last 8 characters of a longer text; may overlap `front`
    std::size_t size = 0;

    constexpr folded_key() = default;
    /// @param text at most `longest_text` characters
    constexpr explicit folded_key(std::string_view text) noexcept : size(text.size()) {
        const char* const begin = text.data();
        const char* const end = begin + text.size();
        if (text.size() >= 8) {
            front = load_characters<8>(begin);
            back = load_characters<8>(end - 8);
        } else if (text.size() >= 4) {
            front = load_characters<4>(begin) | load_characters<4>(end - 4) << 32;
        } else {
            for (const char character : text) {
                front = front << 8 | static_cast<unsigned char>(character);
            }
        }
        front = fold_eight(front);
        back = fold_eight(back);
    }

    friend constexpr bool operator==(const folded_key& left, const folded_key& right) = default;

    [[nodiscard]] constexpr std::uint64_t hash() const noexcept {
        const std::uint64_t mixed = (front ^ back * 0x9E3779B97F4A7C15U ^ size) * 0xD6E8FEB86659FD93U;
        return mixed >> 32;
    }
};

} // namespace kvr
