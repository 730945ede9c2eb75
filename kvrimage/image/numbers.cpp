#include "kvrimage/image/numbers.h"

#include "kvr/memory/store/word_row.h"
#include "kvr/numeric/character_block.h"
#include "kvr/numeric/digit_blocks.h"
#include "kvrimage/image/byte_texts.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/hex_text.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/number_of_bytes.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace kvrimage {

namespace {

constexpr byte_order native_order =
    std::endian::native == std::endian::little ? byte_order::little : byte_order::big;

/// Copies words to numbers of at least their width.
template <class Number>
class number_copier {
public:
    number_copier(const memory_image& of, std::uint64_t for_unset)
        : image(of),
          unset(static_cast<Number>(for_unset)) {}

    void copy(std::uint64_t offset, std::span<Number> out) const {
        if (const byte_words* const bytes = image.words().bytes()) {
            copy_bytes(*bytes, offset, out);
            return;
        }
        while (!out.empty()) {
            const std::size_t copied = copy_some(offset, out);
            offset += copied;
            out = out.subspan(copied);
        }
    }

private:
    static std::span<char> bytes_of(std::span<Number> numbers) noexcept {
        return {reinterpret_cast<char*>(numbers.data()), numbers.size_bytes()};
    }

    void copy_bytes(const byte_words& bytes, std::uint64_t offset, std::span<Number> out) const {
        std::ranges::fill(out, unset);
        const std::uint64_t end = offset + out.size();
        for (const byte_words::block& block : bytes.blocks()) {
            const std::uint64_t first = std::max(offset, block.first);
            const std::uint64_t last = std::min(end - 1, block.last(bytes.bytes_per_word()));
            if (first <= last) {
                const std::string_view words =
                    block.bytes.substr((first - block.first) * bytes.bytes_per_word(),
                                       (last - first + 1) * bytes.bytes_per_word());
                copy_block(words, bytes, out.subspan(first - offset, last - first + 1));
            }
        }
    }

    static void copy_block(std::string_view words, const byte_words& bytes, std::span<Number> out) {
        const std::uint32_t size = bytes.bytes_per_word();
        if (size == sizeof(Number)) {
            std::memcpy(out.data(), words.data(), words.size());
            if (bytes.order() != native_order) {
                reverse_words(bytes_of(out), size);
            }
            return;
        }
        for (std::size_t index = 0; index < out.size(); ++index) {
            out[index] =
                static_cast<Number>(number_of_bytes(words.substr(index * size, size), bytes.order()));
        }
    }

    std::size_t copy_some(std::uint64_t offset, std::span<Number> out) const {
        const kvr::word_row row = image.words().row_at(offset);
        if (row.count == 0) {
            const text_run run = image.words().run_at(offset);
            const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(length_of(run), out.size()));
            std::ranges::fill(out.first(count), run.text.empty() ? unset : number_of(run.text, offset));
            return count;
        }
        const auto count = std::min<std::size_t>(row.count, out.size());
        if (!decode(row.part(0, static_cast<std::uint32_t>(count)), out.first(count))) {
            for (std::uint32_t index = 0; index < count; ++index) {
                out[index] = number_of(row[index], offset + index);
            }
        }
        return count;
    }

    /// Decodes a whole row. Returns false if a word has a don't-care digit or if there is no method faster
    /// than word by word; @p out is then unspecified.
    static bool decode(const kvr::word_row& row, std::span<Number> out) {
        constexpr std::size_t digits_of_byte = 2;
        if (row.length != digits_of_byte * sizeof(Number)) {
            return row.length < kvr::block_digits && decode_short_words(row, out);
        }
        if (!decode_hex(row.all(), bytes_of(out).data())) {
            return false;
        }
        if (native_order == byte_order::little) {
            reverse_words(bytes_of(out), sizeof(Number));
        }
        return true;
    }

