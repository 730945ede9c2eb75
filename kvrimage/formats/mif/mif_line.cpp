#include "kvrimage/formats/mif/mif_line.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace kvrimage {

namespace {

std::ptrdiff_t index_of_line(std::size_t index) {
    return static_cast<std::ptrdiff_t>(index);
}

/// Extends the single line @p index by the first address of the next line.
void join_with_next(std::vector<mif_line>& lines, std::size_t index) {
    mif_line& line = lines[index];
    mif_line& next = lines[index + 1];
    ++line.last;
    if (next.is_range()) {
        line.values.push_back(next.take_first());
    } else {
        line.values.push_back(std::move(next.values.front()));
        lines.erase(lines.begin() + index_of_line(index + 1));
    }
}

/// Extends the single line @p index by the last address of the previous line. A previous line of two
/// addresses would become single, so it is extended by line @p index instead.
void join_with_previous(std::vector<mif_line>& lines, std::size_t index) {
    mif_line& line = lines[index];
    mif_line& previous = lines[index - 1];
    if (previous.last - previous.first > 1) {
        line.values.insert(line.values.begin(), previous.take_last());
        --line.first;
        return;
    }
    previous.values.resize(previous.last - previous.first + 1, previous.values.front());
    previous.values.push_back(std::move(line.values.front()));
    ++previous.last;
    lines.erase(lines.begin() + index_of_line(index));
}

} // namespace

std::string mif_line::take_first() {
    std::rotate(values.begin(), values.begin() + 1, values.end());
    std::string taken = values.back();
    ++first;
    values.resize(std::min<std::uint64_t>(values.size(), last - first + 1));
    return taken;
}

std::string mif_line::take_last() {
    std::string taken = values[(last - first) % values.size()];
    --last;
    values.resize(std::min<std::uint64_t>(values.size(), last - first + 1));
    return taken;
}

void join_taken(std::vector<mif_line>& lines, taken_addresses& taken) {
    for (std::size_t index = 0; index < lines.size(); ++index) {
        if (lines[index].is_range() || !taken.contains(lines[index].first)) {
            continue;
        }
        if (index + 1 < lines.size()) {
            join_with_next(lines, index);
        } else {
            join_with_previous(lines, index);
        }
    }
    for (const mif_line& line : lines) {
        if (!line.is_range()) {
            taken.add(line.first);
        }
    }
}

} // namespace kvrimage
