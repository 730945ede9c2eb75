#include "tests/models/word_store_operations.h"

#include "kvr/memory/store/word_tree.h"
#include "tests/models/operation_table.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <stdexcept>
#include <utility>

namespace kvr_test {

namespace {

constexpr std::uint32_t branch_words = 32 * kvr::page_words;
constexpr std::uint32_t largest_store = std::numeric_limits<std::uint32_t>::max();

/// All words of a store up to this size are compared after each change.
constexpr std::size_t small = 16;
constexpr std::uint64_t steps_between_comparisons = 16;

// A store changes its forms when a page is full. A change to a store of few words takes a hundredth of the
// time of a change to a full page.
constexpr std::array<std::uint32_t, 12> few_words = {1, 2, 5, 8, 12, 16, 20, 30, 40, 60, 100, 300};
constexpr std::array<std::uint32_t, 6> many_words = {1024, 1025, 1200, 2048, 2100, 6000};

// Multiples of a page, of a branch and of a root, and the end of the largest store. No store has more words
// before one of them.
constexpr std::array<std::uint32_t, 5> edges = {6 * kvr::page_words, branch_words, 3 * branch_words,
                                                static_cast<std::uint32_t>(kvr::root_words), largest_store};

/// True if a conversion must refuse a text. Like a conversion, it depends only on the text.
bool is_refused(std::string_view text) {
    return text.size() == 7 || text.ends_with('7');
}

std::vector<std::string_view> views_of(const std::vector<std::string>& values) {
    return {values.begin(), values.end()};
}

} // namespace

word_store_operations::word_store_operations(choices& source) : chosen(source), texts(source) {
    texts.new_style();
    most_words = chosen.once_in(48) ? chosen.one_of(many_words) : chosen.one_of(few_words);
    if (chosen.once_in(3)) {
        origin = chosen.one_of(edges) - chosen.between(1, most_words);
    }
    most_words = std::min(most_words, largest_store - origin);
    words.resize(origin, before.front());
    change = "create";
    resize();
}

void word_store_operations::step() {
    using operation = stretch (word_store_operations::*)();
    static constexpr std::array operations = {
        table_operation<operation>{"set", &word_store_operations::set, 24},
        table_operation<operation>{"set neighbors", &word_store_operations::set_neighbors, 6},
        table_operation<operation>{"set side by side", &word_store_operations::set_side_by_side, 5},
        table_operation<operation>{"set page", &word_store_operations::set_page, 3},
        table_operation<operation>{"set in batch", &word_store_operations::set_in_batch, 3},
        table_operation<operation>{"fill", &word_store_operations::fill, 18},
        table_operation<operation>{"fill from start", &word_store_operations::fill_from_start, 1},
        table_operation<operation>{"resize", &word_store_operations::resize, 1},
        table_operation<operation>{"transform", &word_store_operations::transform, 1},
        table_operation<operation>{"move", &word_store_operations::move, 1},
    };
    const table_operation<operation>& next = choose_operation(operations, chosen);
    change = next.name;
    const stretch changed = (this->*next.run)();
    ++steps;
    if (model.size() <= small || steps % steps_between_comparisons == 0) {
        compare_all();
    } else {
        compare_around(changed);
    }
}

word_store_operations::stretch word_store_operations::set() {
    const std::uint32_t address = any_address();
    at(address) = texts();
    words.set(address, at(address));
    return {address, 1};
}

word_store_operations::stretch word_store_operations::set_neighbors() {
    const stretch part = any_stretch(200);
    const std::uint32_t distance = chosen.between(1, 3);
    for (std::uint32_t i = 0; i < part.count; i += distance) {
        const std::uint32_t address = part.first + i;
        at(address) = texts();
        words.set(address, at(address));
    }
    return part;
}

std::string word_store_operations::side_by_side(std::uint32_t count, std::size_t length) {
    std::string all;
    for (std::uint32_t i = 0; i < count; ++i) {
        all += texts.text(length);
    }
    return all;
}

word_store_operations::stretch word_store_operations::set_side_by_side() {
    const stretch part = any_stretch(chosen.once_in(4) ? 3000 : 100);
    const std::size_t length = std::max<std::size_t>(texts.next_length(), 1);
    const std::string all = side_by_side(part.count, length);
    words.set_side_by_side(part.first, all, length);
    for (std::uint32_t i = 0; i < part.count; ++i) {
        at(part.first + i) = all.substr(i * length, length);
    }
    return part;
}

word_store_operations::stretch word_store_operations::set_page() {
    const std::uint32_t first = (any_address() / kvr::page_words) * kvr::page_words;
    if (first < origin || end() - first < kvr::page_words) {
        return set();
    }
    const std::size_t length = std::max<std::size_t>(texts.next_length(), 1);
    const std::string all = side_by_side(kvr::page_words, length);
    kvr::page_texts page = pages.make(all.size());
    std::memcpy(page.get(), all.data(), all.size());
    words.set_page(first, page, length);
    for (std::uint32_t i = 0; i < kvr::page_words; ++i) {
        at(first + i) = all.substr(i * length, length);
    }
    return {first, kvr::page_words};
}

word_store_operations::stretch word_store_operations::set_in_batch() {
    kvr::word_batch batch(words);
    stretch changed{any_address(), 1};
    for (std::uint32_t parts = chosen.between(1, 4); parts > 0; --parts) {
        batch_some(batch, changed);
    }
    batch.flush();
    return changed;
}

/// Puts words into @p batch in one of its ways and extends @p changed to cover them.
void word_store_operations::batch_some(kvr::word_batch& batch, stretch& changed) {
    const stretch part = any_stretch(chosen.once_in(6) ? 3000 : 40);
    const std::uint32_t after = std::max(changed.first + changed.count, part.first + part.count);
    changed.first = std::min(changed.first, part.first);
    changed.count = after - changed.first;
    if (chosen.once_in(2)) {
        for (std::uint32_t i = 0; i < part.count; ++i) {
            at(part.first + i) = texts();
            batch.set(part.first + i, at(part.first + i));
        }
        return;
    }
    const std::size_t length = std::max<std::size_t>(texts.next_length(), 1);
    const std::string all = side_by_side(part.count, length);
    if (chosen.once_in(2)) {
        batch.set_side_by_side(part.first, all, length);
    } else {
        put_side_by_side(batch, part.first, all, length);
    }
    for (std::uint32_t i = 0; i < part.count; ++i) {
        at(part.first + i) = all.substr(i * length, length);
    }
}

/// Does the same as batch.set_side_by_side(), through the room that the batch offers.
void word_store_operations::put_side_by_side(kvr::word_batch& batch, std::uint32_t first,
                                             std::string_view all, std::size_t length) {
    while (!all.empty()) {
        const kvr::word_batch::word_room room = batch.room_for_some(first, length);
        const std::size_t count = std::min(room.count, all.size() / length);
        if (count == 0) {
            batch.set_apart(first, all.substr(0, length));
            all.remove_prefix(length);
            ++first;
            continue;
        }
        std::memcpy(room.place, all.data(), count * length);
        batch.take(count);
        all.remove_prefix(count * length);
        first += static_cast<std::uint32_t>(count);
    }
}

std::vector<std::string> word_store_operations::some_values() {
    std::vector<std::string> values(chosen.once_in(2) ? 1 : chosen.between(1, chosen.once_in(8) ? 40 : 4));
    std::generate(values.begin(), values.end(), std::ref(texts));
    return values;
}

word_store_operations::stretch word_store_operations::fill() {
    const stretch part = any_stretch(chosen.once_in(4) ? 6000 : 40);
    const std::vector<std::string> values = some_values();
    words.fill(part.first, part.first + part.count - 1, views_of(values));
    for (std::uint32_t i = 0; i < part.count; ++i) {
        at(part.first + i) = values[i % values.size()];
    }
    return part;
}

/// Fills the words before the origin and some words after it.
word_store_operations::stretch word_store_operations::fill_from_start() {
    before = some_values();
    const std::uint32_t last = any_address();
    words.fill(0, last, views_of(before));
    for (std::uint32_t address = origin; address <= last; ++address) {
        at(address) = before[address % before.size()];
    }
    return {origin, last - origin + 1};
}

void word_store_operations::resize_model(std::uint32_t size, const std::string& text) {
    while (end() > size) {
        model.pop_back();
    }
    while (end() < size) {
        model.push_back(text);
    }
}

word_store_operations::stretch word_store_operations::resize() {
    const std::string text = texts();
    const std::uint32_t first_size = origin + chosen.between(1, most_words);
    words.resize(first_size, text);
    resize_model(first_size, text);
    if (chosen.once_in(4)) { // the dropped words must not reappear
        const std::string other = texts();
        words.resize(origin + most_words, other);
        resize_model(origin + most_words, other);
    }
    return {origin, static_cast<std::uint32_t>(model.size())};
}

word_store_operations::stretch word_store_operations::transform() {
    const bool may_refuse = chosen.once_in(2);
    const bool keeps_rows = chosen.once_in(2);
    const auto made_of = [&](std::string_view text) {
        std::string made(text);
        if (made.size() % 5 == 3) {
            made += 'x';
        } else if (made.size() % 5 == 4) {
            made.pop_back();
        }
        return made;
    };
    const auto conversion = [&](std::string_view text, std::string& made) {
        made = made_of(text);
        return !may_refuse || !is_refused(text);
    };
    const auto keeps = [&](const kvr::word_row& row) {
        for (std::uint32_t i = 0; i < row.count; ++i) {
            if (made_of(row[i]) != row[i] || (may_refuse && is_refused(row[i]))) {
                return false;
            }
        }
        return true;
    };
    const auto refused = [&](const std::string& text) { return may_refuse && is_refused(text); };
    // The repeated words may be longer than the part before the origin.
    const auto before_end =
        before.begin() + static_cast<std::ptrdiff_t>(std::min<std::uint64_t>(before.size(), origin));
    const bool succeeds = std::none_of(model.begin(), model.end(), refused) &&
                          std::none_of(before.begin(), before_end, refused);
    const bool done = words.transform(conversion, keeps_rows ? kvr::row_test(keeps) : kvr::row_test());
    expect(done == succeeds, "what transform() answers", origin);
    if (succeeds) {
        std::transform(model.begin(), model.end(), model.begin(), made_of);
        std::transform(before.begin(), before.end(), before.begin(), made_of);
    }
    return {origin, static_cast<std::uint32_t>(model.size())};
}

word_store_operations::stretch word_store_operations::move() {
    if (chosen.once_in(2)) {
        kvr::word_store other(std::move(words));
        expect(words.empty(), "a store that was moved from", origin); // NOLINT(bugprone-use-after-move)
        words = std::move(other);
    } else {
        kvr::word_store other;
        other.resize(chosen.between(0, 3000), texts());
        other = std::move(words);
        kvr::word_store last(std::move(other));
        words = std::move(last);
    }
    return {origin, static_cast<std::uint32_t>(model.size())};
}

word_store_operations::stretch word_store_operations::any_stretch(std::uint32_t longest) {
    const std::uint32_t first = any_address();
    return {first, chosen.between(1, std::min(longest, end() - first))};
}

/// Compares the pages that @p changed touches, in one of the ways to read them.
void word_store_operations::compare_around(stretch changed) {
    const std::uint32_t first = std::max(origin, changed.first / kvr::page_words * kvr::page_words);
    const std::uint64_t after = std::uint64_t{changed.first} + changed.count + kvr::page_words - 1;
    const auto last = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(end(), after / kvr::page_words * kvr::page_words) - 1);
    const stretch part{first, last - first + 1};
    switch (steps % 3) {
    case 0:
        compare_words(part);
        break;
    case 1:
        compare_runs(part);
        break;
    default:
        compare_rows(part);
    }
    compare_cycle(any_address());
}

