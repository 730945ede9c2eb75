#include "kvrimage/operations/reshape.h"

#include "kvrimage/diagnostics/counted.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_stretch.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/image/work_position.h"
#include "kvrimage/operations/bit_block.h"
#include "kvrimage/operations/byte_reshape.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

/// Marks a missing bit.
constexpr char missing_bit = '-';

std::uint64_t base_in_words_of(std::uint32_t width, const memory_image& image) {
    const std::uint32_t shared = std::gcd(width, image.width());
    const std::uint32_t old_words = width / shared; // old words after which old and new words end together
    const std::uint32_t new_words = image.width() / shared;
    if (image.base() % old_words != 0) {
        throw std::invalid_argument(
            fmt::format("the lowest address 0x{:X} of words of {} bits is in the middle of a word of {}",
                        image.base(), image.width(), width));
    }
    const std::uint64_t groups = image.base() / old_words;
    if (groups > std::numeric_limits<std::uint64_t>::max() / new_words) {
        throw std::out_of_range(
            fmt::format("the lowest address 0x{:X} has no place among 64-bit addresses of words of {} bits",
                        image.base(), width));
    }
    return groups * new_words;
}

std::uint64_t depth_in_words_of(std::uint32_t width, const memory_image& image) {
    const std::uint64_t depth = (image.depth() * image.width() + width - 1) / width;
    if (depth > deepest_memory) {
        throw std::out_of_range(fmt::format("the memory would have {} words of {}, more than 2^32", depth,
                                            counted(width, "bit")));
    }
    return depth;
}

class reshaper {
public:
    reshaper(const memory_image& of, std::uint32_t new_width, bit_order bits_in,
             const std::optional<word>& pad)
        : words(of.words()),
          old_width(of.width()),
          width(new_width),
          order(bits_in),
          given_pad(pad),
          pad_bits(pad ? pad->to_text(radix::bin) : std::nullopt),
          base(base_in_words_of(new_width, of)),
          depth(depth_in_words_of(new_width, of)),
          made(std::make_unique<image_words>(depth)) {}

    [[nodiscard]] memory_image result() {
        if (auto bytes = reshaped_bytes(words, {width, order, given_pad})) {
            return {width, std::make_unique<image_words>(depth, std::move(*bytes)), base};
        }
        for (std::uint64_t index = 0; index < depth;) {
            note_work(index, depth);
            index += make_some(index);
        }
        if (incomplete != 0) {
            throw std::domain_error(
                fmt::format("{} would lack bits that are not set; the first one, at address "
                            "0x{:X}, {} of {}",
                            incomplete == 1 ? "a word" : fmt::format("{} words", incomplete),
                            first_incomplete, missing_of_first, width));
        }
        return {width, std::move(made), base};
    }

private:
    /// Makes the new words from number @p index on whose bits lie in one stretch of old words. Returns their
    /// number.
    std::uint64_t make_some(std::uint64_t index) {
        const std::uint64_t begin = index * width;
        const word_stretch stretch = stretch_at(words, begin / old_width);
        const std::uint64_t bits = (stretch.last + 1) * old_width - begin;
        const std::uint64_t whole_words = bits / width;
        if (!stretch.is_set && whole_words != 0) {
            return whole_words;
        }
        if (const std::uint64_t period = period_of(stretch, begin / old_width); whole_words / 2 >= period) {
            make_words(index, index + period);
            repeat(index, period, whole_words);
            return whole_words;
        }
        const std::uint64_t touched_words = (bits + width - 1) / width;
        const std::uint64_t end = end_of_block(index, std::min(index + touched_words, depth));
        make_block(index, end);
        return end - index;
    }
    /// Returns the period of the new words, in words. The first old word of @p stretch is at @p offset.
    [[nodiscard]] std::uint64_t period_of(const word_stretch& stretch, std::uint64_t offset) const {
        if (stretch.period == 1 && is_one_digit(words[offset])) {
            return 1;
        }
        const std::uint64_t bits = stretch.period * old_width;
        return bits / std::gcd(bits, std::uint64_t{width});
    }
    /// True if all bits of @p text are equal, as in the most common fills.
    [[nodiscard]] bool is_one_digit(std::string_view text) const {
        std::string shown;
        return text.find_first_not_of(text.substr(0, 1)) == std::string_view::npos &&
               show_word(text, radix::bin, old_width, shown) &&
               shown.find_first_not_of(shown.front()) == std::string::npos;
    }
    void repeat(std::uint64_t index, std::uint64_t period, std::uint64_t count) {
        std::vector<std::string> pattern;
        for (std::uint64_t each = index; each < index + period; ++each) {
            pattern.emplace_back((*made)[each]);
        }
        made->fill(index, index + count - 1, std::vector<std::string_view>(pattern.begin(), pattern.end()));
    }

