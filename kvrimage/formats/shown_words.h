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

/// Converts the words of a memory to one radix.
class word_shower {
public:
    /// @p shown is kept alive by the caller
    word_shower(const memory_image& shown, radix digits) : image(shown), digits_radix(digits) {}

    /// Returns the text of @p word. It is valid until the next call, or as long as @p word.
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

/// Calls @p take (first address, last address, text) for the set words of @p image, in order: once for each
/// run of equal words, and once for each word in rows of different words. The text has the most significant
/// digit first: all digits in binary, octal and hexadecimal (upper case), no leading zeros in decimal. A
/// don't-care bit is "X" in binary; other radixes require words without don't-care bits.
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

/// Calls @p take (address, text) for each set word of @p image, as for_each_shown_run() does.
template <class Take>
void for_each_shown_word(const memory_image& image, radix digits_radix, Take&& take) {
    for_each_shown_run(image, digits_radix,
                       [&take](std::uint64_t first, std::uint64_t last, std::string_view text) {
                           for (std::uint64_t address = first; address <= last; ++address) {
                               take(address, text);
                           }
                       });
}

/// Returns the total length of the texts of all words. Takes time proportional to the stored words.
[[nodiscard]] std::uint64_t count_shown_characters(const memory_image& image, radix digits_radix);

} // namespace kvrimage
