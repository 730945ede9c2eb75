#pragma once

#include "kvrimage/image/address_range.h"
#include "kvrimage/image/image_words.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numeric>
#include <optional>
#include <string_view>

namespace kvrimage {

/// The words of a memory by address. Addresses outside the memory have no word.
class placed_words {
public:
    explicit placed_words(const image_words& of, std::uint64_t base = 0) : words(of), lowest(base) {}

    [[nodiscard]] bool has(std::uint64_t address) const noexcept {
        return address >= lowest && address - lowest < words.size();
    }
    /// operator[], row_at() and cycle_at() require an address of the memory.
    [[nodiscard]] std::string_view operator[](std::uint64_t address) const { return words[address - lowest]; }
    [[nodiscard]] kvr::word_row row_at(std::uint64_t address) const { return words.row_at(address - lowest); }
    [[nodiscard]] text_cycle cycle_at(std::uint64_t address) const {
        const text_cycle found = words.cycle_at(address - lowest);
        return {lowest + found.first, lowest + found.last, found.period};
    }

    /// Returns the longest run from @p address on. Addresses outside the memory count as not set.
    [[nodiscard]] text_run run_at(std::uint64_t address) const {
        if (has(address)) {
            const text_run run = words.run_at(address - lowest);
            if (!run.text.empty()) {
                return {address, lowest + run.last, run.text};
            }
        }
        return {address, last_unset(address), ""};
    }

private:
    /// Returns the last address of the unset stretch that begins at @p address.
    [[nodiscard]] std::uint64_t last_unset(std::uint64_t address) const {
        const std::uint64_t begin = std::max(address, lowest);
        if (has(begin)) {
            const text_run run = words.run_at(begin - lowest);
            if (!run.text.empty()) {
                return begin - 1;
            }
            if (run.last != words.size() - 1) {
                return lowest + run.last;
            }
        }
        return std::numeric_limits<std::uint64_t>::max();
    }

    const image_words& words;
    std::uint64_t lowest;
};

/// Says whether equal texts mean equal words. They may not if the two memories differ in width.
enum class equal_texts { are_same, may_differ };

/// Counts the words from @p address on whose texts are equal in both memories. Returns 0 unless both memories
/// have a row there.
[[nodiscard]] inline std::uint64_t count_same_in_rows(const placed_words& one, const placed_words& other,
                                                      std::uint64_t address) {
    if (!one.has(address) || !other.has(address)) {
        return 0;
    }
    const kvr::word_row left = one.row_at(address);
    const kvr::word_row right = other.row_at(address);
    const std::size_t length = left.length;
    const std::uint32_t count = std::min(left.count, right.count);
    if (count == 0 || right.length != length) {
        return 0;
    }
    if (std::memcmp(left.texts, right.texts, count * length) == 0) {
        return count;
    }
    const char* const differing = std::mismatch(left.texts, left.texts + count * length, right.texts).first;
    return static_cast<std::size_t>(differing - left.texts) / length;
}

/// Walks over two memories and skips the parts in which both repeat the same cycle, in one step.
class same_cycle_finder {
public:
    same_cycle_finder(const placed_words& first_words, const placed_words& second_words)
        : one(first_words),
          other(second_words) {}

    /// Returns the number of addresses from @p address on at which both memories have the same words. Returns
    /// 0 if the cycles do not tell. @p same(one word, other word) compares.
    template <class Same>
    [[nodiscard]] std::uint64_t find(std::uint64_t address, const Same& same) {
        if (address < known_until || !one.has(address) || !other.has(address)) {
            return 0;
        }
        const text_cycle in_one = one.cycle_at(address);
        const text_cycle in_other = other.cycle_at(address);
        known_until = std::min(in_one.last, in_other.last) + 1;
        const std::uint64_t period = std::lcm(std::uint64_t{in_one.period}, std::uint64_t{in_other.period});
        const std::uint64_t repeats = period != 0 ? (known_until - address) / period : 0;
        if (repeats < 2) {
            return 0;
        }
        for (std::uint64_t index = 0; index < period; ++index) {
            if (!same(one[address + index], other[address + index])) {
                return 0;
            }
        }
        return repeats * period;
    }

private:
    const placed_words& one;
    const placed_words& other;
    std::uint64_t known_until = 0;
};

/// A stretch over which each memory repeats one word. Outside a memory the word is "".
struct differing_run {
    std::uint64_t first;
    std::uint64_t last;
    std::string_view one;
    std::string_view other;
};

/// Finds the stretches of addresses at which two memories differ, in order. Each stretch has one word in each
/// memory and is as long as possible.
/// @tparam Same compares two words: same(one word, other word)
template <class Same>
class differing_run_finder {
public:
    /// @param texts_that_are_equal are_same: @p decide returns true for equal texts, so many words are
    /// compared at once without calling it
    differing_run_finder(const placed_words& first_words, const placed_words& second_words,
                         const address_range& where, const Same& decide, equal_texts texts_that_are_equal)
        : one(first_words),
          other(second_words),
          same(decide),
          texts(texts_that_are_equal),
          cycles(first_words, second_words),
          address(where.first),
          last(where.last) {}

    /// Returns the next stretch, or nothing after the last one.
    [[nodiscard]] std::optional<differing_run> next() {
        while (!at_end) {
            const std::uint64_t first = address;
            const std::uint64_t count = count_same(first);
            if (count != 0) {
                advance(first + (count - 1));
                continue;
            }
            const text_run in_one = one.run_at(first);
            const text_run in_other = other.run_at(first);
            const std::uint64_t end = std::min({in_one.last, in_other.last, last});
            advance(end);
            if (!same(in_one.text, in_other.text)) {
                return differing_run{first, end, in_one.text, in_other.text};
            }
        }
        return std::nullopt;
    }

private:
    /// Returns the number of equal words from @p from on, or 0 if only a comparison of runs can tell.
    [[nodiscard]] std::uint64_t count_same(std::uint64_t from) {
        const std::uint64_t count = texts == equal_texts::are_same ? count_same_in_rows(one, other, from) : 0;
        return count != 0 ? count : cycles.find(from, same);
    }
    /// @param end inclusive, since end + 1 may exceed 64 bits
    void advance(std::uint64_t end) {
        at_end = end >= last;
        address = end + 1;
    }

    const placed_words& one;
    const placed_words& other;
    const Same& same;
    equal_texts texts;
    same_cycle_finder cycles;
    std::uint64_t address;
    std::uint64_t last;
    bool at_end = false;
};

} // namespace kvrimage
