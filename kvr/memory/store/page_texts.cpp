#include "kvr/memory/store/page_texts.h"

#include "kvr/util/platform.h"

#include <new>
#include <utility>

namespace kvr {

namespace {

constexpr std::size_t shared_block_size = platform::large_page;
constexpr std::align_val_t shared_block_alignment{platform::large_page};

/// A store of this size may have a block of the same size that is almost unused.
constexpr std::size_t least_size_with_blocks = shared_block_size;

page_texts make_block() {
    auto* const place = static_cast<char*>(::operator new(shared_block_size, shared_block_alignment));
    page_texts block(place, [](char* each) { ::operator delete(each, shared_block_alignment); });
    platform::prefer_large_pages(place, shared_block_size);
    return block;
}

} // namespace

page_texts page_texts_maker::make(std::size_t size) {
    if (made < least_size_with_blocks) {
        made += size;
        return std::make_shared_for_overwrite<char[]>(size);
    }
    if (block == nullptr || shared_block_size - used < size) {
        block = make_block();
        used = 0;
    }
    return {block, block.get() + std::exchange(used, used + size)};
}

} // namespace kvr
