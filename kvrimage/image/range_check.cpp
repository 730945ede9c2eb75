#include "kvrimage/image/range_check.h"

#include "kvrimage/image/memory_image.h"

#include <fmt/format.h>

#include <stdexcept>

namespace kvrimage {

void require_ascending(const address_range& range) {
    if (range.last < range.first) {
        throw std::invalid_argument(
            fmt::format("the range 0x{:X} to 0x{:X} ends before it begins", range.first, range.last));
    }
}

void require_within(const memory_image& image, const address_range& range) {
    require_ascending(range);
    if (range.first < image.base() || range.last > image.last_address()) {
        throw std::out_of_range(fmt::format("the range 0x{:X} to 0x{:X}: the memory has 0x{:X} to 0x{:X}",
                                            range.first, range.last, image.base(), image.last_address()));
    }
}

} // namespace kvrimage
