#include "kvrimage/operations/selection.h"

#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/range_check.h"
#include "kvrimage/image/united_ranges.h"
#include "kvrimage/image/word_copy.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

/// Returns the part of @p range that lies in @p image, or nothing.
std::optional<address_range> part_within(const memory_image& image, const address_range& range) {
    require_ascending(range);
    const address_range part = {std::max(range.first, image.base()),
                                std::min(range.last, image.last_address())};
    return part.first <= part.last ? std::optional(part) : std::nullopt;
}

/// Returns the offsets of the words of @p image in @p ranges, in order.
std::vector<address_range> offsets_within(const memory_image& image, std::span<const address_range> ranges) {
    std::vector<address_range> offsets;
    for (const address_range& range : ranges) {
        if (const auto part = part_within(image, range)) {
            offsets.push_back({part->first - image.base(), part->last - image.base()});
        }
    }
    return united(std::move(offsets));
}

/// Returns the offsets below @p depth that are not in @p ranges. The ranges are in order.
std::vector<address_range> offsets_between(std::span<const address_range> ranges, std::uint64_t depth) {
    std::vector<address_range> offsets;
    std::uint64_t next = 0;
    for (const address_range& range : ranges) {
        if (next < range.first) {
            offsets.push_back({next, range.first - 1});
        }
        next = range.last + 1;
    }
    if (next < depth) {
        offsets.push_back({next, depth - 1});
    }
    return offsets;
}

/// Returns the words of @p image at @p offsets. They must be stored as bytes.
memory_image bytes_at(const memory_image& image, std::span<const address_range> offsets) {
    const byte_words& words = *image.words().bytes();
    return {image.width(),
            std::make_unique<image_words>(image.depth(), words.with_blocks(words.blocks_at(offsets))),
            image.base()};
}

/// Returns the new address of the word at @p address if the one at @p from moves to @p to.
std::uint64_t moved_address(std::uint64_t address, std::uint64_t from, std::uint64_t to) {
    const bool is_outside =
        to >= from ? address > std::numeric_limits<std::uint64_t>::max() - (to - from) : address < from - to;
    if (is_outside) {
        throw std::out_of_range(
            fmt::format("the word at address 0x{:X} would be {}", address,
                        to >= from ? "beyond the last address of 64 bits" : "before address 0"));
    }
    return address + (to - from);
}

} // namespace

memory_image only(const memory_image& image, std::span<const address_range> ranges) {
    const std::vector<address_range> offsets = offsets_within(image, ranges);
    if (image.words().bytes() != nullptr) {
        return bytes_at(image, offsets);
    }
    memory_image kept(image.width(), image.depth(), image.base());
    for (const address_range& range : offsets) {
        copy_words(image.words(), range.first, range.last, kept.words(), range.first);
    }
    return kept;
}

memory_image except(const memory_image& image, std::span<const address_range> ranges) {
    const std::vector<address_range> offsets = offsets_within(image, ranges);
    if (image.words().bytes() != nullptr) {
        return bytes_at(image, offsets_between(offsets, image.depth()));
    }
    memory_image kept = image;
    for (const address_range& range : offsets) {
        kept.words().fill(range.first, range.last, {""});
    }
    return kept;
}

memory_image moved(const memory_image& image, std::uint64_t from, std::uint64_t to) {
    const std::optional<address_range> words = image.bounds();
    if (!words) {
        return image;
    }
    const address_range places = {moved_address(words->first, from, to),
                                  moved_address(words->last, from, to)};
    const std::uint64_t base = std::min(image.base(), places.first);
    const std::uint64_t last = std::max(image.last_address(), places.last);
    if (last - base >= deepest_memory) {
        throw std::out_of_range(
            fmt::format("the memory would have the addresses 0x{:X} to 0x{:X}, more than 2^32", base, last));
    }
    if (const byte_words* const bytes = image.words().bytes()) {
        std::vector<byte_words::block> blocks = bytes->blocks();
        for (byte_words::block& each : blocks) {
            each.first = moved_address(image.base() + each.first, from, to) - base;
        }
        return {image.width(),
                std::make_unique<image_words>(last - base + 1, bytes->with_blocks(std::move(blocks))), base};
    }
    memory_image made(image.width(), last - base + 1, base);
    copy_words(image.words(), words->first - image.base(), words->last - image.base(), made.words(),
               places.first - base);
    return made;
}

memory_image with_depth(const memory_image& image, std::uint64_t depth) {
    const std::optional<address_range> words = image.bounds();
    if (words && words->last - image.base() >= depth) {
        throw std::out_of_range(fmt::format("the word at address 0x{:X} has no room in a memory of {} words",
                                            words->last, depth));
    }
    memory_image made = image;
    made.resize(depth);
    return made;
}

} // namespace kvrimage
