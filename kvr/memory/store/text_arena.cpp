#include "kvr/memory/store/text_arena.h"

#include <algorithm>
#include <utility>

namespace kvr {

namespace {

constexpr std::size_t first_block_size = 1024;
constexpr std::size_t largest_block_size = 65536;

/// Longer texts have a block of their own, so that little room is wasted at the ends of blocks.
constexpr std::size_t longest_shared = largest_block_size / 16;

// A length is encoded in seven bits per byte, low bits first. All bytes but the last have the flag.
constexpr unsigned length_bits = 7;
constexpr std::size_t more_follow = std::size_t{1} << length_bits;

constexpr std::size_t bytes_of_length(std::size_t length) noexcept {
    std::size_t bytes = 1;
    for (; length >= more_follow; length >>= length_bits) {
        ++bytes;
    }
    return bytes;
}

/// Writes @p length to @p place and returns the position after it.
char* put_length(std::size_t length, char* place) noexcept {
    for (; length >= more_follow; length >>= length_bits) {
        *place++ = static_cast<char>(length | more_follow);
    }
    *place++ = static_cast<char>(length);
    return place;
}

} // namespace

const char* text_arena::keep(std::string_view text) {
    const std::size_t size = bytes_of_length(text.size()) + text.size();
    char* place = size > longest_shared ? add_block(size) : shared_place(size);
    std::copy_n(text.data(), text.size(), put_length(text.size(), place));
    return place;
}

std::string_view text_arena::text_at(const char* place) noexcept {
    std::size_t length = 0;
    unsigned shift = 0;
    std::size_t byte = more_follow;
    for (; byte >= more_follow; shift += length_bits) {
        byte = static_cast<unsigned char>(*place++);
        length |= (byte % more_follow) << shift;
    }
    return {place, length};
}

char* text_arena::shared_place(std::size_t size) {
    if (size > room_size) {
        const std::size_t block_size = std::max({next_size, first_block_size, size});
        room = add_block(block_size);
        room_size = block_size;
        next_size = std::min(2 * block_size, largest_block_size);
    }
    room_size -= size;
    return std::exchange(room, room + size);
}

void text_arena::clear() noexcept {
    text_arena().swap(*this);
}

void text_arena::swap(text_arena& other) noexcept {
    std::swap(blocks, other.blocks);
    std::swap(room, other.room);
    std::swap(room_size, other.room_size);
    std::swap(next_size, other.next_size);
}

char* text_arena::add_block(std::size_t size) {
    blocks.push_back(std::make_unique_for_overwrite<char[]>(size));
    return blocks.back().get();
}

} // namespace kvr
