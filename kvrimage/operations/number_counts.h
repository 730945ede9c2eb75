#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvrimage {

/// A number, how often it was counted, and when for the last time.
struct number_count {
    std::uint64_t value;
    std::uint32_t last_turn;
    std::uint32_t repeats; ///< times beyond the first

    friend bool operator==(const number_count&, const number_count&) = default;
};

/// Sorts @p counts by value. Numbers whose upper bytes are the same take fewer passes.
void sort_by_value(std::vector<number_count>& counts);

/// Counts how often numbers occur, up to 2^32 of all together. Sorting is faster than a table where most
/// numbers differ, since it does not go to a far place in memory for each. What was gathered is joined from
/// time to time, so that the memory follows the distinct numbers.
class number_counts {
public:
    /// Counts @p value @p times (at least 1) more, at @p turn, which grows from call to call.
    void add(std::uint64_t value, std::uint64_t times, std::uint32_t turn) {
        if (!gathered.empty() && gathered.back().value == value) {
            gathered.back().last_turn = turn;
            gathered.back().repeats += static_cast<std::uint32_t>(times);
            return;
        }
        if (gathered.size() == capacity) {
            join();
            capacity = gathered.size() > capacity / 2 ? 4 * capacity : capacity;
        }
        gathered.push_back({value, turn, static_cast<std::uint32_t>(times - 1)});
    }

    /// Everything counted, by value; each number once.
    [[nodiscard]] const std::vector<number_count>& sorted() {
        join();
        return gathered;
    }

private:
    void join();

    std::vector<number_count> gathered;
    std::size_t capacity = std::size_t{1} << 18U; ///< of `gathered` before it is joined
};

} // namespace kvrimage
