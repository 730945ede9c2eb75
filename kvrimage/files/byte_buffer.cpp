#include "kvrimage/files/byte_buffer.h"

#include "kvr/util/platform.h"
#include "kvrimage/files/platform.h"

#include <limits>
#include <new>

namespace kvrimage {

namespace {

/// Returns @p block, or a new one if it is null, with room for @p size bytes; null if there is too little
/// memory.
char* grow_block(char* block, std::uint64_t size) noexcept {
    if (size > std::numeric_limits<std::ptrdiff_t>::max()) {
        return nullptr;
    }
    const std::size_t count = size;
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): what grows must not be copied
    return block != nullptr ? static_cast<char*>(std::realloc(block, count)) : platform::new_block(count);
}

} // namespace

void byte_buffer::reserve(std::uint64_t size) {
    if (size <= capacity) {
        return;
    }
    char* const grown = grow_block(bytes.get(), size);
    if (grown == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(bytes.release()); // realloc() has freed it
    bytes.reset(grown);
    capacity = size;
    kvr::platform::prefer_large_pages(grown, capacity);
}

} // namespace kvrimage
