#include "kvrimage/image/byte_words.h"

#include "kvrimage/image/byte_texts.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <iterator>

namespace kvrimage {

std::optional<word> byte_words::word_at(std::uint64_t offset) const {
    const auto after = std::ranges::upper_bound(all, offset, {}, &block::first);
    if (after == all.begin()) {
        return std::nullopt;
    }
    const block& found = *std::prev(after);
    if (offset > found.last(size)) {
        return std::nullopt;
    }
    const std::uint32_t width = size * bits_per_byte;
    byte_texts texts(width, their_order);
    const std::uint64_t begin = (offset - found.first) * size;
    return word_of_text(texts.make(found.bytes.substr(begin, size)), width);
}

void byte_words::set_in(image_words& words) const {
    byte_word_setter setter(size * bits_per_byte, their_order, words);
    for (const block& each : all) {
        setter.set(each.first, each.bytes);
    }
    setter.flush();
}

} // namespace kvrimage
