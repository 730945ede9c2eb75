#include "tools/kvrmem/compare/difference.h"

#include "tools/kvrmem/memory/word_runs.h"
#include "tools/kvrmem/memory/word_text.h"

#include <algorithm>
#include <limits>

namespace kvrmem {

namespace {

kvr::word_run run_in(const memory_image& image, std::uint64_t address) {
    if (address < image.words.size()) {
        return image.words.run_at(static_cast<std::uint32_t>(address));
    }
    return {static_cast<std::uint32_t>(address), std::numeric_limits<std::uint32_t>::max(), ""};
}

std::string value_of(std::string_view word, std::uint32_t width) {
    std::string bits;
    show_word(word, RADIX_BIN, width, bits);
    return bits.erase(0, std::min(bits.find_first_not_of('0'), bits.size() - 1));
}

bool same_word(const diff_side& left, std::string_view left_word, const diff_side& right,
               std::string_view right_word) {
    if (left.image.width == right.image.width || left_word.empty() || right_word.empty()) {
        return left_word == right_word;
    }
    return value_of(left_word, left.image.width) == value_of(right_word, right.image.width);
}

} // namespace

void for_each_difference(const diff_side& left, const diff_side& right,
                         const std::function<void(const difference&)>& take) {
    const std::uint64_t end = std::max(left.image.words.size(), right.image.words.size());
    same_cycle_finder cycles(left.image.words, right.image.words);
    const auto same = [&](std::string_view left_word, std::string_view right_word) {
        return same_word(left, left_word, right, right_word);
    };
    for (std::uint64_t address = 0; address < end;) {
        if (const std::uint64_t alike = cycles.find(address, same)) {
            address += alike;
            continue;
        }
        const kvr::word_run left_run = run_in(left.image, address);
        const kvr::word_run right_run = run_in(right.image, address);
        const std::uint64_t last =
            std::min({std::uint64_t{left_run.last}, std::uint64_t{right_run.last}, end - 1});
        if (!same(left_run.text, right_run.text)) {
            take(difference{address, last, left_run.text, right_run.text});
        }
        address = last + 1;
    }
}

} // namespace kvrmem
