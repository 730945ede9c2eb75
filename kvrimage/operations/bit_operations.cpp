#include "kvrimage/operations/bit_operations.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/image/byte_texts.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/operations/linear_map.h"
#include "kvrimage/operations/word_mapping.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

/// Returns a number with the lowest @p count bits set, at most 128.
wide_number low_ones(std::uint32_t count) {
    const auto ones = [](std::uint32_t bits) {
        return bits >= bits_per_limb ? ~std::uint64_t{0} : (std::uint64_t{1} << bits) - 1;
    };
    return {ones(count), count > bits_per_limb ? ones(count - bits_per_limb) : 0};
}

using change_of_bytes = std::function<void(std::span<char> words)>;

/// Moves the bits of each word: bit i of the new word is bit @p source(i) of the old one. @p bytes does the
/// same to words stored as bytes.
template <class Source>
memory_image with_moved_bits(const memory_image& image, Source&& source, change_of_bytes bytes) {
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
                                linear_map(columns), std::move(bytes)});
}

/// Makes the table of byte values with reversed bits.
constexpr std::array<char, 256> make_reversed_bytes() {
    std::array<char, 256> reversed{};
    for (std::size_t value = 0; value < reversed.size(); ++value) {
        unsigned made = 0;
        for (unsigned bit = 0; bit < bits_per_byte; ++bit) {
            made = made << 1U | (value >> bit & 1U);
        }
        reversed[value] = static_cast<char>(made);
    }
    return reversed;
}

/// Clears the bits of @p words that are 0 in @p mask, which is repeated.
void clear_bits(std::span<char> words, std::string_view mask) {
    for (std::size_t begin = 0; begin < words.size(); begin += mask.size()) {
        const std::size_t count = std::min(mask.size(), words.size() - begin);
        for (std::size_t index = 0; index < count; ++index) {
            words[begin + index] = static_cast<char>(words[begin + index] & mask[index]);
        }
    }
}

/// Returns the bytes of @p bits repeated to a length that vectorizes well, or "" if @p image is not stored as
/// bytes.
std::string repeated_bytes(const memory_image& image, const word& bits) {
    std::string repeated;
    if (const byte_words* const held = image.words().bytes()) {
        constexpr std::size_t usual_bytes = 1024;
        memory_image one(bits.width(), 1);
        one.set(0, bits);
        for_each_byte_block(one, held->order(), [&repeated](std::uint64_t, std::string_view bytes) {
            do {
                repeated += bytes;
            } while (repeated.size() < usual_bytes);
        });
    }
    return repeated;
}

char inverted_digit(char digit) noexcept {
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
                                },
                                [mask_bytes = repeated_bytes(image, bits)](std::span<char> words) {
                                    clear_bits(words, mask_bytes);
                                }});
}

memory_image with_reversed_bits(const memory_image& image) {
    return with_moved_bits(
        image, [last = image.width() - 1](std::uint32_t bit) { return last - bit; },
        [size = bytes_of_width(image.width())](std::span<char> words) {
            static constexpr std::array<char, 256> reversed = make_reversed_bytes();
            reverse_words(words, size);
            for (char& byte : words) {
                byte = reversed[static_cast<unsigned char>(byte)];
            }
        });
}

memory_image with_swapped_bytes(const memory_image& image) {
    if (image.width() % bits_per_byte != 0) {
        throw std::invalid_argument(fmt::format("words of {} bits are not whole bytes", image.width()));
    }
    const std::uint32_t top_byte = image.width() - bits_per_byte;
    return with_moved_bits(
        image,
        [top_byte](std::uint32_t bit) {
            return top_byte - bit / bits_per_byte * bits_per_byte + bit % bits_per_byte;
        },
        [size = bytes_of_width(image.width())](std::span<char> words) { reverse_words(words, size); });
}

memory_image inverted(const memory_image& image) {
    const wide_number ones = low_ones(std::min(image.width(), widest_number_word));
    return mapped_words(image, {image.width(),
                                [](std::string_view word) {
                                    std::string other(word);
                                    for (char& digit : other) {
                                        digit = inverted_digit(digit);
                                    }
                                    return other;
                                },
                                [&ones](const wide_number& value) {
                                    return wide_number{value.low ^ ones.low, value.high ^ ones.high};
                                },
                                [](std::span<char> words) {
                                    for (char& byte : words) {
                                        byte = static_cast<char>(~byte);
                                    }
                                }});
}

} // namespace kvrimage
