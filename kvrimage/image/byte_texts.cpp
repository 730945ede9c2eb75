#include "kvrimage/image/byte_texts.h"

#include "kvr/numeric/digit_value.h"
#include "kvrimage/image/hex_text.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace kvrimage {

namespace {

constexpr std::size_t digits_per_byte = 2;

template <std::size_t size>
void reverse_each(char* words, std::size_t count) noexcept {
    for (; count != 0; --count, words += size) {
        std::reverse(words, words + size);
    }
}

/// Returns the number of words converted in one step: at most a page of the store, fewer if they are wide; a
/// power of two.
std::size_t words_at_once(const word_shape& shape) noexcept {
    constexpr std::size_t most_words = 1024;
    constexpr std::size_t most_bytes = std::size_t{1} << 16U;
    return std::bit_floor(std::clamp<std::size_t>(most_bytes / shape.bytes, 1, most_words));
}

} // namespace

word_shape::word_shape(std::uint32_t width) noexcept
    : bytes(kvr::digit_count(width, bits_per_byte)),
      digits(kvr::digit_count(width, bits_per_hex_digit)),
      surplus_bits(static_cast<unsigned>(bytes * bits_per_byte - width)) {}

void reverse_words(std::span<char> bytes, std::size_t size) noexcept {
    const std::size_t count = bytes.size() / size;
    switch (size) {
    case sizeof(std::uint8_t):
        return;
    case sizeof(std::uint16_t):
        return reverse_each<sizeof(std::uint16_t)>(bytes.data(), count);
    case sizeof(std::uint32_t):
        return reverse_each<sizeof(std::uint32_t)>(bytes.data(), count);
    case sizeof(std::uint64_t):
        return reverse_each<sizeof(std::uint64_t)>(bytes.data(), count);
    default:
        for (std::size_t begin = 0; begin < bytes.size(); begin += size) {
            std::ranges::reverse(bytes.subspan(begin, size));
        }
    }
}

std::size_t byte_texts::count_fitting(std::string_view bytes) const noexcept {
    const std::size_t count = bytes.size() / shape.bytes;
    if (shape.surplus_bits == 0) {
        return count;
    }
    const std::size_t top = order == byte_order::big ? 0 : shape.bytes - 1;
    const unsigned used_bits = bits_per_byte - shape.surplus_bits;
    const auto is_wide = [&](std::size_t index) {
        return static_cast<unsigned char>(bytes[index * shape.bytes + top]) >> used_bits != 0;
    };
    // Test many words at once: hardly any file has a word that is too wide.
    constexpr std::size_t at_once = 64;
    std::size_t fitting = 0;
    for (bool any = false; !any && count - fitting >= at_once; fitting += any ? 0 : at_once) {
        for (std::size_t index = fitting; index < fitting + at_once; ++index) {
            any |= is_wide(index);
        }
    }
    while (fitting < count && !is_wide(fitting)) {
        ++fitting;
    }
    return fitting;
}

std::string_view byte_texts::make(std::string_view bytes) {
    if (order == byte_order::little && shape.bytes > 1) {
        reversed.assign(bytes);
        reverse_words(reversed, shape.bytes);
        bytes = reversed;
    }
    texts.resize(bytes.size() * digits_per_byte);
    encode_hex(bytes, texts.data());
    return shape.has_odd_digit() ? without_first_digits() : texts;
}

/// Removes the first digit of each word, which is 0.
std::string_view byte_texts::without_first_digits() noexcept {
    const std::size_t step = shape.digits + 1;
    std::size_t made = 0;
    for (std::size_t begin = 0; begin < texts.size(); begin += step, made += shape.digits) {
        std::memmove(texts.data() + made, texts.data() + begin + 1, shape.digits);
    }
    return std::string_view(texts).substr(0, made);
}

std::string byte_texts::all_digits(std::string_view word) const {
    std::string ordered(word);
    if (order == byte_order::little) {
        std::ranges::reverse(ordered);
    }
    std::string digits(ordered.size() * digits_per_byte, '0');
    encode_hex(ordered, digits.data());
    return digits;
}

std::uint64_t byte_word_setter::set(std::uint64_t offset, std::string_view bytes) {
    const std::size_t most = words_at_once(shape);
    std::uint64_t done = 0;
    while (!bytes.empty()) {
        // Stop at a multiple of `most`, so that no part crosses a page or the border of the halves.
        const std::size_t room = most - (offset + done) % most;
        const std::string_view part = bytes.substr(0, room * shape.bytes);
        const std::size_t fitting = texts.count_fitting(part);
        if (fitting != 0) {
            set_texts(offset + done, texts.make(part.substr(0, fitting * shape.bytes)));
            done += fitting;
        }
        if (fitting * shape.bytes != part.size()) {
            break;
        }
        bytes.remove_prefix(part.size());
    }
    return done;
}

void byte_word_setter::set_texts(std::uint64_t offset, std::string_view all) {
    if (offset < image_words::half()) {
        batch.set_side_by_side(static_cast<std::uint32_t>(offset), all, shape.digits);
    } else {
        batch.flush();
        words.set_side_by_side(offset, all, shape.digits);
    }
}

} // namespace kvrimage
