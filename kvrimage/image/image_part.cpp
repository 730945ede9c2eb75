#include "kvrimage/image/image_part.h"

#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/range_check.h"
#include "kvrimage/image/word_copy.h"

#include <fmt/format.h>

#include <memory>
#include <stdexcept>

namespace kvrimage {

memory_image cut_out(const memory_image& image, const address_range& range) {
    require_within(image, range);
    const std::uint64_t first = range.first - image.base();
    const std::uint64_t last = range.last - image.base();
    if (const byte_words* const bytes = image.words().bytes()) {
        return {image.width(), std::make_unique<image_words>(last - first + 1, bytes->part(first, last)),
                range.first};
    }
    memory_image part(image.width(), last - first + 1, range.first);
    copy_words(image.words(), first, last, part.words(), 0);
    return part;
}

void overlay(memory_image& image, const memory_image& part) {
    if (part.width() != image.width()) {
        throw std::invalid_argument(
            fmt::format("words of {} bits: those of the memory have {}", part.width(), image.width()));
    }
    require_within(image, {part.base(), part.last_address()});
    copy_words(part.words(), 0, part.depth() - 1, image.words(), part.base() - image.base());
}

} // namespace kvrimage
