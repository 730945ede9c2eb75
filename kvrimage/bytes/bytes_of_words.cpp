#include "kvrimage/bytes/bytes_of_words.h"

#include "kvrimage/image/byte_texts.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/hex_text.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

namespace kvrimage {

namespace {

using take_block = std::function<void(std::uint64_t address, std::string_view bytes)>;

/// The most bytes collected before they are passed on, unless one word is larger.
constexpr std::size_t most_at_once = std::size_t{64} << 10U;

class byte_gatherer {
public:
    byte_gatherer(const memory_image& image, byte_order in_order, const take_block& to)
        : base(image.base()),
          bytes_per_word(bytes_of_width(image.width())),
          has_odd_digits(word_shape(image.width()).has_odd_digit()),
          reverses(in_order == byte_order::little && bytes_per_word > 1),
          take(to) {}

    void add_row(const kvr::word_row& row, std::uint64_t offset) {
        for (std::uint32_t first = 0; first < row.count;) {
            begin(offset + first);
            const auto room = static_cast<std::uint32_t>(most_at_once - buffer.size()) / bytes_per_word;
            const std::uint32_t count = std::min(row.count - first, std::max(room, 1U));
            add_digits(row.part(first, count).all(), count);
            first += count;
        }
    }
    void add_run(const text_run& run) {
        if (length_of(run) * bytes_per_word > most_at_once) {
            flush();
            add_digits(run.text, 1);
            repeat(run.first, length_of(run));
            return;
        }
        for (std::uint64_t offset = run.first; offset <= run.last; ++offset) {
            begin(offset);
            add_digits(run.text, 1);
        }
    }
    /// Adds a cycle and returns the number of words added: 0 if its period is too long or the cycle is too
    /// short to benefit.
    std::uint64_t add_cycle(const image_words& words, const text_cycle& cycle) {
        if (std::uint64_t{cycle.period} * bytes_per_word > most_at_once ||
            cycle.length() * bytes_per_word <= 2 * most_at_once) {
            return 0;
        }
        flush();
        for (std::uint64_t index = 0; index < cycle.period; ++index) {
            add_digits(words[cycle.first + index], 1);
        }
        repeat(cycle.first, cycle.length());
        return cycle.length();
    }
    void flush() {
        if (!buffer.empty()) {
            take(address, buffer);
            buffer.clear();
        }
    }

private:
    void begin(std::uint64_t offset) {
        const std::uint64_t first = (base + offset) * bytes_per_word;
        if (first != address + buffer.size() || buffer.size() + bytes_per_word > most_at_once) {
            flush();
            address = first;
        }
    }
    /// Passes on @p count words from @p offset on that repeat those in the buffer, which is empty afterwards.
    void repeat(std::uint64_t offset, std::uint64_t count) {
        const std::string once = buffer;
        while (buffer.size() + once.size() <= most_at_once) {
            buffer += once;
        }
        address = (base + offset) * bytes_per_word;
        for (std::uint64_t left = count * bytes_per_word; left != 0;) {
            const std::uint64_t length = std::min<std::uint64_t>(left, buffer.size());
            take(address, std::string_view(buffer).substr(0, static_cast<std::size_t>(length)));
            address += length;
            left -= length;
        }
        buffer.clear();
    }
    /// Adds the bytes of @p count words with concatenated digits.
    void add_digits(std::string_view digits, std::uint32_t count) {
        const std::size_t begin = buffer.size();
        buffer.resize(begin + std::size_t{count} * bytes_per_word);
        if (has_odd_digits) {
            const std::size_t length = digits.size() / count;
            for (std::size_t at = begin; !digits.empty();
                 digits.remove_prefix(length), at += bytes_per_word) {
                even.assign(1, '0').append(digits.substr(0, length));
                static_cast<void>(decode_hex(even, &buffer[at]));
            }
        } else {
            static_cast<void>(decode_hex(digits, &buffer[begin]));
        }
        if (reverses) {
            reverse_words(std::span(buffer).subspan(begin), bytes_per_word);
        }
    }

    std::uint64_t base;
    std::uint32_t bytes_per_word;
    bool has_odd_digits;
    bool reverses;
    const take_block& take;
    std::uint64_t address = 0; ///< of the first byte in the buffer
    std::string buffer;
    std::string even;
};

/// Passes on words stored as bytes.
void take_held_bytes(const byte_words& words, std::uint64_t base, byte_order order, const take_block& take) {
    const std::uint32_t size = words.bytes_per_word();
    const bool as_they_are = size == 1 || words.order() == order;
    const std::size_t at_once = std::max<std::size_t>(most_at_once / size, 1) * size;
    std::string reversed;
    for (const byte_words::block& block : words.blocks()) {
        std::uint64_t address = (base + block.first) * size;
        if (as_they_are) {
            take(address, block.bytes);
            continue;
        }
        for (std::string_view left = block.bytes; !left.empty();) {
            reversed.assign(left.substr(0, at_once));
            left.remove_prefix(reversed.size());
            reverse_words(reversed, size);
            take(address, reversed);
            address += reversed.size();
        }
    }
}

} // namespace

void for_each_byte_block(const memory_image& image, byte_order order, const take_block& take) {
    if (const byte_words* const bytes = image.words().bytes()) {
        take_held_bytes(*bytes, image.base(), order, take);
        return;
    }
    byte_gatherer bytes(image, order, take);
    for_each_row_cycle_or_run(
        image.words(),
        [&bytes](const kvr::word_row& row, std::uint64_t offset) {
            bytes.add_row(row, offset);
            return row.count;
        },
        [&](const text_cycle& cycle) { return bytes.add_cycle(image.words(), cycle); },
        [&bytes](const text_run& run) { bytes.add_run(run); });
    bytes.flush();
}

} // namespace kvrimage
