#include "tests/models/comment_store_operations.h"

#include "tests/models/operation_table.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace kvr_test {

namespace {

/// With at most this number of comments, all of them are compared after each change.
constexpr std::size_t few = 40;
constexpr std::uint64_t steps_between_full_reads = 16;

// A segment has 256 entries, each a comment or a gap.
constexpr std::array<std::size_t, 6> few_comments = {2, 10, 20, 30, 40, 60};
constexpr std::array<std::size_t, 5> many_comments = {255, 300, 520, 1100, 6000};

/// The lengths around which a stored length needs another byte, or a text its own block.
constexpr std::array<std::uint32_t, 8> lengths = {0, 1, 7, 40, 127, 128, 4093, 4094};

} // namespace

comment_store_operations::comment_store_operations(choices& source)
    : chosen(source),
      most_comments(source.once_in(8) ? source.one_of(many_comments) : source.one_of(few_comments)) {}

void comment_store_operations::step() {
    using operation = std::size_t (comment_store_operations::*)();
    static constexpr std::array operations = {
        table_operation<operation>{"push front", &comment_store_operations::push_front, 12},
        table_operation<operation>{"append empty", &comment_store_operations::append_empty, 6},
        table_operation<operation>{"insert", &comment_store_operations::insert, 20},
        table_operation<operation>{"insert ascending", &comment_store_operations::insert_ascending, 6},
        table_operation<operation>{"insert descending", &comment_store_operations::insert_descending, 4},
        table_operation<operation>{"assign", &comment_store_operations::assign, 1},
        table_operation<operation>{"clear", &comment_store_operations::clear, 1},
    };
    if (model.size() >= most_comments) {
        change = "clear";
        clear();
    }
    const table_operation<operation>& next = choose_operation(operations, chosen);
    change = next.name;
    const std::size_t index = (this->*next.run)();
    ++steps;
    if (model.size() <= few || steps % steps_between_full_reads == 0) {
        compare_all();
    } else {
        compare_around(index);
    }
}

std::string comment_store_operations::text() {
    const std::uint32_t length = chosen.once_in(10) ? chosen.one_of(lengths) : chosen.below(12);
    return std::string(length, static_cast<char>('a' + chosen.below(26)));
}

/// A number of comments, proportional to the size of the store.
std::uint32_t comment_store_operations::some() {
    return chosen.between(1, static_cast<std::uint32_t>(most_comments / 4 + 1));
}

std::size_t comment_store_operations::push_front() {
    for (std::uint32_t count = chosen.once_in(5) ? some() : 1; count > 0; --count) {
        model.push_front(text());
        comments.push_front(model.front());
    }
    return 0;
}

std::size_t comment_store_operations::append_empty() {
    const std::size_t size =
        any_index() + chosen.below(chosen.once_in(4) ? static_cast<std::uint32_t>(most_comments) : 5);
    comments.append_empty_up_to(size);
    model.resize(std::max(model.size(), size));
    return size;
}

void comment_store_operations::insert_at(std::size_t index) {
    const std::string added = text();
    comments.insert(index, added);
    model.insert(model.begin() + static_cast<std::ptrdiff_t>(index), added);
}

std::size_t comment_store_operations::insert() {
    const std::size_t index = any_index();
    insert_at(index);
    return index;
}

std::size_t comment_store_operations::insert_ascending() {
    std::size_t index = any_index();
    const std::uint32_t distance = chosen.between(1, 4);
    for (std::uint32_t count = some(); count > 0 && index + distance <= model.size(); --count) {
        index += distance;
        insert_at(index);
    }
    return index;
}

std::size_t comment_store_operations::insert_descending() {
    std::size_t index = any_index();
    const std::uint32_t distance = chosen.below(3);
    for (std::uint32_t count = some(); count > 0 && index >= distance; --count) {
        index -= distance;
        insert_at(index);
    }
    return index;
}

std::size_t comment_store_operations::assign() {
    if (chosen.once_in(2)) { // the store's own count
        std::deque<std::string> copy = {"before"};
        comments.copy_to(copy);
        copy.pop_front();
        expect(copy == model, "a copy", 0);
        comments.assign(copy);
        return any_index();
    }
    model.resize(chosen.below(static_cast<std::uint32_t>(most_comments)));
    for (std::string& each : model) {
        each = chosen.once_in(3) ? std::string() : text();
    }
    comments.assign(model);
    return any_index();
}

std::size_t comment_store_operations::clear() {
    comments.clear();
    model.clear();
    return 0;
}

void comment_store_operations::compare_all() {
    expect(comments.size() == model.size(), "the size", model.size());
    expect(comments.empty() == model.empty(), "whether it is empty", 0);
    for (std::size_t index = 0; index < model.size(); ++index) {
        compare_comment(index);
    }
    for (std::size_t index = model.size(); index > 0; index -= std::min<std::size_t>(index, 7)) {
        compare_comment(index - 1);
    }
    std::deque<std::string> copy;
    comments.copy_to(copy);
    expect(copy == model, "a copy", 0);
}

void comment_store_operations::compare_around(std::size_t index) const {
    const std::size_t first = index - std::min<std::size_t>(index, 20);
    expect(comments.size() == model.size(), "the size", model.size());
    for (std::size_t each = first; each < std::min(model.size(), first + 40); ++each) {
        compare_comment(each);
    }
    for (const std::size_t place : {model.size() / 3, model.size() - 1, std::size_t{0}}) {
        compare_comment(place);
    }
}

void comment_store_operations::compare_comment(std::size_t index) const {
    expect(comments[index] == model[index], "a comment", index);
}

void comment_store_operations::expect(bool holds, std::string_view what, std::size_t index) const {
    if (!holds) {
        throw std::logic_error(std::string(what) + " at " + std::to_string(index) + " after step " +
                               std::to_string(steps) + ", " + std::string(change));
    }
}

} // namespace kvr_test