void word_store_operations::compare_all() {
    const stretch everything{origin, static_cast<std::uint32_t>(model.size())};
    expect(words.size() == end(), "the size", end());
    expect(!words.empty(), "a store with words is empty", end());
    compare_words(everything);
    compare_runs(everything);
    compare_rows(everything);
    for (int i = 0; i < 4; ++i) {
        compare_cycle(any_address());
    }
    if (origin > 0) {
        compare_before_origin();
    }
}

void word_store_operations::compare_words(stretch part) const {
    if (steps % 2 == 0) {
        auto expected = from(part.first);
        for (std::uint32_t i = 0; i < part.count; ++i, ++expected) {
            expect(words[part.first + i] == *expected, "a word", part.first + i);
        }
    } else {
        auto expected = from(part.first + part.count);
        for (std::uint32_t i = part.count; i > 0; --i) {
            expect(words[part.first + i - 1] == *--expected, "a word", part.first + i - 1);
        }
    }
}

void word_store_operations::compare_runs(stretch part) const {
    const std::uint32_t after = part.first + part.count;
    auto expected = from(part.first);
    for (std::uint32_t address = part.first; address < after;) {
        const kvr::word_run run = words.run_at(address);
        expect(run.first == address && run.last >= address && run.last < end(), "where a run begins or ends",
               address);
        for (; address <= run.last; ++address, ++expected) {
            expect(run.text == *expected, "a word of a run", address);
        }
        expect(expected == model.end() || *expected != run.text, "a run is too short", run.last);
    }
}

