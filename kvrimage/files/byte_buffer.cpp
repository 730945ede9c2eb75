#include "kvrimage/files/byte_buffer.h"

#include "kvr/util/platform.h"
#include "kvrimage/files/platform.h"

#include <limits>
#include <new>

namespace kvrimage {

void byte_buffer::reserve(std::uint64_t size) {
    if (size <= capacity) {
        return;
    }
    if (size > std::numeric_limits<std::ptrdiff_t>::max()) {
        throw std::bad_alloc();
    }
    const std::size_t count = size;
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): what grows must not be copied
    char* const grown =
        bytes ? static_cast<char*>(std::realloc(bytes.get(), count)) : platform::new_block(count);
    if (grown == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(bytes.release()); // realloc() has freed it
    bytes.reset(grown);
    kvr::platform::prefer_large_pages(grown, count);
    capacity = count;
}

} // namespace kvrimage
