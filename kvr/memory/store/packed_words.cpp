#include "kvr/memory/store/packed_words.h"

#include <cassert>
#include <cstring>

namespace kvr {

namespace {

std::unique_ptr<std::uint8_t[]> filled(std::uint8_t value) {
    auto bytes = std::make_unique_for_overwrite<std::uint8_t[]>(page_words);
    std::fill_n(bytes.get(), page_words, value);
    return bytes;
}

} // namespace

packed_words::packed_words(std::uint32_t longest)
    : chars(std::make_shared_for_overwrite<char[]>(std::size_t{longest} * page_words)),
      padding(filled(absent)),
      stride(longest),
      incomplete(page_words) {}

bool packed_words::copy_in_side_by_side(std::uint32_t index, const char* texts, std::size_t length,
                                        std::uint32_t count) noexcept {
    if (length != stride || (!is_complete() && incomplete <= count)) {
        return false;
    }
    std::memcpy(place(index), texts, length * count);
    if (!is_complete()) {
        const std::uint8_t* const begin = padding.get() + index;
        incomplete -= count - static_cast<std::uint32_t>(std::count(begin, begin + count, 0));
        std::fill_n(padding.get() + index, count, std::uint8_t{0});
    }
    return true;
}

void packed_words::add_padding() {
    if (padding == nullptr) {
        padding = filled(0);
    }
}

packed_words packed_words::widened(std::uint32_t longest) const {
    packed_words wide(longest);
    for (std::uint32_t index = 0; index < page_words; ++index) {
        if (has(index)) {
            wide.assign(index, index, [this](std::uint32_t each) { return (*this)[each]; });
        }
    }
    return wide;
}

bool packed_words::is_uniform() const noexcept {
    assert(is_complete());
    const std::size_t rest = std::size_t{page_words - 1} * stride;
    return std::memcmp(chars.get(), chars.get() + stride, rest) == 0;
}

} // namespace kvr
