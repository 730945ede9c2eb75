#include "tools/kvrmem/compare/difference.h"

#include "tools/kvrmem/memory/word_runs.h"
#include "tools/kvrmem/memory/word_text.h"

#include <algorithm>

namespace kvrmem {

namespace {

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
    const auto same = [&](std::string_view left_word, std::string_view right_word) {
        return same_word(left, left_word, right, right_word);
    };
    for_each_differing_run(left.image.words, right.image.words, same,
                           [&take](std::uint64_t first, std::uint64_t last, std::string_view left_word,
                                   std::string_view right_word) {
                               take(difference{first, last, left_word, right_word});
                           });
}

} // namespace kvrmem
