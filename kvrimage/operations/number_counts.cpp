#include "kvrimage/operations/number_counts.h"

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

constexpr std::size_t bytes_of_value = sizeof(std::uint64_t);
constexpr std::size_t byte_values = 256;

std::size_t byte_of(std::uint64_t value, std::size_t index) noexcept {
    return value >> (8 * index) & (byte_values - 1);
}

/// [index][byte]: number of values whose byte at index is byte.
using byte_histograms = std::array<std::array<std::size_t, byte_values>, bytes_of_value>;

byte_histograms histograms_of(const std::vector<number_count>& counts) {
    byte_histograms histograms{};
    for (const number_count& one : counts) {
        for (std::size_t index = 0; index < bytes_of_value; ++index) {
            ++histograms[index][byte_of(one.value, index)];
        }
    }
    return histograms;
}

/// Sorts by one byte. The sort is stable.
void sort_by_byte(std::vector<number_count>& from, std::vector<number_count>& to, std::size_t index,
                  const std::array<std::size_t, byte_values>& histogram) {
    std::array<std::size_t, byte_values> places{};
    std::size_t place = 0;
    for (std::size_t byte = 0; byte < byte_values; ++byte) {
        places[byte] = place;
        place += histogram[byte];
    }
    for (const number_count& one : from) {
        to[places[byte_of(one.value, index)]++] = one;
    }
}

bool is_below(const number_count& left, const number_count& right) noexcept {
    return left.value < right.value;
}

} // namespace

void sort_by_value(std::vector<number_count>& counts) {
    if (std::ranges::is_sorted(counts, is_below)) {
        return;
    }
    const byte_histograms histograms = histograms_of(counts);
    std::vector<number_count> other(counts.size());
    for (std::size_t index = 0; index < bytes_of_value; ++index) {
        if (histograms[index][byte_of(counts.front().value, index)] != counts.size()) {
            sort_by_byte(counts, other, index, histograms[index]);
            counts.swap(other);
        }
    }
}

void number_counts::join() {
    sort_by_value(gathered);
    auto kept = gathered.begin();
    for (const number_count& one : gathered) {
        if (kept == gathered.begin() || (kept - 1)->value != one.value) {
            *kept++ = one;
            continue;
        }
        number_count& joined = *(kept - 1);
        joined.last_turn = std::max(joined.last_turn, one.last_turn);
        joined.repeats += one.repeats + 1;
    }
    gathered.erase(kept, gathered.end());
}

} // namespace kvrimage
