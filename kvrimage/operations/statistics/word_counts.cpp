#include "kvrimage/operations/statistics/word_counts.h"

#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <functional>
#include <tuple>

namespace kvrimage {

word distinct_word::made(std::uint32_t width) const {
    return text.empty() ? word::of(number, width) : word_of_text(text, width);
}

bool is_more_frequent(const distinct_word& left, const distinct_word& right) noexcept {
    return left.count != right.count ? left.count > right.count : left.last_turn < right.last_turn;
}

void word_counts::add(std::string_view word, std::uint64_t times) {
    std::uint64_t value = 0;
    if (word.size() <= most_small_digits && read_small_word(word, value)) {
        numbers.add(value, times, turn);
    } else {
        add_text(word, times);
    }
    ++turn;
}

void word_counts::add_text(std::string_view word, std::uint64_t times) {
    if (!texts.empty() && texts.back().text == word) {
        texts.back().count += times;
        texts.back().last_turn = turn;
        return;
    }
    if (texts.size() == most_texts) {
        join_texts();
        most_texts = texts.size() > most_texts / 2 ? 4 * most_texts : most_texts;
    }
    texts.push_back({std::hash<std::string_view>()(word), word, times, turn});
}

/// Sorts the texts by hash and merges equal ones. Unlike a hash table, and unlike comparing texts, this needs
/// no access to distant memory for each text.
void word_counts::join_texts() {
    const auto order = [](const counted_text& left, const counted_text& right) {
        return std::tie(left.hash, left.text, left.last_turn) <
               std::tie(right.hash, right.text, right.last_turn);
    };
    std::ranges::sort(texts, order);
    std::size_t kept = 0;
    for (const counted_text& one : texts) {
        if (kept != 0 && texts[kept - 1].text == one.text) {
            texts[kept - 1].count += one.count;
            texts[kept - 1].last_turn = one.last_turn;
        } else {
            texts[kept++] = one;
        }
    }
    texts.resize(kept);
}

} // namespace kvrimage