    /// Decodes words of less than eight digits: loads eight characters and replaces those outside the word by
    /// zeros.
    static bool decode_short_words(const kvr::word_row& row, std::span<Number> out) {
        const std::size_t surplus = kvr::block_digits - row.length;
        const auto bits = static_cast<unsigned>(surplus * bits_per_byte);
        const std::uint64_t zeros = kvr::eight_of('0') >> (kvr::block_digits * bits_per_byte - bits);
        const std::string_view texts = row.all();
        bool are_digits = true;
        std::uint64_t value = 0;
        std::size_t index = 0;
        for (; (index + 1) * row.length + surplus <= texts.size(); ++index) {
            const std::uint64_t eight = kvr::load_eight(texts.data() + index * row.length);
            are_digits = kvr::read_eight(eight << bits | zeros, value) && are_digits;
            out[index] = static_cast<Number>(value);
        }
        for (; index < out.size(); ++index) {
            const bool is_word = read_small_word(row[static_cast<std::uint32_t>(index)], value);
            are_digits = std::min(are_digits, is_word);
            out[index] = static_cast<Number>(value);
        }
        return are_digits;
    }

    [[nodiscard]] Number number_of(std::string_view text, std::uint64_t offset) const {
        std::uint64_t value = 0;
        if (text.size() > most_small_digits || !read_small_word(text, value)) {
            throw std::domain_error(fmt::format("the word at address 0x{:X} has don't-care bits: {}",
                                                image.base() + offset, text));
        }
        return static_cast<Number>(value);
    }

    const memory_image& image;
    Number unset;
};

template <class Number>
void copy_numbers_of(const memory_image& image, std::uint64_t first, std::span<Number> out,
                     std::uint64_t unset) {
    constexpr auto most_bits = static_cast<std::uint32_t>(std::numeric_limits<Number>::digits);
    if (image.width() > most_bits) {
        throw std::domain_error(
            fmt::format("words of {} bits do not fit numbers of {}", image.width(), most_bits));
    }
    if (out.empty()) {
        return;
    }
    if (first < image.base() || first > image.last_address()) {
        throw std::out_of_range(fmt::format("address 0x{:X}: the memory has 0x{:X} to 0x{:X}", first,
                                            image.base(), image.last_address()));
    }
    const std::uint64_t offset = first - image.base();
    if (out.size() > image.depth() - offset) {
        throw std::out_of_range(fmt::format("{} words from address 0x{:X} on: the memory ends with 0x{:X}",
                                            out.size(), first, image.last_address()));
    }
    number_copier<Number>(image, unset).copy(offset, out);
}

} // namespace

void copy_numbers(const memory_image& image, std::uint64_t first, std::span<std::uint8_t> out,
                  std::uint64_t unset) {
    copy_numbers_of(image, first, out, unset);
}

void copy_numbers(const memory_image& image, std::uint64_t first, std::span<std::uint16_t> out,
                  std::uint64_t unset) {
    copy_numbers_of(image, first, out, unset);
}

void copy_numbers(const memory_image& image, std::uint64_t first, std::span<std::uint32_t> out,
                  std::uint64_t unset) {
    copy_numbers_of(image, first, out, unset);
}

void copy_numbers(const memory_image& image, std::uint64_t first, std::span<std::uint64_t> out,
                  std::uint64_t unset) {
    copy_numbers_of(image, first, out, unset);
}

void copy_is_set(const memory_image& image, std::span<bool> out) {
    if (out.size() != image.depth()) {
        throw std::invalid_argument(fmt::format("{} elements for {} words", out.size(), image.depth()));
    }
    std::ranges::fill(out, false);
    for_each_set_stretch(image.words(), [out](std::uint64_t first, std::uint64_t last) {
        std::ranges::fill(out.subspan(first, last - first + 1), true);
    });
}

std::optional<number_array> numbers_in_place(const memory_image& image) {
    const byte_words* const bytes = image.words().bytes();
    if (bytes == nullptr || bytes->blocks().size() != 1 || bytes->bytes_per_word() > sizeof(std::uint64_t) ||
        !std::has_single_bit(bytes->bytes_per_word())) {
        return std::nullopt;
    }
    const byte_words::block& all = bytes->blocks().front();
    const std::uint64_t count = all.bytes.size() / bytes->bytes_per_word();
    if (count != image.depth()) {
        return std::nullopt;
    }
    return number_array{all.bytes.data(), bytes->bytes_per_word(), bytes->order(), count,
                        std::make_shared<byte_words>(*bytes)};
}

} // namespace kvrimage
