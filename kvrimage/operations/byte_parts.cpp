#include "kvrimage/operations/byte_parts.h"

#include "kvrimage/files/byte_buffer.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace kvrimage {

namespace {

/// Pieces of equal size at a constant distance in bytes.
template <class Byte>
struct piece_row {
    Byte* first;
    std::size_t step;
};

template <std::size_t size>
void copy_each(const piece_row<const char>& from, const piece_row<char>& to, std::size_t count) noexcept {
    for (std::size_t index = 0; index < count; ++index) {
        std::memcpy(to.first + index * to.step, from.first + index * from.step, size);
    }
}

/// Copies @p count pieces of @p size bytes.
void copy_pieces(const piece_row<const char>& from, const piece_row<char>& to, std::size_t size,
                 std::size_t count) noexcept {
    switch (size) {
    case sizeof(std::uint8_t):
        return copy_each<sizeof(std::uint8_t)>(from, to, count);
    case sizeof(std::uint16_t):
        return copy_each<sizeof(std::uint16_t)>(from, to, count);
    case sizeof(std::uint32_t):
        return copy_each<sizeof(std::uint32_t)>(from, to, count);
    case sizeof(std::uint64_t):
        return copy_each<sizeof(std::uint64_t)>(from, to, count);
    default:
        for (std::size_t index = 0; index < count; ++index) {
            std::memcpy(to.first + index * to.step, from.first + index * from.step, size);
        }
    }
}

/// The blocks may share bytes, so this may be more than fits the memory.
std::uint64_t bytes_in(const byte_words& words) {
    std::uint64_t bytes = 0;
    for (const byte_words::block& each : words.blocks()) {
        bytes += each.bytes.size();
    }
    return bytes;
}

std::shared_ptr<byte_buffer> buffer_of(std::uint64_t bytes) {
    auto buffer = std::make_shared<byte_buffer>();
    buffer->reserve(std::max<std::uint64_t>(bytes, 1));
    return buffer;
}

/// Returns the byte offset of lane @p lane in a word of @p lanes lanes.
std::size_t place_of_lane(std::size_t lane, std::size_t lanes, std::size_t lane_bytes, byte_order order) {
    return (order == byte_order::little ? lane : lanes - 1 - lane) * lane_bytes;
}

memory_image lane_of(const memory_image& image, const byte_words& words, std::uint32_t bits,
                     std::size_t lane) {
    const std::size_t lane_bytes = bits / bits_per_byte;
    const std::size_t size = words.bytes_per_word();
    const std::size_t begin = place_of_lane(lane, size / lane_bytes, lane_bytes, words.order());
    const auto made = buffer_of(bytes_in(words) / size * lane_bytes);
    std::vector<byte_words::block> blocks;
    for (const byte_words::block& each : words.blocks()) {
        const std::size_t count = each.bytes.size() / size;
        copy_pieces({each.bytes.data() + begin, size}, {made->end(), lane_bytes}, lane_bytes, count);
        blocks.push_back({each.first, {made->end(), count * lane_bytes}});
        made->used(count * lane_bytes);
    }
    return {bits,
            std::make_unique<image_words>(image.depth(),
                                          byte_words(std::move(blocks), bits, words.order(), made)),
            image.base()};
}

memory_image bank_of(const memory_image& image, const byte_words& words, std::uint64_t count,
                     std::uint64_t bank) {
    const std::size_t size = words.bytes_per_word();
    const std::uint64_t most_words = bytes_in(words) / size / count + words.blocks().size();
    const auto made = buffer_of(most_words * size);
    std::vector<byte_words::block> blocks;
    for (const byte_words::block& each : words.blocks()) {
        const std::uint64_t length = each.bytes.size() / size;
        const std::uint64_t skipped = (bank + count - each.first % count) % count;
        if (skipped >= length) {
            continue;
        }
        const std::uint64_t taken_words = (length - skipped - 1) / count + 1;
        const std::uint64_t begin = skipped * size;
        const std::uint64_t step = count * size;
        const auto taken = static_cast<std::size_t>(taken_words);
        copy_pieces({each.bytes.data() + begin, static_cast<std::size_t>(step)}, {made->end(), size}, size,
                    taken);
        blocks.push_back({(each.first + skipped) / count, {made->end(), taken * size}});
        made->used(taken * size);
    }
    return {image.width(),
            std::make_unique<image_words>(image.depth() / count,
                                          byte_words(std::move(blocks), words.width(), words.order(), made)),
            image.base()};
}

bool have_bytes_in_one_order(std::span<const memory_image> parts) {
    const byte_words* const first = parts.front().words().bytes();
    return first != nullptr && std::ranges::all_of(parts, [first](const memory_image& part) {
               const byte_words* const bytes = part.words().bytes();
               return bytes != nullptr && bytes->order() == first->order();
           });
}

/// True if all parts have bytes at the same addresses and the same byte order.
bool are_alike(std::span<const memory_image> parts) {
    const auto is_like_first = [&parts](const memory_image& part) {
        return std::ranges::equal(part.words().bytes()->blocks(), parts.front().words().bytes()->blocks(),
                                  [](const byte_words::block& left, const byte_words::block& right) {
                                      return left.first == right.first &&
                                             left.bytes.size() == right.bytes.size();
                                  });
    };
    return have_bytes_in_one_order(parts) && std::ranges::all_of(parts, is_like_first);
}

/// Joins the words of parts that match. A group has one word of each part; @p place_of returns the position
/// of a part in its group.
template <class PlaceOf>
byte_words joint_bytes(std::span<const memory_image> parts, std::uint32_t width, std::uint64_t words_of_group,
                       PlaceOf&& place_of) {
    const byte_words& first = *parts.front().words().bytes();
    const std::size_t size = first.bytes_per_word();
    const std::size_t group = size * parts.size();
    const auto made = buffer_of(bytes_in(first) * parts.size());
    std::vector<byte_words::block> blocks;
    for (std::size_t index = 0; index < first.blocks().size(); ++index) {
        const byte_words::block& like = first.blocks()[index];
        for (std::size_t part = 0; part < parts.size(); ++part) {
            const std::string_view bytes = parts[part].words().bytes()->blocks()[index].bytes;
            copy_pieces({bytes.data(), size}, {made->end() + place_of(part), group}, size,
                        bytes.size() / size);
        }
        blocks.push_back({like.first * words_of_group, {made->end(), like.bytes.size() * parts.size()}});
        made->used(like.bytes.size() * parts.size());
    }
    return {std::move(blocks), width, first.order(), made};
}

} // namespace

