#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// Eight bytes of a text as one number, the first byte lowest on every machine.
constexpr std::uint64_t load_8_bytes(const char* bytes) noexcept {
    const auto byte = [bytes](unsigned index) {
        return std::uint64_t{static_cast<unsigned char>(bytes[index])} << (8 * index);
    };
    return byte(0) | byte(1) | byte(2) | byte(3) | byte(4) | byte(5) | byte(6) | byte(7);
}

/// "A" to "Z" folded to "a" to "z" in each of eight bytes; all other bytes stay, those above 127 too.
constexpr std::uint64_t fold_8_bytes(std::uint64_t bytes) noexcept {
    constexpr std::uint64_t every_byte = 0x0101010101010101;
    constexpr std::uint64_t top_bits = every_byte * 0x80;
    const std::uint64_t low_bits = bytes & ~top_bits;
    const std::uint64_t from_a = low_bits + every_byte * (0x80 - 'A');
    const std::uint64_t above_z = low_bits + every_byte * (0x80 - 'Z' - 1);
    const std::uint64_t capitals = from_a & ~above_z & ~bytes & top_bits;
    return bytes | (capitals >> 2);
}

/// A text of fewer than eight bytes, folded, as one number.
constexpr std::uint64_t fold_short(std::string_view text) noexcept {
    std::uint64_t bytes = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        bytes |= std::uint64_t{static_cast<unsigned char>(text[index])} << (8 * index);
    }
    return fold_8_bytes(bytes);
}

/// The eight bytes that start at @p position, folded.
constexpr std::uint64_t fold_at(std::string_view text, std::size_t position) noexcept {
    return fold_8_bytes(load_8_bytes(text.data() + position));
}

constexpr std::uint64_t mix(std::uint64_t hash, std::uint64_t bytes) noexcept {
    hash = (hash ^ bytes) * 0x9E3779B97F4A7C15;
    return hash ^ (hash >> 32);
}

/// A hash that is the same for texts that differ in ASCII letter case only, on every machine. Its highest
/// bits depend on all characters and suit a table of a power of two slots.
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

/// True when the texts differ in ASCII letter case at most.
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
