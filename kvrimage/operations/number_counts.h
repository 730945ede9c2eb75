#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvrimage {

/// A number with its count and the turn that counted it last.
struct number_count {
    std::uint64_t value;
    std::uint32_t last_turn;
    std::uint32_t repeats; ///< count minus 1

    friend bool operator==(const number_count&, const number_count&) = default;
};

/// Sorts @p counts by value. A byte that is equal in all values takes no pass.
void sort_by_value(std::vector<number_count>& counts);

/// Counts occurrences of numbers, up to 2^32 in total. It sorts instead of using a hash table, which is
/// faster if most numbers differ, since accesses stay local. Entries are merged from time to time, so memory
/// is proportional to the distinct numbers.
class number_counts {
public:
    /// Counts @p value @p times (at least 1) more. @p turn ascends from call to call.
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

    /// Returns the count of each number, sorted by value.
    [[nodiscard]] const std::vector<number_count>& sorted() {
        join();
        return gathered;
    }

private:
    void join();

    std::vector<number_count> gathered;
    std::size_t capacity = std::size_t{1} << 18U; ///< size of `gathered` at which it is merged
};

} // namespace kvrimage
