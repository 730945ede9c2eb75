#include "kvrimage/image/word_search.h"

#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace kvrimage {

std::optional<std::uint64_t> find_word(const image_words& words, std::uint64_t first, std::uint64_t end,
                                       const std::function<bool(const kvr::word_row& row)>& has_none,
                                       const std::function<bool(std::string_view word)>& is_sought) {
    cycle_finder cycles(words);
    while (first < end) {
        std::uint64_t looked_through = 0;
        std::uint64_t next = 0;
        if (const kvr::word_row row = words.row_at(first); row.count != 0) {
            looked_through = has_none(row) ? 0 : row.count;
            next = first + row.count;
        } else if (const auto cycle = cycles.find(first)) {
            looked_through = cycle->period;
            next = cycle->last + 1;
        } else {
            const text_run run = words.run_at(first);
            looked_through = run.text.empty() ? 0 : 1;
            next = run.last + 1;
        }
        const std::uint64_t looked_end = std::min(first + looked_through, end);
        for (; first < looked_end; ++first) {
            if (is_sought(words[first])) {
                return first;
            }
        }
        first = next;
    }
    return std::nullopt;
}

std::optional<std::uint64_t> find_unshown_word(const image_words& words, std::uint32_t width,
                                               radix digits_radix, std::uint64_t first, std::uint64_t end) {
    if (words.bytes() != nullptr) {
        return std::nullopt; // bytes have no don't-care bits
    }
    const std::size_t hex_length = most_characters_of_word(radix::hex, width);
    std::string text;
    return find_word(
        words, first, end,
        [&](const kvr::word_row& row) {
            return (digits_radix == radix::hex && row.length == hex_length) || is_plain(row.all());
        },
        [&](std::string_view word) { return !show_word(word, digits_radix, width, text); });
}

std::optional<std::uint64_t> find_dont_care_word(const image_words& words) {
    if (words.bytes() != nullptr) {
        return std::nullopt; // bytes have no don't-care bits
    }
    return find_word(
        words, 0, words.size(), [](const kvr::word_row& row) { return is_plain(row.all()); },
        [](std::string_view word) { return !is_plain(word); });
}

} // namespace kvrimage
