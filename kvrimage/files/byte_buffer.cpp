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

/// The first block of @p count bytes; null where there is no memory. A large one begins with a large page, so
/// that no small ones precede it.
char* new_block(std::size_t count) {
    const std::size_t alignment = count < large_page ? alignof(std::max_align_t) : large_page;
    void* block = nullptr;
    return posix_memalign(&block, alignment, count) == 0 ? static_cast<char*>(block) : nullptr;
}

} // namespace

void byte_buffer::reserve(std::size_t count) {
    if (count <= capacity) {
        return;
    }
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): what grows must not be copied
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
