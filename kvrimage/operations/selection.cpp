#include "kvrimage/operations/selection.h"

#include "kvrimage/image/word_copy.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <stdexcept>

namespace kvrimage {

namespace {

/// The part of @p range that is in @p image; nothing when none is.
std::optional<address_range> part_within(const memory_image& image, const address_range& range) {
    if (range.last < range.first) {
        throw std::invalid_argument(
            fmt::format("the range 0x{:X} to 0x{:X} ends before it begins", range.first, range.last));
    }
    const address_range part = {std::max(range.first, image.base()),
                                std::min(range.last, image.last_address())};
    return part.first <= part.last ? std::optional(part) : std::nullopt;
}

/// Where the word at @p address is when that at @p from has moved to @p to.
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
    memory_image kept(image.width(), image.depth(), image.base());
    for (const address_range& range : ranges) {
        if (const auto part = part_within(image, range)) {
            copy_words(image.words(), part->first - image.base(), part->last - image.base(), kept.words(),
                       part->first - image.base());
        }
    }
    return kept;
}

memory_image except(const memory_image& image, std::span<const address_range> ranges) {
    memory_image kept = image;
    for (const address_range& range : ranges) {
        if (const auto part = part_within(image, range)) {
            kept.unset(*part);
        }
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
