#include "kvr/memory/text_arena.h"

#include <algorithm>
#include <utility>

namespace kvr {

namespace {

constexpr std::size_t first_block_size = 1024;
constexpr std::size_t largest_block_size = 65536;

/// A longer text has a block of its own, so that hardly any room is lost at the end of a block.
constexpr std::size_t longest_shared = largest_block_size / 16;

} // namespace

std::string_view text_arena::keep(std::string_view text) {
    char* place = text.size() > longest_shared ? add_block(text.size()) : shared_place(text.size());
    std::copy_n(text.data(), text.size(), place);
    return {place, text.size()};
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