void word_store_operations::compare_rows(stretch part) {
    const std::uint32_t after = part.first + part.count;
    for (std::uint32_t address = part.first; address < after;) {
        const kvr::word_row row = words.row_at(address);
        expect(row.count <= end() - address, "a row is too long", address);
        rows_seen += row.count > 1 ? 1 : 0;
        auto expected = from(address);
        for (std::uint32_t i = 0; i < row.count; ++i, ++expected) {
            expect(row[i] == *expected, "a word of a row", address + i);
        }
        address += std::max(row.count, std::uint32_t{1});
    }
}

void word_store_operations::compare_cycle(std::uint32_t address) {
    const kvr::word_cycle cycle = words.cycle_at(address);
    expect(cycle.first == address && cycle.last >= address && cycle.last < end(),
           "where a cycle begins or ends", address);
    if (cycle.period == 0) {
        return;
    }
    cycles_seen += cycle.period > 1 ? 1 : 0;
    for (std::uint32_t each = address; cycle.last - each >= cycle.period; ++each) {
        expect(at(each) == at(each + cycle.period), "a word of a cycle", each + cycle.period);
    }
}

void word_store_operations::compare_before_origin() {
    const auto text_at = [this](std::uint32_t address) -> const std::string& {
        return before[address % before.size()];
    };
    for (const std::uint32_t address : {0U, chosen.below(origin), origin - 1}) {
        expect(words[address] == text_at(address), "a word before the origin", address);
        const kvr::word_run run = words.run_at(address);
        expect(run.first == address && run.last >= address && run.text == text_at(address),
               "a run before the origin", address);
        const bool ends = run.last + 1 >= origin || text_at(run.last + 1) != run.text;
        expect(ends, "a run before the origin is too short", address);
        const kvr::word_row row = words.row_at(address);
        for (std::uint32_t i = 0; i < std::min(row.count, origin - address); ++i) {
            expect(row[i] == text_at(address + i), "a word of a row before the origin", address + i);
        }
    }
}

void word_store_operations::fail(std::string_view what, std::uint32_t address) const {
    throw std::logic_error(std::string(what) + " at " + std::to_string(address) + " after step " +
                           std::to_string(steps) + ", " + std::string(change));
}

} // namespace kvr_test
