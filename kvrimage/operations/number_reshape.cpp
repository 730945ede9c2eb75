#include "kvrimage/operations/number_reshape.h"

#include "kvr/numeric/character_block.h"
#include "kvrimage/files/byte_buffer.h"
#include "kvrimage/image/byte_texts.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/image/work_position.h"
#include "kvrimage/operations/bit_block.h"
#include "kvrimage/operations/byte_numbers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

/// Adjacent blocks of old words.
struct word_string {
    std::uint64_t first; ///< offset of the first word
    std::uint64_t end;   ///< offset after the last word
    std::span<const byte_words::block> blocks;
};

std::vector<word_string> strings_of(const byte_words& held) {
    std::vector<word_string> strings;
    for (const byte_words::block& each : held.blocks()) {
        const std::uint64_t end = each.last(held.bytes_per_word()) + 1;
        if (!strings.empty() && strings.back().end == each.first) {
            strings.back().end = end;
            strings.back().blocks = {strings.back().blocks.data(), strings.back().blocks.size() + 1};
        } else {
            strings.push_back({each.first, end, {&each, 1}});
        }
    }
    return strings;
}

// Queues of bits. Before a word is put in, they have fewer bits than a new word, so 128 are enough. A shift
// by 64 bits is made of two.

/// Takes the least significant bits of the first words first.
class low_first_queue {
public:
    low_first_queue(std::uint32_t width_in, std::uint32_t width_out) noexcept
        : in(width_in),
          out(width_out) {}

    [[nodiscard]] bool has_word() const noexcept { return count >= out; }
    [[nodiscard]] bool has_part() const noexcept { return count != 0; }
    void put(std::uint64_t value) noexcept {
        low |= value << count;
        high = value >> 1U >> (bits_per_limb - 1 - count);
        count += in;
    }
    [[nodiscard]] std::uint64_t take() noexcept {
        const std::uint64_t value = low & low_ones_of_limb(out);
        low = low >> 1U >> (out - 1) | high << (bits_per_limb - out);
        high = high >> 1U >> (out - 1);
        count -= out;
        return value;
    }
    /// Returns the bits of a part of a word and, for those that are missing, the bits of @p pad.
    [[nodiscard]] std::uint64_t completed(std::uint64_t pad) const noexcept {
        return low | pad >> count << count;
    }

private:
    std::uint32_t in;
    std::uint32_t out;
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    std::uint32_t count = 0; ///< bits in the queue
};

/// Takes the most significant bits of the first words first.
class high_first_queue {
public:
    high_first_queue(std::uint32_t width_in, std::uint32_t width_out) noexcept
        : in(width_in),
          out(width_out) {}

    [[nodiscard]] bool has_word() const noexcept { return count >= out; }
    [[nodiscard]] bool has_part() const noexcept { return count != 0; }
    void put(std::uint64_t value) noexcept {
        high = high << 1U << (in - 1) | low >> (bits_per_limb - in);
        low = low << 1U << (in - 1) | value;
        count += in;
    }
    [[nodiscard]] std::uint64_t take() noexcept {
        count -= out;
        return (low >> count | high << 1U << (bits_per_limb - 1 - count)) & low_ones_of_limb(out);
    }
    /// Returns the bits of a part of a word and, for those that are missing, the bits of @p pad.
    [[nodiscard]] std::uint64_t completed(std::uint64_t pad) const noexcept {
        const std::uint32_t missing = out - count;
        return (low << missing & low_ones_of_limb(out)) | (pad & low_ones_of_limb(missing));
    }

private:
    std::uint32_t in;
    std::uint32_t out;
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    std::uint32_t count = 0; ///< bits in the queue; those above are of words that were taken
};

class number_reshaper {
public:
    number_reshaper(const byte_words& from, const new_words& to)
        : held(from),
          reader(from),
          width(to.width),
          size((to.width - 1) / bits_per_byte + 1),
          pad(to.pad ? to.pad->to_unsigned() : std::nullopt) {}

    /// Converts @p strings, which must begin with a new word, and end with one if there is no pad.
    template <class Queue>
    [[nodiscard]] byte_words result(std::span<const word_string> strings) {
        std::uint64_t words = 0;
        for (const word_string& each : strings) {
            words += count_new(each);
        }
        made->reserve(words * size + bytes_per_limb); // numbers are written as whole limbs
        std::vector<byte_words::block> blocks;
        blocks.reserve(strings.size());
        for (const word_string& each : strings) {
            const std::uint64_t bytes = count_new(each) * size;
            blocks.push_back(
                {each.first * held.width() / width, {made->end(), static_cast<std::size_t>(bytes)}});
            convert(each, Queue(held.width(), width), words * size);
        }
        return {std::move(blocks), width, held.order(), made};
    }
    [[nodiscard]] std::uint64_t bits_after_last_word(const word_string& of) const noexcept {
        return (of.end - of.first) * held.width() % width;
    }

private:
    [[nodiscard]] std::uint64_t count_new(const word_string& of) const noexcept {
        return ((of.end - of.first) * held.width() + width - 1) / width;
    }
    template <class Queue>
    void convert(const word_string& from, Queue queue, std::uint64_t all_bytes) {
        const std::size_t part =
            byte_number_reader::most_at_once / held.bytes_per_word() * held.bytes_per_word();
        for (const byte_words::block& each : from.blocks) {
            for (std::string_view left = each.bytes; !left.empty();) {
                const std::string_view some = left.substr(0, part);
                note_work(made->size(), all_bytes);
                char* place = made->end();
                reader.read(some, [&](const wide_number& value) {
                    for (queue.put(value.low); queue.has_word(); place += size) {
                        kvr::store_eight(queue.take(), place);
                    }
                });
                use(place);
                left.remove_prefix(some.size());
            }
        }
        if (queue.has_part()) {
            kvr::store_eight(queue.completed(*pad), made->end());
            use(made->end() + size);
        }
    }
    /// Appends the words up to @p end.
    void use(char* end) {
        if (held.order() == byte_order::big) {
            reverse_words({made->end(), end}, size);
        }
        made->used(static_cast<std::size_t>(end - made->end()));
    }

    const byte_words& held;
    byte_number_reader reader;
    std::uint32_t width;
    std::uint32_t size; ///< bytes of a new word
    std::optional<std::uint64_t> pad;
    std::shared_ptr<byte_buffer> made = std::make_shared<byte_buffer>();
};

} // namespace

std::optional<byte_words> reshaped_numbers(const byte_words& held, const new_words& made) {
    if (held.width() > bits_per_limb || made.width > bits_per_limb) {
        return std::nullopt;
    }
    number_reshaper reshaper(held, made);
    const std::vector<word_string> strings = strings_of(held);
    const bool is_possible = std::ranges::all_of(strings, [&](const word_string& each) {
        return each.first * held.width() % made.width == 0 &&
               (made.pad.has_value() || reshaper.bits_after_last_word(each) == 0);
    });
    if (!is_possible) {
        return std::nullopt;
    }
    return made.order == bit_order::low_first ? reshaper.result<low_first_queue>(strings)
                                              : reshaper.result<high_first_queue>(strings);
}

} // namespace kvrimage
