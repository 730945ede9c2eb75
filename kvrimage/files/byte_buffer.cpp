#include "kvrimage/files/byte_buffer.h"

#include <cstdint>
#include <new>
#include <sys/mman.h>

namespace kvrimage {

namespace {

constexpr std::size_t large_page = std::size_t{2} << 20U;

/// Asks for large pages: most of the time of a read goes into the faults of small ones.
void prefer_large_pages([[maybe_unused]] char* block, [[maybe_unused]] std::size_t size) {
#if defined(MADV_HUGEPAGE)
    const auto address = reinterpret_cast<std::uintptr_t>(block);
    const std::size_t before = (large_page - address % large_page) % large_page;
    if (size >= before + large_page) {
        static_cast<void>(madvise(block + before, (size - before) / large_page * large_page, MADV_HUGEPAGE));
    }
#endif
}

/// The first block of @p count bytes. A large one begins with a large page: no small ones precede it.
char* new_block(std::size_t count) {
    void* block = nullptr;
    if (count < large_page) {
        block = std::malloc(count);
    } else if (posix_memalign(&block, large_page, count) != 0) {
        block = nullptr;
    }
    return static_cast<char*>(block);
}

} // namespace

void byte_buffer::reserve(std::size_t count) {
    if (count <= capacity) {
        return;
    }
    char* const grown = bytes ? static_cast<char*>(std::realloc(bytes.get(), count)) : new_block(count);
    if (grown == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(bytes.release()); // realloc() has freed it
    bytes.reset(grown);
    prefer_large_pages(grown, count);
    capacity = count;
}

} // namespace kvrimage
