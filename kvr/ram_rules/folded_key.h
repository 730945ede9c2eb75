#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace kvr {

/// The characters at @p bytes in one number; written so that compilers make one load of it.
template <std::size_t... place>
constexpr std::uint64_t load_characters(const char* bytes,
                                        std::index_sequence<place...> /*places*/) noexcept {
    return ((std::uint64_t{static_cast<unsigned char>(bytes[place])} << (8 * place)) | ...);
}

/// Eight characters, "A" to "Z" among them in lower case: the top bit of each byte tells whether it is a
/// capital, and is shifted to where it makes the small letter.
constexpr std::uint64_t fold_characters(std::uint64_t characters) noexcept {
    constexpr std::uint64_t each = 0x0101010101010101U;
    const std::uint64_t low_bits = characters & (0x7F * each);
    const std::uint64_t from_a = low_bits + (0x80 - 'A') * each;
    const std::uint64_t behind_z = low_bits + (0x80 - 'Z' - 1) * each;
    const std::uint64_t capitals = (from_a ^ behind_z) & ~characters & (0x80 * each);
    return characters | capitals >> 2;
}

/// A short text in two machine words, so that texts are compared and hashed without walking their
/// characters. Two keys are equal exactly when their texts differ in nothing but the case of ASCII letters.
struct folded_key {
    static constexpr std::size_t longest_text = 16;

    std::uint64_t front = 0; ///< the first 8 characters, or all of them
    std::uint64_t back = 0;  ///< the last 8 characters of a longer text; they may overlap the first ones
    std::size_t size = 0;

    constexpr folded_key() = default;
    /// @param text at most `longest_text` characters
    constexpr explicit folded_key(std::string_view text) noexcept : size(text.size()) {
        constexpr auto four = std::make_index_sequence<4>();
        constexpr auto eight = std::make_index_sequence<8>();
        const char* const begin = text.data();
        const char* const end = begin + text.size();
        if (text.size() >= 8) {
            front = load_characters(begin, eight);
            back = load_characters(end - 8, eight);
        } else if (text.size() >= 4) {
            front = load_characters(begin, four) | load_characters(end - 4, four) << 32;
        } else {
            for (const char character : text) {
                front = front << 8 | static_cast<unsigned char>(character);
            }
        }
        front = fold_characters(front);
        back = fold_characters(back);
    }

    friend constexpr bool operator==(const folded_key& left, const folded_key& right) = default;

    [[nodiscard]] constexpr std::uint64_t hash() const noexcept {
        const std::uint64_t mixed = (front ^ back * 0x9E3779B97F4A7C15U ^ size) * 0xD6E8FEB86659FD93U;
        return mixed >> 32;
    }
};

} // namespace kvr
