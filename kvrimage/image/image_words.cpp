#include "kvrimage/image/image_words.h"

#include "kvrimage/image/store_copy.h"

namespace kvrimage {

image_words::image_words(const image_words& other)
    : halves{copy_of(other.halves[0]), copy_of(other.halves[1])},
      held_bytes(other.held_bytes) {}

void image_words::make_texts_of_bytes() const {
    image_words made(held_bytes->depth);
    held_bytes->words.set_in(made);
    halves = std::move(made.halves);
    held_bytes.reset();
}

void image_words::resize(std::uint64_t depth) {
    if (held_bytes) {
        const byte_words& words = held_bytes->words;
        const address_range kept = {0, depth - 1};
        held_bytes = held{depth, words.with_blocks(words.blocks_at({&kept, 1}))};
        return;
    }
    halves[0].resize(static_cast<std::uint32_t>(std::min(depth, half())), "");
    halves[1].resize(static_cast<std::uint32_t>(depth - std::min(depth, half())), "");
}

void image_words::fill(std::uint64_t first, std::uint64_t last, const std::vector<std::string_view>& values) {
    make_texts();
    if (first < half()) {
        halves[0].fill(within_half(first), within_half(std::min(last, half() - 1)), values);
    }
    if (last >= half()) {
        std::vector<std::string_view> rest = values;
        const std::uint64_t begin = std::max(first, half());
        const auto shift = static_cast<std::ptrdiff_t>((begin - first) % rest.size());
        std::rotate(rest.begin(), rest.begin() + shift, rest.end());
        halves[1].fill(within_half(begin), within_half(last), rest);
    }
}

text_run image_words::run_at(std::uint64_t offset) const {
    const std::uint64_t base = offset - within_half(offset);
    const kvr::word_run found = half_of(offset).run_at(within_half(offset));
    text_run run{offset, base + found.last, found.text};
    if (run.last == half() - 1 && !halves[1].empty() && halves[1][0] == run.text) {
        run.last = half() + halves[1].run_at(0).last;
    }
    return run;
}

text_cycle image_words::cycle_at(std::uint64_t offset) const {
    const std::uint64_t base = offset - within_half(offset);
    const kvr::word_cycle found = half_of(offset).cycle_at(within_half(offset));
    return {base + found.first, base + found.last, found.period};
}

bool image_words::transform(const kvr::word_conversion& conversion, const kvr::row_test& keeps) {
    make_texts();
    if (halves[1].empty()) {
        return halves[0].transform(conversion, keeps);
    }
    // Transform a copy, so that the lower half is unchanged if the upper half fails.
    kvr::word_store lower = copy_of(halves[0]);
    if (!lower.transform(conversion, keeps) || !halves[1].transform(conversion, keeps)) {
        return false;
    }
    halves[0] = std::move(lower);
    return true;
}

} // namespace kvrimage