std::optional<std::vector<memory_image>> lanes_of_bytes(const memory_image& image, std::uint32_t bits) {
    const byte_words* const words = image.words().bytes();
    if (words == nullptr || bits % bits_per_byte != 0) {
        return std::nullopt;
    }
    std::vector<memory_image> lanes;
    for (std::uint32_t lane = 0; lane < image.width() / bits; ++lane) {
        lanes.push_back(lane_of(image, *words, bits, lane));
    }
    return lanes;
}

std::optional<std::vector<memory_image>> banks_of_bytes(const memory_image& image, std::uint64_t count) {
    const byte_words* const words = image.words().bytes();
    // Each bank visits each block.
    if (words == nullptr || words->blocks().size() * count > bytes_in(*words)) {
        return std::nullopt;
    }
    std::vector<memory_image> banks;
    for (std::uint64_t bank = 0; bank < count; ++bank) {
        banks.push_back(bank_of(image, *words, count, bank));
    }
    return banks;
}

std::optional<memory_image> join_lanes_of_bytes(std::span<const memory_image> lanes) {
    const memory_image& first = lanes.front();
    if (first.width() % bits_per_byte != 0 || !are_alike(lanes)) {
        return std::nullopt;
    }
    const auto width = static_cast<std::uint32_t>(first.width() * lanes.size());
    const byte_order order = first.words().bytes()->order();
    const std::size_t lane_bytes = first.width() / bits_per_byte;
    auto bytes = joint_bytes(lanes, width, 1, [&](std::size_t lane) {
        return place_of_lane(lane, lanes.size(), lane_bytes, order);
    });
    return memory_image(width, std::make_unique<image_words>(first.depth(), std::move(bytes)), first.base());
}

std::optional<memory_image> join_banks_of_bytes(std::span<const memory_image> banks) {
    const memory_image& first = banks.front();
    if (!are_alike(banks)) {
        return std::nullopt;
    }
    const std::size_t size = first.words().bytes()->bytes_per_word();
    auto bytes =
        joint_bytes(banks, first.width(), banks.size(), [size](std::size_t bank) { return bank * size; });
    return memory_image(first.width(),
                        std::make_unique<image_words>(first.depth() * banks.size(), std::move(bytes)),
                        first.base());
}

std::optional<memory_image> join_blocks_of_bytes(std::span<const memory_image> blocks) {
    const memory_image& first = blocks.front();
    if (!have_bytes_in_one_order(blocks)) {
        return std::nullopt;
    }
    const auto keepers = std::make_shared<std::vector<byte_words>>();
    std::vector<byte_words::block> all;
    for (std::size_t index = 0; index < blocks.size(); ++index) {
        keepers->push_back(*blocks[index].words().bytes());
        for (const byte_words::block& each : keepers->back().blocks()) {
            all.push_back({index * first.depth() + each.first, each.bytes});
        }
    }
    const byte_order order = keepers->front().order();
    return memory_image(
        first.width(),
        std::make_unique<image_words>(first.depth() * blocks.size(),
                                      byte_words(std::move(all), first.width(), order, keepers)),
        first.base());
}

} // namespace kvrimage