    /// Returns the end of the block of new words from @p index on, at most @p end. A block stays within a
    /// half. It is long enough that the words at its borders, which two blocks visit, cost little.
    [[nodiscard]] std::uint64_t end_of_block(std::uint64_t index, std::uint64_t end) const {
        constexpr std::uint64_t usual_bits = std::uint64_t{1} << 16U;
        const std::uint64_t longest = std::max<std::uint64_t>(usual_bits, old_width) / width + 1;
        const std::uint64_t half_end = (index / image_words::half() + 1) * image_words::half();
        return std::min({index + longest, half_end, end});
    }
    void make_words(std::uint64_t index, std::uint64_t end) {
        while (index < end) {
            const std::uint64_t block_end = end_of_block(index, end);
            make_block(index, block_end);
            index = block_end;
        }
    }

    /// The bits of a block of new words.
    struct block {
        std::uint64_t first_new;
        std::uint64_t end_new;
        std::uint64_t first_old; ///< the first old word with bits of the block
        std::uint64_t end_old;   ///< the end of these old words, which may be beyond the memory
        std::uint64_t skipped;   ///< bits of the first old word that belong to the previous new word
    };
    [[nodiscard]] block block_of(std::uint64_t index, std::uint64_t end) const {
        const std::uint64_t begin_bit = index * width;
        const std::uint64_t end_bit = end * width;
        return {index, end, begin_bit / old_width, (end_bit + old_width - 1) / old_width,
                begin_bit % old_width};
    }
    [[nodiscard]] std::uint64_t bits_of(const block& at) const {
        return (at.end_old - at.first_old) * old_width;
    }
    /// Returns the position, from the least significant bit of the block on, of the @p bits bits that begin
    /// at @p begin of its bit string.
    [[nodiscard]] std::uint64_t position_of(const block& at, std::uint64_t begin, std::uint32_t bits) const {
        return order == bit_order::low_first ? begin : bits_of(at) - begin - bits;
    }

    /// Makes the new words @p index to @p end - 1.
    void make_block(std::uint64_t index, std::uint64_t end) {
        const block at = block_of(index, end);
        if (at.end_old <= words.size() && gather_numbers(at)) {
            set_numbers(at);
        } else {
            gather_digits(at);
            set_digits(at);
        }
    }

    /// Calls @p take with the text of each old word of the block and its position in the bit string of the
    /// block.
    template <class Take>
    void each_old_word(const block& at, Take&& take) const {
        const std::uint64_t end = std::min(at.end_old, words.size());
        for (std::uint64_t offset = at.first_old; offset < end;) {
            const kvr::word_row row = words.row_at(offset);
            const text_run run = row.count == 0 ? words.run_at(offset) : text_run{offset, offset, {}};
            const std::uint64_t count = std::min(row.count != 0 ? row.count : length_of(run), end - offset);
            for (std::uint64_t index = 0; index < count; ++index) {
                const std::string_view text =
                    row.count != 0 ? row[static_cast<std::uint32_t>(index)] : run.text;
                take(text, (offset + index - at.first_old) * old_width);
            }
            offset += count;
        }
    }

