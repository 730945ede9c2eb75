#include "kvr/memory/store/word_store.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <limits>
#include <utility>

namespace kvr {

namespace {

constexpr std::uint64_t beyond_all = std::numeric_limits<std::uint32_t>::max();

std::uint64_t roots_for(std::uint32_t size) {
    return (size + (root_words - 1)) / root_words;
}

bool all_equal(const std::vector<std::string_view>& values, std::size_t count) {
    return std::all_of(values.begin() + 1, values.begin() + static_cast<std::ptrdiff_t>(count),
                       [&](std::string_view value) { return value == values.front(); });
}

} // namespace

word_store::word_store(word_store&& other) noexcept
    : word_count(std::exchange(other.word_count, 0)),
      roots(std::exchange(other.roots, {})),
      found_number(std::exchange(other.found_number, no_page)),
      found_page(std::exchange(other.found_page, nullptr)) {}

word_store& word_store::operator=(word_store&& other) noexcept {
    word_store taken(std::move(other));
    std::swap(word_count, taken.word_count);
    std::swap(roots, taken.roots);
    std::swap(found_number, taken.found_number);
    std::swap(found_page, taken.found_page);
    return *this;
}

std::string_view word_store::find(std::uint32_t address) const noexcept {
    const word_leaf leaf = leaf_at(roots[address / root_words], address);
    if (leaf.page == nullptr) {
        return leaf.texts->text_at(address);
    }
    found_number = address / page_words;
    found_page = leaf.page;
    return (*leaf.page)[address % page_words];
}

void word_store::set_slowly(std::uint32_t address, std::string_view text) {
    if (!is_in_found_page(address)) {
        if (find(address) == text) {
            return;
        }
        found_page = &page_at(root_of(address), address);
        found_number = address / page_words;
    }
    if (found_page->set(address % page_words, text) && fold(root_of(address), address)) {
        found_number = no_page;
    }
}

void word_store::set_side_by_side(std::uint32_t first, std::string_view texts, std::size_t length) {
    assert(length > 0 && texts.size() % length == 0);
    while (!texts.empty()) {
        const std::uint32_t index = first % page_words;
        // The last word of a page always needs set().
        auto count =
            static_cast<std::uint32_t>(std::min<std::size_t>(texts.size() / length, page_words - 1 - index));
        if (!is_in_found_page(first) ||
            !found_page->copy_in_side_by_side(index, texts.data(), length, count)) {
            set(first, texts.substr(0, length));
            count = 1;
        }
        texts.remove_prefix(count * length);
        first += count;
    }
}

void word_store::set_page(std::uint32_t first, page_texts& texts, std::size_t length) {
    assert(first % page_words == 0 && length > 0);
    if (word_page::is_best_packed(texts.get(), length)) {
        found_page = &page_at(root_of(first), first);
        found_number = first / page_words;
        found_page->pack(std::move(texts), length);
    } else {
        set_side_by_side(first, {texts.get(), page_words * length}, length);
    }
}

void word_store::resize(std::uint32_t size, std::string_view fill) {
    if (size < word_count) {
        shrink(size);
    } else if (size > word_count) {
        grow(size, fill);
    }
}

void word_store::shrink(std::uint32_t size) noexcept {
    found_number = no_page;
    roots.erase(roots.begin() + static_cast<std::ptrdiff_t>(roots_for(size)), roots.end());
    if (!roots.empty()) {
        drop_from(roots.back(), (roots.size() - 1) * root_words, size);
    }
    word_count = size;
}

void word_store::grow(std::uint32_t size, std::string_view fill) {
    const pattern_ref texts = word_pattern::uniform(fill);
    roots.reserve(roots_for(size));
    assign_range({word_count, beyond_all}, texts);
    while (roots.size() < roots_for(size)) {
        roots.emplace_back(texts);
    }
    word_count = size;
}

void word_store::fill(std::uint32_t first, std::uint32_t last, const std::vector<std::string_view>& values) {
    assert(first <= last && last < word_count && !values.empty());
    const std::uint64_t addresses = std::uint64_t{last} - first + 1;
    auto count = static_cast<std::size_t>(std::min<std::uint64_t>(values.size(), addresses));
    if (all_equal(values, count)) {
        count = 1;
    }
    if (addresses < 2 * count) {
        for (std::uint64_t i = 0; i < addresses; ++i) {
            set(static_cast<std::uint32_t>(first + i), values[i % count]);
        }
        return;
    }
    const std::uint64_t end = last == word_count - 1 ? beyond_all : last;
    assign_range({first, end}, word_pattern::repeating(first, values.data(), count));
}

/// Makes the words of @p range follow @p texts, as far as there are roots.
void word_store::assign_range(const address_range& range, const pattern_ref& texts) {
    found_number = no_page;
    const std::uint64_t end = std::min<std::uint64_t>(range.last / root_words + 1, roots.size());
    for (std::uint64_t i = range.first / root_words; i < end; ++i) {
        assign(roots[i], i * root_words, range, texts);
    }
}

word_run word_store::run_at(std::uint32_t address) const noexcept {
    const std::string_view text = (*this)[address];
    std::uint64_t next = std::uint64_t{address} + 1;
    if (next < word_count && is_in_found_page(address + 1) &&
        (*found_page)[(address + 1) % page_words] != text) {
        return {address, address, text}; // most runs end here, without a search of the tree
    }
    while (next < word_count) {
        const word_leaf leaf = leaf_at(roots[next / root_words], static_cast<std::uint32_t>(next));
        const std::uint32_t end = std::min(leaf.last, word_count - 1);
        const std::uint64_t other = leaf.find_other(static_cast<std::uint32_t>(next), end, text);
        next = other;
        if (other <= end) {
            break;
        }
    }
    return {address, static_cast<std::uint32_t>(next - 1), text};
}

word_cycle word_store::cycle_at(std::uint32_t address) const noexcept {
    assert(address < word_count);
    if (is_in_found_page(address)) {
        return {address, address, 0};
    }
    const word_leaf leaf = leaf_at(roots[address / root_words], address);
    if (leaf.page != nullptr) {
        return {address, address, 0};
    }
    std::uint32_t last = leaf.last;
    while (last < word_count - 1) {
        const word_leaf next = leaf_at(roots[(last + 1) / root_words], last + 1);
        if (next.texts != leaf.texts) {
            break;
        }
        last = next.last;
    }
    return {address, std::min(last, word_count - 1), leaf.texts->period()};
}

word_row word_store::row_at(std::uint32_t address) const noexcept {
    assert(address < word_count);
    const word_page* page =
        is_in_found_page(address) ? found_page : leaf_at(roots[address / root_words], address).page;
    word_row row = page != nullptr ? page->row_at(address % page_words) : word_row();
    row.count = std::min(row.count, word_count - address);
    return row;
}

bool word_store::transform(const word_conversion& conversion, const row_test& keeps) {
    if (keeps && is_kept(conversion, keeps)) {
        return true;
    }
    word_store made;
    made.resize(size(), {});
    converted_pattern latest;
    for (std::uint64_t address = 0; address < size();) {
        const word_leaf leaf = leaf_at(roots[address / root_words], static_cast<std::uint32_t>(address));
        if (!made.convert_words(leaf, conversion, keeps, latest)) {
            return false;
        }
        address = std::uint64_t{leaf.last} + 1;
    }
    *this = std::move(made);
    return true;
}

/// Fast path of transform() for words that do not change. Returns false at the first word for which this is
/// not known; transform() then converts all words.
bool word_store::is_kept(const word_conversion& conversion, const row_test& keeps) const {
    for (std::uint64_t address = 0; address < size();) {
        const word_leaf leaf = leaf_at(roots[address / root_words], static_cast<std::uint32_t>(address));
        if (!is_kept(leaf, conversion, keeps)) {
            return false;
        }
        address = std::uint64_t{leaf.last} + 1;
    }
    return true;
}

bool word_store::is_kept(const word_leaf& leaf, const word_conversion& conversion,
                         const row_test& keeps) const {
    std::string text;
    if (leaf.page == nullptr) {
        return leaf.texts->is_uniform() && conversion(leaf.texts->text_at(leaf.first), text) &&
               text == leaf.texts->text_at(leaf.first);
    }
    const std::uint32_t end = std::min(leaf.last, word_count - 1) - leaf.first + 1;
    for (std::uint32_t index = 0; index < end;) {
        word_row row = leaf.page->row_at(index);
        row.count = std::min(row.count, end - index);
        if (row.count != 0) {
            if (!keeps(row)) {
                return false;
            }
            index += row.count;
            continue;
        }
        const std::string_view word = (*leaf.page)[index];
        if (!conversion(word, text) || text != word) {
            return false;
        }
        index = leaf.page->find_other(index, end - 1, word);
    }
    return true;
}

/// Sets the words of @p leaf, which belongs to another store, to the results of @p conversion. A pattern
/// shared by several leaves stays shared.
bool word_store::convert_words(const word_leaf& leaf, const word_conversion& conversion,
                               const row_test& keeps, converted_pattern& latest) {
    if (leaf.page == nullptr) {
        if (latest.from != leaf.texts) {
            latest = {leaf.texts, leaf.texts->converted(conversion)};
        }
        if (latest.made) {
            assign_range({leaf.first, leaf.last}, latest.made);
            return true;
        }
        return convert_part(leaf, conversion);
    }
    const std::uint32_t end = std::min(leaf.last, size() - 1) - leaf.first + 1;
    for (std::uint32_t index = 0; index < end;) {
        word_row row = leaf.page->row_at(index);
        row.count = std::min(row.count, end - index);
        if (row.count != 0) {
            if (!convert_row(leaf.first + index, row, conversion, keeps)) {
                return false;
            }
            index += row.count;
            continue;
        }
        const std::string_view word = (*leaf.page)[index];
        const std::uint32_t after = leaf.page->find_other(index, end - 1, word);
        if (!convert_run({leaf.first + index, leaf.first + after - 1, word}, conversion)) {
            return false;
        }
        index = after;
    }
    return true;
}

/// Does the same for words of a pattern with a text that cannot be converted. Possibly no word uses this text
/// any more, because its words were dropped or overwritten.
bool word_store::convert_part(const word_leaf& leaf, const word_conversion& conversion) {
    const std::uint32_t last = std::min(leaf.last, size() - 1);
    for (std::uint32_t address = leaf.first; address <= last; ++address) {
        if (!convert_run({address, address, leaf.texts->text_at(address)}, conversion)) {
            return false;
        }
    }
    return true;
}

/// Does the same for contiguous words, the first at @p address.
bool word_store::convert_row(std::uint32_t address, const word_row& row, const word_conversion& conversion,
                             const row_test& keeps) {
    const bool kept = keeps && keeps(row);
    std::string text;
    for (std::uint32_t index = 0; index < row.count; ++index) {
        if (!kept && !conversion(row[index], text)) {
            return false;
        }
        set(address + index, kept ? row[index] : text);
    }
    return true;
}

/// Does the same for a run of equal words.
bool word_store::convert_run(const word_run& run, const word_conversion& conversion) {
    std::string text;
    if (!conversion(run.text, text)) {
        return false;
    }
    if (run.first == run.last) {
        set(run.first, text);
    } else {
        fill(run.first, run.last, {text});
    }
    return true;
}

} // namespace kvr
