#include "kvrimage/operations/bit_operations.h"

#include "kvrimage/image/word_text.h"
#include "kvrimage/operations/linear_map.h"
#include "kvrimage/operations/word_mapping.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

namespace {

constexpr std::uint32_t bits_per_limb = 64;

/// The lowest @p count bits, at most 128, of which each is 1.
wide_number low_ones(std::uint32_t count) {
    const auto ones = [](std::uint32_t bits) {
        return bits >= bits_per_limb ? ~std::uint64_t{0} : (std::uint64_t{1} << bits) - 1;
    };
    return {ones(count), count > bits_per_limb ? ones(count - bits_per_limb) : 0};
}

/// Moves the bits of each word: bit i of the new word is bit @p source(i) of the old one.
template <class Source>
memory_image with_moved_bits(const memory_image& image, Source&& source) {
    const std::uint32_t width = image.width();
    std::vector<wide_number> columns(std::min(width, widest_number_word));
    for (std::uint32_t bit = 0; bit < columns.size() && width <= widest_number_word; ++bit) {
        columns[source(bit)] = single_bit(bit);
    }
    return mapped_words(image, {width,
                                [&](std::string_view word) {
                                    std::string made(width, '0');
                                    for (std::uint32_t bit = 0; bit < width; ++bit) {
                                        made[width - 1 - bit] = word[width - 1 - source(bit)];
                                    }
                                    return made;
                                },
                                linear_map(columns)});
}

char inverted_digit(char digit) {
    return digit == 'X' ? 'X' : static_cast<char>('0' + '1' - digit);
}

} // namespace

memory_image masked(const memory_image& image, const word& bits) {
    if (bits.width() != image.width()) {
        throw std::invalid_argument(
            fmt::format("a mask of {} bits for words of {}", bits.width(), image.width()));
    }
    if (bits.has_dont_care()) {
        throw std::invalid_argument("the mask has don't-care bits");
    }
    const std::string digits = bits.to_text(radix::bin).value();
    const wide_number mask = wide_number_of(bits.to_text(radix::hex).value()).value_or(wide_number());
    return mapped_words(image, {image.width(),
                                [&digits](std::string_view word) {
                                    std::string kept(word);
                                    for (std::size_t index = 0; index < kept.size(); ++index) {
                                        kept[index] = digits[index] == '0' ? '0' : kept[index];
                                    }
                                    return kept;
                                },
                                [&mask](const wide_number& value) {
                                    return wide_number{value.low & mask.low, value.high & mask.high};
                                }});
}

memory_image with_reversed_bits(const memory_image& image) {
    return with_moved_bits(image, [last = image.width() - 1](std::uint32_t bit) { return last - bit; });
}

memory_image with_swapped_bytes(const memory_image& image) {
    if (image.width() % bits_per_byte != 0) {
        throw std::invalid_argument(
            fmt::format("words of {} bits are no whole bytes, whose order could be swapped", image.width()));
    }
    const std::uint32_t top_byte = image.width() - bits_per_byte;
    return with_moved_bits(image, [top_byte](std::uint32_t bit) {
        return top_byte - bit / bits_per_byte * bits_per_byte + bit % bits_per_byte;
    });
}

memory_image inverted(const memory_image& image) {
    const wide_number ones = low_ones(std::min(image.width(), widest_number_word));
    return mapped_words(image, {image.width(),
                                [](std::string_view word) {
                                    std::string other(word);
                                    std::ranges::transform(other, other.begin(), inverted_digit);
                                    return other;
                                },
                                [&ones](const wide_number& value) {
                                    return wide_number{value.low ^ ones.low, value.high ^ ones.high};
                                }});
}

} // namespace kvrimage
