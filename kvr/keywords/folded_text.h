#pragma once

#include "kvr/numeric/character_block.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// Returns a folded text of fewer than eight bytes as one number.
constexpr std::uint64_t fold_short(std::string_view text) noexcept {
    std::uint64_t bytes = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        bytes |= std::uint64_t{static_cast<unsigned char>(text[index])} << (8 * index);
    }
    return fold_eight(bytes);
}

/// Returns the eight bytes at @p position, folded.
constexpr std::uint64_t fold_at(std::string_view text, std::size_t position) noexcept {
    return fold_eight(load_characters<8>(text.data() + position));
}

constexpr std::uint64_t mix(std::uint64_t hash, std::uint64_t bytes) noexcept {
    hash = (hash ^ bytes) * 0x9E3779B97F4A7C15;
    return hash ^ (hash >> 32);
}

/// Returns a hash that ignores ASCII letter case and is the same on every machine. Its highest bits depend on
/// all characters and suit a table with a power of two slots.
constexpr std::uint64_t folded_hash(std::string_view text) noexcept {
    const std::size_t size = text.size();
    if (size < 8) {
        return mix(size, fold_short(text));
    }
    std::uint64_t hash = size;
    for (std::size_t position = 0; position + 8 < size; position += 8) {
        hash = mix(hash, fold_at(text, position));
    }
    return mix(hash, fold_at(text, size - 8));
}

/// Returns whether the texts are equal except for ASCII letter case.
constexpr bool equal_folded(std::string_view left, std::string_view right) noexcept {
    const std::size_t size = left.size();
    if (size != right.size()) {
        return false;
    }
    if (size < 8) {
        return fold_short(left) == fold_short(right);
    }
    for (std::size_t position = 0; position + 8 < size; position += 8) {
        if (fold_at(left, position) != fold_at(right, position)) {
            return false;
        }
    }
    return fold_at(left, size - 8) == fold_at(right, size - 8);
}

} // namespace kvr
