#pragma once

#include "kvrimage/formats/shown_words.h"
#include "kvrimage/formats/sink_buffer.h"
#include "kvrimage/image/memory_image.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvrimage {

/// The layout of words in the lines of an array. Each line has a power of two of words, so that lines begin
/// at round addresses, and up to 79 characters unless a single word is longer.
struct literal_lines {
    /// @param characters length of each word, without the separator
    /// @param blanks indentation of the words, up to 8
    explicit literal_lines(std::size_t characters, std::size_t blanks = 4);

    /// Returns the text before word number @p index.
    [[nodiscard]] std::string_view before(std::uint64_t index) const;
    /// Returns the number of characters of @p depth words, including the text before them.
    [[nodiscard]] std::uint64_t size(std::uint64_t depth) const;

    std::size_t literal_size;
    std::size_t indent;
    std::uint64_t words_per_line = 1;
};

/// Writes the words of @p image, all of which must be set, in @p digits_radix. @p append (text, digits)
/// formats a word from its digits.
template <class Append>
void write_literals(const memory_image& image, radix digits_radix, const literal_lines& lines,
                    sink_buffer& buffer, Append&& append) {
    std::string text;
    for_each_shown_word(image, digits_radix, [&](std::uint64_t address, std::string_view digits) {
        text = lines.before(address - image.base());
        append(text, digits);
        buffer.write(text);
    });
}

/// Returns whether a word of @p image has a don't-care bit.
[[nodiscard]] bool has_dont_care_bits(const memory_image& image);

} // namespace kvrimage
