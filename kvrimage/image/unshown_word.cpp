#include "kvrimage/image/unshown_word.h"

#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <string>

namespace kvrimage {

std::optional<std::uint64_t> find_unshown_word(const image_words& words, std::uint32_t width,
                                               radix digits_radix, std::uint64_t first, std::uint64_t end) {
    const std::size_t hex_length = most_characters_of_word(radix::hex, width);
    std::string text;
    return find_word(
        words, first, end,
        [&](const kvr::word_row& row) {
            return (digits_radix == radix::hex && row.length == hex_length) || is_plain(row.all());
        },
        [&](std::string_view word) { return !show_word(word, digits_radix, width, text); });
}

} // namespace kvrimage
