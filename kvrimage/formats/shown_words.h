#pragma once

#include "kvrimage/image/image_words.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/text_rows.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kvrimage {

/// The words of a memory as texts of one radix.
class word_shower {
public:
    /// @p shown is kept alive by the caller
    word_shower(const memory_image& shown, radix digits) : image(shown), digits_radix(digits) {}

    /// @return valid until the next call, or as long as @p word
    [[nodiscard]] std::string_view show(std::string_view word) {
        if (digits_radix == radix::hex) {
            return word;
        }
        show_word(word, digits_radix, image.width(), text);
        return text;
    }

private:
    const memory_image& image;
    radix digits_radix;
    std::string text;
};

/// Calls @p take with the first address, the last address and the text of the words of @p image that are set,
/// in order: a call for each run of equal words, and one for each word where they stand in a row. The text
/// has the digits of @p digits_radix, most significant first: all of them in binary, octal and hexadecimal
/// (upper case), the fewest in decimal. A don't-care bit is "X" in binary; in other radixes none of the words
/// has one.
template <class Take>
void for_each_shown_run(const memory_image& image, radix digits_radix, Take&& take) {
    const std::uint64_t base = image.base();
    word_shower texts(image, digits_radix);
    for_each_text(
        image.words(),
        [&](const kvr::word_row& row, std::uint64_t first) {
            for (std::uint32_t index = 0; index < row.count; ++index) {
                const std::uint64_t address = base + first + index;
                take(address, address, texts.show(row[index]));
            }
            return row.count;
        },
        [&](const text_run& run) { take(base + run.first, base + run.last, texts.show(run.text)); });
}

/// The same with a call, of an address and a text, for each word.
template <class Take>
void for_each_shown_word(const memory_image& image, radix digits_radix, Take&& take) {
    for_each_shown_run(image, digits_radix,
                       [&take](std::uint64_t first, std::uint64_t last, std::string_view text) {
                           for (std::uint64_t address = first; address <= last; ++address) {
                               take(address, text);
                           }
                       });
}

/// The characters of the texts of all words, at the cost of what the image holds.
[[nodiscard]] std::uint64_t count_shown_characters(const memory_image& image, radix digits_radix);

} // namespace kvrimage
