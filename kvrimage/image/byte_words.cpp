#include "kvrimage/image/byte_words.h"

#include "kvrimage/image/byte_texts.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace kvrimage {

namespace {

using byte_block_of_words = byte_words::block;

/// Returns the part of @p block within @p range. They must overlap.
byte_block_of_words part_of(const byte_block_of_words& block, const address_range& range,
                            std::uint32_t bytes_per_word) {
    const std::uint64_t first = std::max(block.first, range.first);
    const std::uint64_t last = std::min(block.last(bytes_per_word), range.last);
    const std::uint64_t begin = (first - block.first) * bytes_per_word;
    const std::uint64_t size = (last - first + 1) * bytes_per_word;
    return {first, block.bytes.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(size))};
}

/// Counts the words at the front of @p bytes that equal @p word, at most @p most.
std::uint64_t count_equal_words(std::string_view word, std::string_view bytes, std::uint64_t most) {
    std::uint64_t count = 0;
    while (count < most && bytes.starts_with(word)) {
        bytes.remove_prefix(word.size());
        ++count;
    }
    return count;
}

} // namespace

std::vector<byte_words::block> byte_words::blocks_at(std::span<const address_range> offsets) const {
    std::vector<block> found;
    const auto last_of = [this](const block& each) { return each.last(size); };
    for (const address_range& range : offsets) {
        auto each = std::ranges::lower_bound(all, range.first, {}, last_of);
        for (; each != all.end() && each->first <= range.last; ++each) {
            found.push_back(part_of(*each, range, size));
        }
    }
    return found;
}

byte_words byte_words::with_blocks(std::vector<block> in_order,
                                   std::shared_ptr<const void> keeps_others) const {
    if (!keeps_others) {
        return {std::move(in_order), bits, their_order, keeper};
    }
    using keepers = std::pair<std::shared_ptr<const void>, std::shared_ptr<const void>>;
    return {std::move(in_order), bits, their_order,
            std::make_shared<const keepers>(keeper, std::move(keeps_others))};
}

byte_words byte_words::part(std::uint64_t first, std::uint64_t last) const {
    const address_range offsets = {first, last};
    std::vector<block> moved = blocks_at({&offsets, 1});
    for (block& each : moved) {
        each.first -= first;
    }
    return with_blocks(std::move(moved));
}

std::optional<word> byte_words::word_at(std::uint64_t offset) const {
    const auto after = std::ranges::upper_bound(all, offset, {}, &block::first);
    if (after == all.begin()) {
        return std::nullopt;
    }
    const block& found = *std::prev(after);
    if (offset > found.last(size)) {
        return std::nullopt;
    }
    byte_texts texts(bits, their_order);
    const std::uint64_t begin = (offset - found.first) * size;
    return word_of_text(texts.make(found.bytes.substr(begin, size)), bits);
}

std::uint64_t byte_words::last_of_run(std::uint64_t offset, std::uint64_t end) const {
    auto found = std::ranges::upper_bound(all, offset, {}, &block::first);
    const std::uint64_t next_block = found != all.end() ? std::min(found->first, end) : end;
    if (found == all.begin() || offset > (--found)->last(size)) {
        return next_block - 1;
    }
    const std::uint64_t begin = (offset - found->first) * size;
    const std::string_view word = found->bytes.substr(begin, size);
    std::uint64_t next = offset + count_equal_words(word, found->bytes.substr(begin), end - offset);
    while (next == found->last(size) + 1 && ++found != all.end() && found->first == next) {
        next += count_equal_words(word, found->bytes, end - next);
    }
    return next - 1;
}

void byte_words::set_in(image_words& words) const {
    byte_word_setter setter(bits, their_order, words);
    for (const block& each : all) {
        setter.set(each.first, each.bytes);
    }
    setter.flush();
}

} // namespace kvrimage
