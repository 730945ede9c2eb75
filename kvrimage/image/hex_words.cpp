#include "kvrimage/image/hex_words.h"

#include "kvrimage/image/image_words.h"
#include "kvrimage/image/range_check.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>

namespace kvrimage {

namespace {

/// Returns the texts of at most @p most words from @p offset on that have @p digits digits each, or "" if
/// there are none.
std::string_view hex_texts_at(const image_words& words, std::uint64_t offset, std::uint64_t most,
                              std::size_t digits) {
    const kvr::word_row row = words.row_at(offset);
    if (row.count != 0 && row.length == digits) {
        return row.part(0, static_cast<std::uint32_t>(std::min<std::uint64_t>(row.count, most))).all();
    }
    const std::string_view text = words[offset];
    return text.size() == digits ? text : std::string_view();
}

} // namespace

bool append_hex_words(const memory_image& image, const address_range& range, std::string& text) {
    require_within(image, range);
    const std::size_t digits = most_characters_of_word(radix::hex, image.width());
    const std::size_t old_size = text.size();
    std::uint64_t left = range.last - range.first + 1;
    std::uint64_t offset = range.first - image.base();
    while (left != 0) {
        const std::string_view texts = hex_texts_at(image.words(), offset, left, digits);
        if (texts.empty()) {
            text.resize(old_size);
            return false;
        }
        text.append(texts);
        offset += texts.size() / digits;
        left -= texts.size() / digits;
    }
    return true;
}

} // namespace kvrimage
