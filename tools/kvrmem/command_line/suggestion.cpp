#include "tools/kvrmem/command_line/suggestion.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace kvrmem {

namespace {

/// Returns the optimal string alignment distance of @p left and @p right: insertions, deletions,
/// replacements, and swaps of neighboring letters. The matrix is computed row by row.
std::size_t edits_between(std::string_view left, std::string_view right) {
    std::vector<std::size_t> two_above;
    std::vector<std::size_t> above(right.size() + 1);
    for (std::size_t column = 0; column <= right.size(); ++column) {
        above[column] = column;
    }
    for (std::size_t row = 1; row <= left.size(); ++row) {
        std::vector<std::size_t> here(right.size() + 1);
        here[0] = row;
        for (std::size_t column = 1; column <= right.size(); ++column) {
            const std::size_t replaced = above[column - 1] + (left[row - 1] == right[column - 1] ? 0 : 1);
            here[column] = std::min({replaced, above[column] + 1, here[column - 1] + 1});
            if (row > 1 && column > 1 && left[row - 1] == right[column - 2] &&
                left[row - 2] == right[column - 1]) {
                here[column] = std::min(here[column], two_above[column - 2] + 1);
            }
        }
        two_above = std::move(above);
        above = std::move(here);
    }
    return above.back();
}

} // namespace

std::string nearest_of(std::string_view given, std::span<const std::string_view> known) {
    std::string nearest;
    std::size_t fewest = given.size() / 3 + 1;
    for (const std::string_view candidate : known) {
        if (given.size() >= candidate.size() + fewest) {
            continue; // too many letters to delete
        }
        const std::size_t edits = edits_between(given, candidate);
        if (edits < fewest) {
            fewest = edits;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace kvrmem
