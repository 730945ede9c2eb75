#include "kvr/memory/store/word_pattern.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace kvr {

namespace {

/// The maximum total length of texts that are addressed by 32-bit offsets.
constexpr std::size_t longest_texts = std::numeric_limits<std::uint32_t>::max();

std::size_t total_length(const std::string_view* values, std::size_t count) {
    std::size_t length = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (values[i].size() > longest_texts - length) {
            throw std::length_error("kvr: the texts of a range are too long");
        }
        length += values[i].size();
    }
    return length;
}

} // namespace

word_pattern::word_pattern(std::uint32_t first_address, const std::string_view* values, std::size_t count)
    : first(first_address) {
    texts.reserve(total_length(values, count));
    places.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        texts.append(values[i]);
        places.push_back({static_cast<std::uint32_t>(texts.size()), 1});
    }
    count_equal_values();
}

void word_pattern::count_equal_values() {
    const std::uint32_t count = period();
    // Two turns: the last values may equal the first ones of the next turn.
    std::uint32_t equal = 1;
    for (std::uint32_t left = 2 * count; left > 0; --left) {
        const std::uint32_t index = (left - 1) % count;
        equal = value(index) == value((index + 1) % count) ? std::min(equal + 1, count) : 1;
        places[index].equal_ahead = equal;
    }
}

pattern_ref word_pattern::uniform(std::string_view text) {
    total_length(&text, 1);
    return pattern_ref(new word_pattern(text));
}

pattern_ref word_pattern::repeating(std::uint32_t first, const std::string_view* values, std::size_t count) {
    return count == 1 ? uniform(*values) : pattern_ref(new word_pattern(first, values, count));
}

std::uint64_t word_pattern::find_other(std::uint32_t from, std::uint32_t last,
                                       std::string_view text) const noexcept {
    if (is_uniform()) {
        return text == texts ? std::uint64_t{last} + 1 : from;
    }
    const std::uint32_t index = (from - first) % period();
    if (value(index) != text) {
        return from;
    }
    const std::uint64_t after = std::uint64_t{last} + 1;
    return places[index].equal_ahead == period()
               ? after
               : std::min(after, std::uint64_t{from} + places[index].equal_ahead);
}

bool same_texts(const pattern_ref& left, const pattern_ref& right) noexcept {
    if (left.get() == right.get()) {
        return true;
    }
    return left && right && left->is_uniform() && right->is_uniform() &&
           left->text_at(0) == right->text_at(0);
}

pattern_ref word_pattern::converted(const word_conversion& conversion) const {
    std::vector<std::string> made(period());
    for (std::uint32_t index = 0; index < period(); ++index) {
        if (!conversion(text_at(first + index), made[index])) {
            return {};
        }
    }
    const std::vector<std::string_view> views(made.begin(), made.end());
    return repeating(first, views.data(), views.size());
}

} // namespace kvr