    /// Stores the old words in `numbers`. Returns false if one is not set or has don't-care bits; `numbers`
    /// is then unspecified.
    [[nodiscard]] bool gather_numbers(const block& at) {
        numbers.clear(bits_of(at));
        const std::size_t length = most_characters_of_word(radix::hex, old_width);
        bool are_plain = true;
        each_old_word(at, [&](std::string_view text, std::uint64_t begin) {
            are_plain =
                are_plain && text.size() == length && numbers.put(position_of(at, begin, old_width), text);
        });
        return are_plain;
    }
    void set_numbers(const block& at) {
        const std::size_t length = most_characters_of_word(radix::hex, width);
        const std::uint64_t count = at.end_new - at.first_new;
        texts.resize(count * length);
        const std::uint64_t step = order == bit_order::low_first ? width : -std::uint64_t{width};
        std::uint64_t position = position_of(at, at.skipped, width);
        for (std::uint64_t index = 0; index < count; ++index, position += step) {
            numbers.write_to(texts.data() + index * length, position, width);
        }
        made->set_side_by_side(at.first_new, texts, length);
    }

    /// Stores the old words in `digits`, most significant bit first.
    void gather_digits(const block& at) {
        digits.assign(bits_of(at), missing_bit);
        each_old_word(at, [&](std::string_view text, std::uint64_t begin) {
            if (!text.empty()) {
                static_cast<void>(show_word(text, radix::bin, old_width, shown_word));
                shown_word.copy(digit_of(at, begin, old_width), old_width);
            }
        });
    }
    void set_digits(const block& at) {
        for (std::uint64_t index = 0; index < at.end_new - at.first_new; ++index) {
            const std::string_view bits(digit_of(at, at.skipped + index * width, width), width);
            set_word(at.first_new + index, bits);
        }
    }
    [[nodiscard]] char* digit_of(const block& at, std::uint64_t begin, std::uint32_t bits) {
        return digits.data() + (bits_of(at) - position_of(at, begin, bits) - bits);
    }
    void set_word(std::uint64_t index, std::string_view bits) {
        const auto missing = static_cast<std::uint32_t>(std::ranges::count(bits, missing_bit));
        if (missing == width) {
            return;
        }
        if (missing != 0 && !pad_bits) {
            note_incomplete(index, missing);
            return;
        }
        std::string complete(bits);
        for (std::size_t digit = 0; digit < bits.size() && missing != 0; ++digit) {
            complete[digit] = bits[digit] == missing_bit ? (*pad_bits)[digit] : bits[digit];
        }
        static_cast<void>(make_word(complete, radix::bin, width, made_word));
        made->set(index, made_word);
    }
    void note_incomplete(std::uint64_t index, std::uint32_t missing) {
        if (++incomplete == 1) {
            first_incomplete = base + index;
            missing_of_first = missing;
        }
    }

    const image_words& words; ///< the old words
    std::uint32_t old_width;
    std::uint32_t width;
    bit_order order;
    const std::optional<word>& given_pad;
    std::optional<std::string> pad_bits;
    std::uint64_t base;
    std::uint64_t depth; ///< depth of the new memory
    std::unique_ptr<image_words> made;
    bit_block numbers;
    std::string texts;
    std::string digits;
    std::string shown_word;
    std::string made_word;
    std::uint64_t incomplete = 0; ///< number of incomplete words
    std::uint64_t first_incomplete = 0;
    std::uint32_t missing_of_first = 0;
};

} // namespace

memory_image reshaped(const memory_image& image, std::uint32_t width, bit_order order,
                      const std::optional<word>& pad) {
    if (width == 0 || width > widest_word) {
        throw std::invalid_argument(fmt::format("words of {} bits; a word has 1 to {}", width, widest_word));
    }
    if (pad && pad->width() != width) {
        throw std::invalid_argument(fmt::format("a pad of {} bits for words of {}", pad->width(), width));
    }
    return reshaper(image, width, order, pad).result();
}

} // namespace kvrimage
