#include "kvrimage/diagnostics/diagnostic_list.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace kvrimage {

namespace {

std::size_t index_of(const diagnostic& found) {
    return static_cast<std::size_t>(about(found.id).level);
}

/// Sorts diagnostics of the whole file last.
std::tuple<std::uint64_t, std::uint64_t> order_of(const diagnostic& found) {
    const bool has_place = found.where.length != 0 || found.where.offset != 0;
    return {has_place ? found.where.offset : std::numeric_limits<std::uint64_t>::max(), found.where.length};
}

/// Finds lines and columns of offsets. Offsets must be passed in ascending order.
class line_counter {
public:
    explicit line_counter(std::string_view of) : text(of) {}

    void complete(place& where) {
        const auto offset = static_cast<std::size_t>(std::min<std::uint64_t>(where.offset, text.size()));
        for (std::size_t end = text.find('\n', line_begin); end < offset; end = text.find('\n', line_begin)) {
            line_begin = end + 1;
            ++line;
        }
        where.line = line;
        where.column = offset - line_begin + 1;
    }

private:
    std::string_view text;
    std::uint64_t line = 1;
    std::size_t line_begin = 0;
};

bool ends_lines_with_cr_lf(std::string_view contents) {
    const std::size_t first = contents.find('\n');
    return first != std::string_view::npos && first > 0 && contents[first - 1] == '\r';
}

/// Replaces each LF without a CR by CR LF.
void use_cr_lf(std::string& text) {
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1)) {
        if (at == 0 || text[at - 1] != '\r') {
            text.insert(at, 1, '\r'); // the next search finds the same LF, now after a CR
        }
    }
}

} // namespace

void sort_by_place(std::vector<diagnostic>& found) {
    std::ranges::stable_sort(found, {}, order_of);
}

void diagnostic_list::add(diagnostic found) {
    const std::size_t level = index_of(found);
    ++counts[level];
    if (kept_counts[level] < limit || (keeps_repairs && !found.fix.empty())) {
        ++kept_counts[level];
        kept_ones.push_back(std::move(found));
    }
}

std::uint64_t diagnostic_list::left_out() const noexcept {
    std::uint64_t number = 0;
    for (std::size_t level = 0; level < counts.size(); ++level) {
        number += counts[level] - kept_counts[level];
    }
    return number;
}

bool diagnostic_list::has_room(diagnostic_class level) const noexcept {
    return keeps_repairs || kept_counts[static_cast<std::size_t>(level)] < limit;
}

std::vector<diagnostic> diagnostic_list::finish(std::string_view contents) {
    sort_by_place(kept_ones);
    std::vector<place*> all;
    for (diagnostic& found : kept_ones) {
        if (found.where != place{}) {
            all.push_back(&found.where);
        }
        std::ranges::transform(found.more, std::back_inserter(all), [](place& each) { return &each; });
    }
    std::ranges::stable_sort(all, {}, [](const place* each) { return each->offset; });
    line_counter lines(contents);
    std::ranges::for_each(all, [&lines](place* each) { lines.complete(*each); });
    if (ends_lines_with_cr_lf(contents)) {
        for (diagnostic& found : kept_ones) {
            std::ranges::for_each(found.fix, [](text_edit& each) { use_cr_lf(each.replacement); });
        }
    }
    return std::exchange(kept_ones, {});
}

} // namespace kvrimage
