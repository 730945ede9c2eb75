#include "kvrimage/image/memory_image.h"

#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/differing_runs.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/numbers.h"
#include "kvrimage/image/range_check.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

constexpr std::uint64_t highest_address = std::numeric_limits<std::uint64_t>::max();

void check_memory(std::uint32_t width, std::uint64_t depth, std::uint64_t base) {
    if (width == 0 || width > widest_word) {
        throw std::invalid_argument(
            fmt::format("a memory with words of {} bits: the width is 1 to {}", width, widest_word));
    }
    if (depth == 0 || depth > deepest_memory) {
        throw std::invalid_argument(
            fmt::format("a memory of {} words: the depth is 1 to {}", depth, deepest_memory));
    }
    if (depth - 1 > highest_address - base) {
        throw std::invalid_argument(
            fmt::format("a memory of {} words from address 0x{:X} on: addresses have 64 bits", depth, base));
    }
}

} // namespace

memory_image::memory_image(std::uint32_t width, std::uint64_t depth, std::uint64_t base)
    : bits(width),
      lowest(base) {
    check_memory(width, depth, base);
    contents = std::make_unique<image_words>(depth);
}

memory_image::memory_image(std::uint32_t width, std::unique_ptr<image_words> words, std::uint64_t base)
    : bits(width),
      lowest(base),
      contents(std::move(words)) {
    check_memory(width, contents->size(), base);
}

memory_image::memory_image(const memory_image& other)
    : bits(other.bits),
      lowest(other.lowest),
      contents(std::make_unique<image_words>(*other.contents)) {}

memory_image& memory_image::operator=(const memory_image& other) {
    return *this = memory_image(other);
}

memory_image::memory_image(memory_image&& other) noexcept = default;
memory_image& memory_image::operator=(memory_image&& other) noexcept = default;
memory_image::~memory_image() = default;

std::uint64_t memory_image::depth() const noexcept {
    return contents->size();
}

std::uint64_t memory_image::offset_of(std::uint64_t address) const {
    if (address < lowest || address > last_address()) {
        throw std::out_of_range(
            fmt::format("address 0x{:X}: the memory has 0x{:X} to 0x{:X}", address, lowest, last_address()));
    }
    return address - lowest;
}

address_range memory_image::offsets_of(const address_range& range) const {
    require_ascending(range);
    return {offset_of(range.first), offset_of(range.last)};
}

void memory_image::check_width(const word& value) const {
    if (value.width() != bits) {
        throw std::invalid_argument(
            fmt::format("a word of {} bits: those of the memory have {}", value.width(), bits));
    }
}

std::optional<word> memory_image::operator[](std::uint64_t address) const {
    const std::uint64_t offset = offset_of(address);
    if (const byte_words* const bytes = contents->bytes()) {
        return bytes->word_at(offset);
    }
    const std::string_view text = (*contents)[offset];
    return text.empty() ? std::nullopt : std::optional(word_of_text(text, bits));
}

void memory_image::set(std::uint64_t address, const word& value) {
    const std::uint64_t offset = offset_of(address);
    check_width(value);
    contents->set(offset, held_text(value).view());
}

void memory_image::fill(const address_range& range, std::span<const word> pattern) {
    const address_range offsets = offsets_of(range);
    if (pattern.empty()) {
        throw std::invalid_argument("a fill has no word");
    }
    std::ranges::for_each(pattern, [this](const word& value) { check_width(value); });
    const std::uint64_t others =
        offsets.last - offsets.first; // one less than the number of words, which may need 65 bits
    const auto used = static_cast<std::size_t>(std::min<std::uint64_t>(pattern.size() - 1, others)) + 1;
    std::vector<held_text> texts;
    std::vector<std::string_view> values;
    texts.reserve(used);
    for (const word& value : pattern.first(used)) {
        values.push_back(texts.emplace_back(value).view());
    }
    contents->fill(offsets.first, offsets.last, values);
}

void memory_image::unset(const address_range& range) {
    const address_range offsets = offsets_of(range);
    contents->fill(offsets.first, offsets.last, {""});
}

std::optional<address_range> memory_image::bounds() const {
    std::optional<address_range> bounds;
    for_each_set_stretch(*contents, [&](std::uint64_t first, std::uint64_t last) {
        bounds = address_range{bounds ? bounds->first : lowest + first, lowest + last};
    });
    return bounds;
}

std::uint64_t memory_image::count_set() const {
    std::uint64_t count = 0;
    for_each_set_stretch(*contents,
                         [&count](std::uint64_t first, std::uint64_t last) { count += last - first + 1; });
    return count;
}

run_range memory_image::runs() const {
    return {*this, {lowest, last_address()}};
}

run_range memory_image::runs(const address_range& range) const {
    const address_range offsets = offsets_of(range);
    return {*this, {lowest + offsets.first, lowest + offsets.last}};
}

void memory_image::copy_to(std::uint64_t first, std::span<std::uint64_t> out, std::uint64_t unset) const {
    copy_numbers(*this, first, out, unset);
}

bool operator==(const memory_image& left, const memory_image& right) {
    if (left.bits != right.bits || left.lowest != right.lowest || left.depth() != right.depth()) {
        return false;
    }
    const placed_words left_words(*left.contents);
    const placed_words right_words(*right.contents);
    const std::equal_to<> same;
    differing_run_finder runs(left_words, right_words, {0, left.depth() - 1}, same, equal_texts::are_same);
    return !runs.next();
}

run_iterator::run_iterator(const memory_image& of, const address_range& range)
    : image(&of),
      last(range.last),
      current(run_from(range.first)) {}

run run_iterator::run_from(std::uint64_t address) const {
    if (const byte_words* const bytes = image->words().bytes()) {
        const std::uint64_t last_offset =
            bytes->last_of_run(address - image->base(), last - image->base() + 1);
        return {{address, image->base() + last_offset}, (*image)[address]};
    }
    const text_run found = image->words().run_at(address - image->base());
    run made = {{address, std::min(image->base() + found.last, last)}, std::nullopt};
    if (!found.text.empty()) {
        made.value = word_of_text(found.text, image->width());
    }
    return made;
}

run_iterator& run_iterator::operator++() {
    if (current.addresses.last == last) {
        image = nullptr;
    } else {
        current = run_from(current.addresses.last + 1);
    }
    return *this;
}

} // namespace kvrimage
