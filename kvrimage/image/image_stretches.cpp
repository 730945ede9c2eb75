#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_stretch.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

/// Words side by side that are not set.
struct word_gap {
    std::uint64_t first;
    std::uint64_t count;
};

/// Those of @p words, which has them to before @p end.
std::vector<word_gap> gaps_of(const byte_words& words, std::uint64_t end) {
    std::vector<word_gap> gaps;
    std::uint64_t next = 0;
    const auto add_gap_before = [&](std::uint64_t offset) {
        if (next < offset) {
            gaps.push_back({next, offset - next});
        }
    };
    for (const byte_words::block& each : words.blocks()) {
        add_gap_before(each.first);
        next = each.last(words.bytes_per_word()) + 1;
    }
    add_gap_before(end);
    return gaps;
}

/// @p count times the bytes of @p value, a plain word.
std::shared_ptr<const std::string> repeated_word(const word& value, byte_order order, std::uint64_t count) {
    const std::string bytes = value.to_bytes(order).value();
    auto repeated = std::make_shared<std::string>();
    const std::uint64_t size = count * bytes.size();
    repeated->reserve(static_cast<std::size_t>(size));
    for (; count != 0; --count) {
        *repeated += bytes;
    }
    return repeated;
}

/// @p words, held as bytes, with @p value, a plain word, in their gaps; nothing where these are so much
/// longer than what is held that they cost less as a fill.
std::optional<byte_words> filled_bytes(const image_words& words, const word& value) {
    constexpr std::uint64_t small_gap = std::uint64_t{1} << 16U; // bytes
    constexpr std::uint64_t most_growth = 4;
    constexpr std::uint64_t longest_block = std::uint64_t{1}
                                            << 20U; // bytes, which all blocks of the gaps share
    const byte_words& held = *words.bytes();
    const std::uint64_t size = held.bytes_per_word();
    const std::vector<word_gap> gaps = gaps_of(held, words.size());
    std::uint64_t unset = 0;
    std::uint64_t longest = 0;
    for (const word_gap& gap : gaps) {
        unset += gap.count;
        longest = std::max(longest, gap.count);
    }
    if (unset > std::max(most_growth * (words.size() - unset), small_gap / size)) {
        return std::nullopt;
    }
    const std::uint64_t in_block = std::min(longest, std::max<std::uint64_t>(longest_block / size, 1));
    const auto filling = repeated_word(value, held.order(), in_block);
    std::vector<byte_words::block> blocks = held.blocks();
    for (const word_gap& gap : gaps) {
        for (std::uint64_t done = 0; done < gap.count; done += in_block) {
            const std::uint64_t bytes = std::min(in_block, gap.count - done) * size;
            blocks.push_back(
                {gap.first + done, std::string_view(*filling).substr(0, static_cast<std::size_t>(bytes))});
        }
    }
    std::ranges::sort(blocks, {}, &byte_words::block::first);
    return held.with_blocks(std::move(blocks), filling);
}

} // namespace

void memory_image::fill_unset(const word& value) {
    if (value.width() != bits) {
        throw std::invalid_argument("the word has another width than the memory");
    }
    if (contents->bytes() != nullptr && !value.has_dont_care()) {
        if (auto filled = filled_bytes(*contents, value)) {
            contents = std::make_unique<image_words>(depth(), std::move(*filled));
            return;
        }
    }
    const std::string text = text_of_word(value);
    const auto skip_cycle = [](const text_cycle& cycle) { return length_of(cycle); };
    for_each_cycle_or_run(*contents, skip_cycle, [this, &text](const text_run& run) {
        if (run.text.empty()) {
            contents->fill(run.first, run.last, {text});
        }
    });
}

std::uint64_t memory_image::count_set(const address_range& range) const {
    const address_range offsets = offsets_of(range);
    std::uint64_t count = 0;
    if (const byte_words* const bytes = contents->bytes()) {
        for (const byte_words::block& each : bytes->blocks_at({&offsets, 1})) {
            count += each.bytes.size() / bytes->bytes_per_word();
        }
        return count;
    }
    for (std::uint64_t offset = offsets.first; offset <= offsets.last;) {
        const word_stretch stretch = stretch_at(*contents, offset);
        const std::uint64_t end = std::min(stretch.last, offsets.last) + 1;
        count += stretch.is_set ? end - offset : 0;
        offset = end;
    }
    return count;
}

void memory_image::resize(std::uint64_t depth) {
    if (depth == 0 || depth > deepest_memory) {
        throw std::invalid_argument("a memory has 1 to 2^32 words");
    }
    if (depth - 1 > std::numeric_limits<std::uint64_t>::max() - lowest) {
        throw std::invalid_argument("addresses have 64 bits");
    }
    contents->resize(depth);
}

repetition memory_image::repetition_at(std::uint64_t address) const {
    if (address < lowest || address > last_address()) {
        throw std::out_of_range("the address is not in the memory");
    }
    if (const byte_words* const bytes = contents->bytes()) {
        return {lowest + bytes->last_of_run(address - lowest, depth()), 1};
    }
    const text_cycle cycle = contents->cycle_at(address - lowest);
    if (cycle.period > 1) {
        return {lowest + cycle.last, cycle.period};
    }
    return {lowest + contents->run_at(address - lowest).last, 1};
}

} // namespace kvrimage
