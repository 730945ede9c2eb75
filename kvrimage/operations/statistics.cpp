#include "kvrimage/operations/statistics.h"

#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/operations/number_counts.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <tuple>
#include <vector>

namespace kvrimage {

namespace {

class word_counter {
public:
    /// Counts @p length equal words that follow those counted before, all of that @p times. "" is a word that
    /// is not set.
    void take(std::string_view word, std::uint64_t length, std::uint64_t times = 1) {
        const bool begins_run = word != previous;
        previous = word;
        if (word.empty()) {
            return;
        }
        statistics.runs += begins_run ? times : 0;
        statistics.set += length * times;
        count(word, length * times);
    }

    [[nodiscard]] word_statistics result(std::uint32_t width) {
        for (const number_count& number : numbers.sorted()) {
            if (consider({std::uint64_t{number.repeats} + 1, number.last_turn})) {
                statistics.most_frequent = word::of(number.value, width);
            }
        }
        consider_texts(width);
        return statistics;
    }

private:
    struct counted_word {
        std::uint64_t count = 0;
        std::uint32_t last_turn = 0;
    };
    struct counted_text {
        std::size_t hash;
        std::string_view text;
        counted_word counted;
    };

    void count(std::string_view word, std::uint64_t times) {
        std::uint64_t value = 0;
        if (word.size() <= most_small_digits && read_small_word(word, value)) {
            numbers.add(value, times, turn);
        } else {
            count_text(word, times);
        }
        ++turn;
    }

    void count_text(std::string_view word, std::uint64_t times) {
        if (!texts.empty() && texts.back().text == word) {
            texts.back().counted.count += times;
            texts.back().counted.last_turn = turn;
            return;
        }
        if (texts.size() == most_texts) {
            join_texts();
            most_texts = texts.size() > most_texts / 2 ? 4 * most_texts : most_texts;
        }
        texts.push_back({std::hash<std::string_view>()(word), word, {times, turn}});
    }

    /// Sorts the texts, in any order, and makes one of equal ones. A table would go to a far place in memory
    /// for each, and so would a comparison of texts.
    void join_texts() {
        const auto order = [](const counted_text& left, const counted_text& right) {
            return std::tie(left.hash, left.text, left.counted.last_turn) <
                   std::tie(right.hash, right.text, right.counted.last_turn);
        };
        std::ranges::sort(texts, order);
        std::size_t kept = 0;
        for (const counted_text& one : texts) {
            if (kept != 0 && texts[kept - 1].text == one.text) {
                texts[kept - 1].counted.count += one.counted.count;
                texts[kept - 1].counted.last_turn = one.counted.last_turn;
            } else {
                texts[kept++] = one;
            }
        }
        texts.resize(kept);
    }

    void consider_texts(std::uint32_t width) {
        join_texts();
        for (const counted_text& one : texts) {
            if (consider(one.counted)) {
                statistics.most_frequent = word_of_text(one.text, width);
            }
        }
    }

    /// Counts a distinct word; true when it is the most frequent one so far.
    bool consider(const counted_word& one) {
        ++statistics.distinct;
        if (one.count < most.count || (one.count == most.count && one.last_turn > most.last_turn)) {
            return false;
        }
        most = one;
        statistics.most_frequent_count = one.count;
        return true;
    }

    word_statistics statistics;
    number_counts numbers;           ///< words of up to 64 bits without don't-care bits
    std::vector<counted_text> texts; ///< all others, joined from time to time as number_counts does
    std::size_t most_texts = std::size_t{1} << 18U; ///< before they are joined
    std::uint32_t turn = 0;                         ///< calls of count()
    std::string_view previous;
    counted_word most;
};

} // namespace

word_statistics count_words(const memory_image& image) {
    const image_words& words = image.words();
    word_counter counter;
    cycle_finder cycles(words);
    const auto take_row = [&](const kvr::word_row& row) -> std::uint64_t {
        for (std::uint32_t index = 0; index < row.count; ++index) {
            counter.take(row[index], 1);
        }
        return row.count;
    };
    const auto take_cycle = [&](const text_cycle& cycle) -> std::uint64_t {
        // The first turn follows other words; all others follow one like themselves.
        const std::uint64_t turns = length_of(cycle) / cycle.period;
        for (const std::uint64_t times : {std::uint64_t{1}, turns - 1}) {
            for (std::uint32_t index = 0; index < cycle.period; ++index) {
                counter.take(words[cycle.first + index], 1, times);
            }
        }
        return turns * cycle.period;
    };
    const auto take_some = [&](std::uint64_t offset) -> std::uint64_t {
        if (const std::uint64_t taken = take_row(words.row_at(offset))) {
            return taken;
        }
        const auto cycle = cycles.find(offset);
        return cycle ? take_cycle(*cycle) : 0;
    };
    for_each_part(words, take_some, [&](const text_run& run) { counter.take(run.text, length_of(run)); });
    return counter.result(image.width());
}

} // namespace kvrimage
