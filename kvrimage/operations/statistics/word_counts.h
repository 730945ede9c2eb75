#pragma once

#include "kvrimage/image/word.h"
#include "kvrimage/operations/number_counts.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrimage {

/// A distinct word with its count.
struct distinct_word {
    std::string_view text; ///< "" if the word is a number
    std::uint64_t number = 0;
    std::uint64_t count = 0;
    std::uint32_t last_turn = 0; ///< the call of add() that counted it last

    /// Returns the word of @p width bits.
    [[nodiscard]] word made(std::uint32_t width) const;
};

/// True if @p left occurs more often than @p right, or equally often but reached its count first.
[[nodiscard]] bool is_more_frequent(const distinct_word& left, const distinct_word& right) noexcept;

/// Counts occurrences of words, given as texts that image_words stores. The texts must stay valid. Takes
/// memory proportional to the distinct words.
class word_counts {
public:
    /// Counts @p word, which must be set, @p times (at least 1) more.
    void add(std::string_view word, std::uint64_t times);

    /// Calls @p take with every distinct_word. No call of add() may follow.
    template <class Take>
    void for_each(Take&& take) {
        for (const number_count& one : numbers.sorted()) {
            take(distinct_word{{}, one.value, std::uint64_t{one.repeats} + 1, one.last_turn});
        }
        join_texts();
        for (const counted_text& one : texts) {
            take(distinct_word{one.text, 0, one.count, one.last_turn});
        }
    }

private:
    struct counted_text {
        std::size_t hash;
        std::string_view text;
        std::uint64_t count;
        std::uint32_t last_turn;
    };

    void add_text(std::string_view word, std::uint64_t times);
    void join_texts();

    number_counts numbers;           ///< words of up to 64 bits without don't-care bits
    std::vector<counted_text> texts; ///< all others, merged from time to time like number_counts
    std::size_t most_texts = std::size_t{1} << 18U; ///< size of `texts` at which it is merged
    std::uint32_t turn = 0;                         ///< number of calls of add()
};

} // namespace kvrimage
