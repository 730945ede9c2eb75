#include "kvrimage/operations/statistics/period.h"

#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_stretch.h"
#include "kvrimage/operations/statistics/word_walk.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <string_view>
#include <vector>

namespace kvrimage {

namespace {

/// Finds the smallest period of adjacent words. Places count from the first of these words.
class period_search {
public:
    /// @param bounds offsets in @p looked_through
    period_search(const image_words& looked_through, const address_range& bounds)
        : words(looked_through),
          first(bounds.first),
          count(bounds.last - bounds.first + 1) {}

    [[nodiscard]] std::optional<std::uint64_t> find() const {
        constexpr std::uint64_t most_places_a_word = 4;
        const std::uint64_t found =
            count / most_places_a_word <= words_held() ? period_by_borders() : period_by_trial();
        return found <= count / 2 ? std::optional(found) : std::nullopt;
    }

private:
    /// Counts the stored words: words set one by one, and the patterns of fills.
    [[nodiscard]] std::uint64_t words_held() const {
        std::uint64_t held = 0;
        for_each_word_or_turn(
            words,
            [&held](std::string_view /*text*/, std::uint64_t /*offset*/, std::uint64_t /*length*/) {
                ++held;
            },
            [](std::uint64_t /*offset*/, std::uint32_t /*period*/, std::uint64_t /*turns*/) {});
        return held;
    }

    /// Finds the longest proper prefix that is also a suffix (border). The period is `count` minus its
    /// length. Both finders return `count` if there is no smaller period.
    [[nodiscard]] std::uint64_t period_by_borders() const {
        row_reader text(words);
        row_reader beginning(words);
        // The lengths are less than 2^32. A count too large for a vector is refused, not cut.
        constexpr std::uint64_t most = std::numeric_limits<std::size_t>::max();
        std::vector<std::uint32_t> borders(static_cast<std::size_t>(std::min(count, most)));
        std::uint64_t length = 0;
        for (std::uint64_t place = 1; place < count; ++place) {
            const std::string_view word = text[first + place];
            while (length != 0 && beginning[first + length] != word) {
                length = borders[length - 1];
            }
            length += beginning[first + length] == word ? 1U : 0U;
            borders[place] = static_cast<std::uint32_t>(length);
        }
        return count - length;
    }

    [[nodiscard]] std::uint64_t period_by_trial() const {
        std::vector<beginning_period> repeats; // few: each is more than half of the next one
        for (std::uint64_t candidate = 1; candidate <= count / 2;) {
            const trial_result tried = try_turn(candidate, repeats);
            if (tried.period) {
                return *tried.period;
            }
            candidate = tried.next;
        }
        return count;
    }

    /// The words before the place `end` have the smallest period `period` and at least two turns. The word at
    /// `end` breaks the period.
    struct beginning_period {
        std::uint64_t period;
        std::uint64_t end;
    };
    struct trial_result {
        std::optional<std::uint64_t> period;
        std::uint64_t next = 0; ///< all smaller candidates are no periods
    };

    /// Tries the candidates from @p begin on: all places of one turn if a fill continues for several turns,
    /// else @p begin only.
    [[nodiscard]] trial_result try_turn(std::uint64_t begin, std::vector<beginning_period>& repeats) const {
        const word_stretch stretch = repeated_at(begin);
        const std::uint64_t end = begin + stretch.period;
        std::uint64_t farthest = begin; // the farthest place at which a candidate failed
        std::uint64_t candidate = begin;
        while (candidate < end) {
            const std::uint64_t different = first_difference(candidate, candidate);
            if (different == count) {
                return {candidate, 0};
            }
            const std::uint64_t alike = different - candidate;
            if (alike >= candidate) {
                // If the words before `different` had another period and this lasted up to `alike` too, the
                // word at `different` would equal the one that many places before.
                repeats.push_back({candidate, different});
                return {{}, alike + 1};
            }
            const jump next = after_failure(candidate, different, repeats);
            farthest = std::max(farthest, next.farthest);
            candidate = next.candidate;
        }
        // A candidate some turns later compares the same words, as long as the stretch lasts.
        const std::uint64_t turns =
            stretch.last >= farthest ? (stretch.last - farthest) / stretch.period + 1 : 0;
        return {{}, std::max(candidate, begin + turns * stretch.period)};
    }

    struct jump {
        std::uint64_t candidate; ///< the next candidate
        std::uint64_t farthest;  ///< the place at which the last skipped candidate fails
    };

    /// Returns the next candidate after @p candidate, which failed at place @p different.
    [[nodiscard]] jump after_failure(std::uint64_t candidate, std::uint64_t different,
                                     const std::vector<beginning_period>& repeats) const {
        jump best = {candidate + 1, different};
        for (const beginning_period& each : repeats) {
            const jump found = jump_over_turns(candidate, different, each);
            best = found.candidate > best.candidate ? found : best;
        }
        return best;
    }

    /// The words from @p candidate to @p different - 1 equal the first ones and repeat with their turns. So a
    /// candidate within a turn fails in the next turn, and a candidate at the start of a turn fails at
    /// @p different or at the end of these turns.
    [[nodiscard]] jump jump_over_turns(std::uint64_t candidate, std::uint64_t different,
                                       const beginning_period& repeats) const {
        const std::uint64_t repeating = std::min(different - candidate, repeats.end);
        const std::uint64_t two_turns = 2 * repeats.period;
        if (repeating < two_turns) {
            return {candidate, different};
        }
        const std::uint64_t after_turns = candidate + repeating - two_turns + 1;
        if (different - candidate != repeats.end) {
            return {after_turns, different};
        }
        // The turns may continue beyond the end of those of the first words.
        const std::uint64_t turns_end = first_difference(repeats.period, different);
        return {turns_end == different ? after_turns : turns_end - repeats.end, turns_end};
    }

    /// Returns the stretch of one fill from @p place on, or one word if there is no fill.
    [[nodiscard]] word_stretch repeated_at(std::uint64_t place) const {
        if (words.row_at(first + place).count != 0) {
            return {place, 1, true};
        }
        const word_stretch stretch = stretch_at(words, first + place);
        return {stretch.last - first, stretch.period, stretch.is_set};
    }

    /// Returns the first place from @p from on (at least @p shift) whose word differs from the one @p shift
    /// places before, or `count` if there is none.
    [[nodiscard]] std::uint64_t first_difference(std::uint64_t shift, std::uint64_t from) const {
        const placed_words unshifted(words);
        const placed_words shifted(words, shift);
        same_cycle_finder cycles(unshifted, shifted);
        const std::uint64_t end = first + count;
        for (std::uint64_t offset = first + from; offset < end;) {
            std::uint64_t same = count_same_in_rows(unshifted, shifted, offset);
            same = same != 0 ? same : cycles.find(offset, std::equal_to<>());
            if (same == 0) {
                const text_run run = unshifted.run_at(offset);
                const text_run run_before = shifted.run_at(offset);
                if (run.text != run_before.text) {
                    return offset - first;
                }
                same = std::min(run.last, run_before.last) - offset + 1;
            }
            offset += same;
        }
        return count;
    }

    const image_words& words;
    std::uint64_t first;
    std::uint64_t count;
};

} // namespace

std::optional<std::uint64_t> period_of(const memory_image& image) {
    const std::optional<address_range> bounds = image.bounds();
    if (!bounds) {
        return std::nullopt;
    }
    return period_search(image.words(), {bounds->first - image.base(), bounds->last - image.base()}).find();
}

} // namespace kvrimage
