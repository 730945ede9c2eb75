#include "kvrimage/operations/byte_reshape.h"

#include "kvrimage/files/byte_buffer.h"
#include "kvrimage/image/byte_texts.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/operations/number_reshape.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

using byte_piece = byte_words::block;

/// A block of words as a part of the byte string.
struct string_part {
    std::uint64_t begin;
    std::string_view bytes;

    [[nodiscard]] std::uint64_t end() const noexcept { return begin + bytes.size(); }
};

/// Returns the byte order in which the bit string is a byte string.
byte_order order_of_string(bit_order order) {
    return order == bit_order::low_first ? byte_order::little : byte_order::big;
}

/// Returns the blocks of new words that use the bytes of the old blocks, or nothing if a block begins or ends
/// within a new word.
std::optional<std::vector<byte_piece>> whole_words(std::span<const string_part> parts, std::uint64_t size) {
    std::vector<byte_piece> blocks;
    blocks.reserve(parts.size());
    for (const string_part& part : parts) {
        if (part.begin % size != 0 || part.bytes.size() % size != 0) {
            return std::nullopt;
        }
        blocks.push_back({part.begin / size, part.bytes});
    }
    return blocks;
}

/// Copies the bytes of old words to the positions of the new ones.
class byte_reshaper {
public:
    byte_reshaper(const byte_words& held, std::uint32_t new_size, byte_order order_to)
        : old_size(held.bytes_per_word()),
          size(new_size),
          reverses(old_size > 1 && held.order() != order_to),
          order(order_to) {}

    /// Returns false if bytes of a word are missing and @p pad, the bytes of a word, is empty.
    [[nodiscard]] bool copy(std::span<const string_part> parts, std::string_view pad) {
        made->reserve(room_for(parts, !pad.empty()));
        for (const string_part& part : parts) {
            const bool goes_on = !blocks.empty() && part.begin < end_of_words();
            const bool has_place =
                goes_on ? add_pad(part.begin, pad) : complete(pad) && begin_block(part.begin, pad);
            if (!has_place) {
                return false;
            }
            add(part.bytes);
        }
        return complete(pad);
    }
    [[nodiscard]] byte_words result() {
        std::vector<byte_piece> views;
        views.reserve(blocks.size());
        for (std::size_t index = 0; index < blocks.size(); ++index) {
            const std::size_t end = index + 1 < blocks.size() ? blocks[index + 1].place : made->size();
            const auto bytes = made->text().substr(blocks[index].place, end - blocks[index].place);
            views.push_back({blocks[index].first, bytes});
        }
        return {std::move(views), size * bits_per_byte, order, made};
    }

private:
    struct begun_block {
        std::uint64_t first; ///< the new word
        std::size_t place;   ///< index of its bytes
    };

    /// Returns the size of the bytes of @p parts, padded to whole words. Several parts may be in one word.
    [[nodiscard]] std::uint64_t room_for(std::span<const string_part> parts, bool has_pad) const {
        std::uint64_t all = 0;
        std::uint64_t counted_end = 0;
        for (const string_part& part : parts) {
            const std::uint64_t begin = std::max(part.begin / size * size, counted_end);
            counted_end = (part.end() + size - 1) / size * size;
            all += has_pad ? counted_end - begin : part.bytes.size();
        }
        return all;
    }
    /// Returns the end of the last new word that has bytes so far.
    [[nodiscard]] std::uint64_t end_of_words() const { return (position + size - 1) / size * size; }
    [[nodiscard]] bool complete(std::string_view pad) {
        return blocks.empty() || add_pad(end_of_words(), pad);
    }
    [[nodiscard]] bool begin_block(std::uint64_t begin, std::string_view pad) {
        const bool follows = !blocks.empty() && position == begin;
        if (!follows) {
            blocks.push_back({begin / size, made->size()});
            position = begin / size * size;
        }
        return add_pad(begin, pad);
    }
    /// Appends bytes of the pad up to @p end. Returns false if bytes are missing and there is no pad.
    [[nodiscard]] bool add_pad(std::uint64_t end, std::string_view pad) {
        if (position == end) {
            return true;
        }
        if (pad.empty()) {
            return false;
        }
        const std::uint64_t within = position % size;
        const std::uint64_t missing = end - position;
        made->used(
            pad.copy(made->end(), static_cast<std::size_t>(missing), static_cast<std::size_t>(within)));
        position = end;
        return true;
    }
    void add(std::string_view bytes) {
        // A part that fits the cache.
        constexpr std::size_t usual_part = std::size_t{1} << 15U;
        const std::size_t part =
            reverses ? std::max<std::size_t>(usual_part / old_size, 1) * old_size : bytes.size();
        position += bytes.size();
        for (; !bytes.empty(); bytes.remove_prefix(std::min(part, bytes.size()))) {
            char* const place = made->end();
            const std::size_t count = bytes.copy(place, part);
            if (reverses) {
                reverse_words({place, count}, old_size);
            }
            made->used(count);
        }
    }

    std::uint32_t old_size; ///< bytes of a word
    std::uint32_t size;
    bool reverses;
    byte_order order;
    std::shared_ptr<byte_buffer> made = std::make_shared<byte_buffer>();
    std::vector<begun_block> blocks;
    std::uint64_t position = 0; ///< offset in the string, after the last byte
};

} // namespace

std::optional<byte_words> reshaped_bytes(const image_words& words, const new_words& made) {
    const byte_words* const held = words.bytes();
    if (held == nullptr || (made.pad && made.pad->has_dont_care())) {
        return std::nullopt;
    }
    if (held->width() % bits_per_byte != 0 || made.width % bits_per_byte != 0) {
        return reshaped_numbers(*held, made);
    }
    const std::uint32_t size = made.width / bits_per_byte;
    const byte_order order = order_of_string(made.order);
    std::vector<string_part> parts;
    parts.reserve(held->blocks().size());
    for (const byte_words::block& each : held->blocks()) {
        parts.push_back({each.first * held->bytes_per_word(), each.bytes});
    }
    if (held->bytes_per_word() == 1 || held->order() == order) {
        if (auto blocks = whole_words(parts, size)) {
            return held->with_words(std::move(*blocks), made.width, order);
        }
    }
    byte_reshaper reshaper(*held, size, order);
    if (!reshaper.copy(parts, made.pad ? made.pad->to_bytes(order).value() : "")) {
        return std::nullopt;
    }
    return reshaper.result();
}

} // namespace kvrimage
