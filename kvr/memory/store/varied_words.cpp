#include "kvr/memory/store/varied_words.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace kvr {

namespace {

/// Unused texts are dropped if the list would exceed this number of texts, or if the characters would have
/// doubled since the last time. Short lists are not searched.
constexpr std::size_t most_entries = std::size_t{4} * page_words;
constexpr std::size_t least_chars_to_tidy = std::size_t{8} * page_words;

constexpr std::size_t most_chars = std::numeric_limits<std::uint32_t>::max();

/// Returns a capacity for @p added more elements that keeps both copying and unused memory small.
std::size_t grown(std::size_t size, std::size_t added) {
    return size + std::max(added, size / 4 + 32);
}

/// Returns the length of the texts for the @p count addresses from @p address on.
std::size_t length_of_texts(const word_pattern& texts, std::uint32_t address, std::uint32_t count) {
    std::size_t length = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        length += texts.text_at(address + i).size();
    }
    return length;
}

} // namespace

void varied_words::set(std::uint32_t index, std::string_view text) {
    make_room(1, text.size());
    chosen[index] = add(text);
}

void varied_words::assign(std::uint32_t first, std::uint32_t last, const word_pattern& texts,
                          std::uint32_t address) {
    const std::uint32_t count = std::min(texts.period(), last - first + 1);
    make_room(count, length_of_texts(texts, address, count));
    for (std::uint32_t i = 0; i < count; ++i) {
        chosen[first + i] = add(texts.text_at(address + i));
    }
    for (std::uint32_t index = first + count; index <= last; ++index) {
        chosen[index] = chosen[index - count];
    }
}

std::size_t varied_words::shortest() const noexcept {
    return std::min_element(entries.begin(), entries.end(),
                            [](const entry& a, const entry& b) { return a.length < b.length; })
        ->length;
}

std::size_t varied_words::longest() const noexcept {
    return std::max_element(entries.begin(), entries.end(),
                            [](const entry& a, const entry& b) { return a.length < b.length; })
        ->length;
}

/// Ensures that add() has room for @p count texts with a total of @p length characters.
void varied_words::make_room(std::size_t count, std::size_t length) {
    if (is_worth_tidying(count, length)) {
        varied_words tidy = tidied();
        tidy.reserve(count, length);
        *this = std::move(tidy);
    } else {
        reserve(count, length);
    }
}

bool varied_words::is_worth_tidying(std::size_t count, std::size_t length) const noexcept {
    return entries.size() + count > most_entries ||
           chars.size() + length > std::clamp(2 * tidy_size, least_chars_to_tidy, most_chars);
}

/// Returns a copy without unused texts.
varied_words varied_words::tidied() const {
    varied_words tidy;
    std::vector<std::uint16_t> places(entries.size(), absent);
    std::size_t length = 0;
    for (std::uint32_t index = 0; index < page_words; ++index) {
        if (has(index) && places[chosen[index]] == absent) {
            places[chosen[index]] = 0;
            length += (*this)[index].size();
        }
    }
    tidy.reserve(static_cast<std::size_t>(std::count(places.begin(), places.end(), 0)), length);
    tidy.tidy_size = length;
    std::fill(places.begin(), places.end(), absent);
    for (std::uint32_t index = 0; index < page_words; ++index) {
        if (has(index)) {
            std::uint16_t& place = places[chosen[index]];
            if (place == absent) {
                place = tidy.add((*this)[index]);
            }
            tidy.chosen[index] = place;
        }
    }
    return tidy;
}

void varied_words::reserve(std::size_t count, std::size_t length) {
    if (length > most_chars - chars.size()) {
        throw std::length_error("kvr: the words of a page are too long");
    }
    if (entries.capacity() - entries.size() < count) {
        entries.reserve(grown(entries.size(), count));
    }
    if (chars.capacity() - chars.size() < length) {
        chars.reserve(grown(chars.size(), length));
    }
}

std::uint16_t varied_words::add(std::string_view text) noexcept {
    entries.push_back({static_cast<std::uint32_t>(chars.size()), static_cast<std::uint32_t>(text.size())});
    chars.insert(chars.end(), text.begin(), text.end());
    return static_cast<std::uint16_t>(entries.size() - 1);
}

} // namespace kvr
