#include "kvrimage/image/image_bytes.h"

#include "kvr/numeric/digit_blocks.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <span>
#include <stdexcept>
#include <utility>

namespace kvrimage {

namespace {

constexpr std::size_t digits_per_byte = 2;

/// How a word stands in bytes and in digits.
struct word_shape {
    explicit word_shape(std::uint32_t width)
        : bytes(kvr::digit_count(width, bits_per_byte)),
          digits(kvr::digit_count(width, bits_per_hex_digit)),
          surplus_bits(static_cast<unsigned>(bytes * bits_per_byte - width)) {}

    /// Whether the most significant byte is one digit.
    [[nodiscard]] bool has_odd_digit() const noexcept { return digits % digits_per_byte != 0; }

    std::size_t bytes;
    std::size_t digits;
    unsigned surplus_bits;
};

template <std::size_t size>
void reverse_each(char* words, std::size_t count) noexcept {
    for (; count != 0; --count, words += size) {
        std::reverse(words, words + size);
    }
}

/// Turns the byte order of the words that stand in @p bytes, @p size bytes each.
void reverse_words(std::span<char> bytes, std::size_t size) noexcept {
    const std::size_t count = bytes.size() / size;
    switch (size) {
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

/// Makes the texts of words, as image_words holds them, of bytes.
class text_maker {
public:
    explicit text_maker(const byte_options& options) : shape(options.width), with(options) {}

    /// The texts of the words in @p bytes, side by side. Valid until the next call.
    std::string_view make(std::string_view bytes, std::uint64_t first_address) {
        if (with.order == byte_order::little && shape.bytes > 1) {
            turned = bytes;
            reverse_words(turned, shape.bytes);
            bytes = turned;
        }
        check_surplus_bits(bytes, first_address);
        texts.resize(bytes.size() * digits_per_byte);
        char* place = texts.data();
        for (const char byte : bytes) {
            kvr::write_hex_pair(place, static_cast<unsigned char>(byte));
            place += digits_per_byte;
        }
        return shape.has_odd_digit() ? without_first_digits() : texts;
    }

private:
    /// @param bytes of words, the most significant ones first
    void check_surplus_bits(std::string_view bytes, std::uint64_t address) const {
        if (shape.surplus_bits == 0) {
            return;
        }
        for (std::size_t begin = 0; begin < bytes.size(); begin += shape.bytes, ++address) {
            const auto top = static_cast<unsigned char>(bytes[begin]);
            if (top >> (bits_per_byte - shape.surplus_bits) != 0) {
                throw std::overflow_error(fmt::format(
                    "the bytes of address 0x{:X} do not fit a word of {} bits", address, with.width));
            }
        }
    }

    /// The texts without the first digit of each word, which is 0.
    std::string_view without_first_digits() noexcept {
        const std::size_t step = shape.digits + 1;
        std::size_t made = 0;
        for (std::size_t begin = 0; begin < texts.size(); begin += step, made += shape.digits) {
            std::memmove(texts.data() + made, texts.data() + begin + 1, shape.digits);
        }
        return std::string_view(texts).substr(0, made);
    }

    word_shape shape;
    const byte_options& with;
    std::string turned;
    std::string texts;
};

std::uint64_t words_in(std::string_view bytes, const word_shape& shape, const byte_options& options) {
    if (bytes.empty()) {
        throw std::invalid_argument("no bytes make no memory");
    }
    const std::size_t rest = bytes.size() % shape.bytes;
    if (rest != 0 && !options.pad) {
        throw std::invalid_argument(
            fmt::format("{} bytes are no whole words of {} bits: the last one has {} of {}", bytes.size(),
                        options.width, rest, shape.bytes));
    }
    return bytes.size() / shape.bytes + (rest != 0 ? 1 : 0);
}

/// How many words are made at once: a page of the store, but fewer of wide ones. No such part crosses the
/// border of the halves of image_words.
std::size_t words_at_once(const word_shape& shape) noexcept {
    constexpr std::size_t most_words = 1024;
    constexpr std::size_t most_bytes = std::size_t{1} << 16U;
    return std::bit_floor(std::clamp<std::size_t>(most_bytes / shape.bytes, 1, most_words));
}

/// Writes the bytes of @p digits, of which there is an even number. False when one of them is "X".
bool write_bytes(std::string_view digits, char* place) noexcept {
    bool are_plain = true;
    for (; digits.size() >= kvr::block_digits; digits.remove_prefix(kvr::block_digits)) {
        std::uint64_t value = 0;
        are_plain &= kvr::read_eight(kvr::load_eight(digits.data()), value);
        for (unsigned shift = 32; shift != 0; ++place) {
            shift -= bits_per_byte;
            *place = static_cast<char>(value >> shift);
        }
    }
    for (; !digits.empty(); digits.remove_prefix(digits_per_byte), ++place) {
        const unsigned high = kvr::digit_value(digits[0]);
        const unsigned low = kvr::digit_value(digits[1]);
        are_plain &= std::max(high, low) < kvr::dont_care_digit;
        *place = static_cast<char>(high << bits_per_hex_digit | low);
    }
    return are_plain;
}

/// Writes the words of an image as bytes.
class byte_writer {
public:
    byte_writer(const memory_image& of, byte_order order, std::string_view text_of_unset)
        : image(of),
          shape(of.width()),
          is_little(order == byte_order::little),
          unset(text_of_unset) {}

    std::string write() {
        const std::uint64_t size = image.depth() * shape.bytes;
        bytes.reserve(static_cast<std::size_t>(size));
        cycle_finder cycles(image.words());
        const auto take_some = [&](std::uint64_t offset) -> std::uint64_t {
            const kvr::word_row row = image.words().row_at(offset);
            if (row.count != 0 && row.length == shape.digits) {
                append_row(row, offset);
                return row.count;
            }
            const auto cycle = cycles.find(offset);
            return cycle ? append_stretch(cycle->first, cycle->period, length_of(*cycle)) : 0;
        };
        for_each_part(image.words(), take_some,
                      [this](const text_run& run) { append_stretch(run.first, 1, length_of(run)); });
        return std::move(bytes);
    }

private:
    void append_row(const kvr::word_row& row, std::uint64_t offset) {
        const std::span<char> added = grow(row.count);
        if (shape.has_odd_digit() || !write_bytes(row.all(), added.data())) {
            for (std::uint32_t index = 0; index < row.count; ++index) {
                write_word(row[index], offset + index, added.data() + index * shape.bytes);
            }
        }
        turn(added);
    }

    /// Appends @p count words, which repeat after @p period of them.
    std::uint64_t append_stretch(std::uint64_t first, std::uint64_t period, std::uint64_t count) {
        const std::size_t begin = bytes.size();
        for (std::uint64_t offset = first; offset < first + period; ++offset) {
            const std::span<char> added = grow(1);
            write_word(image.words()[offset], offset, added.data());
            turn(added);
        }
        const std::uint64_t end = begin + count * shape.bytes;
        while (bytes.size() < end) {
            const auto left = std::min<std::uint64_t>(end - bytes.size(), bytes.size() - begin);
            bytes.append(bytes, begin, left);
        }
        return count;
    }

    std::span<char> grow(std::size_t words) {
        const std::size_t begin = bytes.size();
        bytes.resize(begin + words * shape.bytes);
        return std::span(bytes).subspan(begin);
    }

    void turn(std::span<char> added) const noexcept {
        if (is_little) {
            reverse_words(added, shape.bytes);
        }
    }

    /// Writes the bytes of one word, the most significant one first.
    void write_word(std::string_view text, std::uint64_t offset, char* place) const {
        const std::string_view digits = text.empty() ? unset : text;
        if (digits.empty()) {
            throw std::domain_error(
                fmt::format("the word at address 0x{:X} is not set", image.base() + offset));
        }
        if (digits.size() != shape.digits || !is_plain(digits)) {
            throw std::domain_error(fmt::format("the word at address 0x{:X} has don't-care bits: {}",
                                                image.base() + offset, digits));
        }
        const std::size_t odd = shape.has_odd_digit() ? 1 : 0;
        if (odd != 0) {
            *place = static_cast<char>(kvr::digit_value(digits.front()));
        }
        write_bytes(digits.substr(odd), place + odd);
    }

    const memory_image& image;
    word_shape shape;
    bool is_little;
    std::string_view unset; ///< the text of it; "": there is none
    std::string bytes;
};

} // namespace

memory_image image_of_bytes(std::string_view bytes, const byte_options& options) {
    const word_shape shape(word(options.width).width());
    memory_image image(options.width, words_in(bytes, shape, options), options.base);
    text_maker texts(options);
    const auto set = [&](std::uint64_t offset, std::string_view of) {
        image.words().set_side_by_side(offset, texts.make(of, options.base + offset), shape.digits);
    };
    const std::size_t whole_words = bytes.size() / shape.bytes;
    const std::size_t most_words = words_at_once(shape);
    for (std::size_t offset = 0; offset < whole_words; offset += most_words) {
        const std::size_t count = std::min(most_words, whole_words - offset);
        set(offset, bytes.substr(offset * shape.bytes, count * shape.bytes));
    }
    if (whole_words != image.depth()) {
        std::string last(bytes.substr(whole_words * shape.bytes));
        last.resize(shape.bytes, static_cast<char>(*options.pad));
        set(whole_words, last);
    }
    return image;
}

std::string bytes_of_image(const memory_image& image, byte_order order, const std::optional<word>& unset) {
    if (unset && unset->width() != image.width()) {
        throw std::invalid_argument(
            fmt::format("a word of {} bits for words that are not set: the memory has {}", unset->width(),
                        image.width()));
    }
    const std::string text_of_unset = unset ? text_of_word(*unset) : "";
    return byte_writer(image, order, text_of_unset).write();
}

} // namespace kvrimage
