#include "tests/models/memory_image_operations.h"

#include "kvrimage/bytes/image_bytes.h"
#include "tests/models/operation_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>
#include <utility>

namespace kvr_test {

namespace {

using kvrimage::address_range;
using kvrimage::byte_order;
using kvrimage::deepest_memory;
using kvrimage::memory_image;
using kvrimage::run;
using kvrimage::word;

constexpr std::uint64_t steps_between_full_looks = 16;
constexpr std::uint64_t half_of_deepest = deepest_memory / 2;
constexpr std::uint64_t top_address = std::numeric_limits<std::uint64_t>::max();

// A page has 1,024 words. The deepest memory consists of two stores, one for each half.
constexpr std::array memory_parts = {
    memory_part{"one word", 4, 1, 0, 0, 1},
    memory_part{"some words", 8, 40, 3, 0, 40},
    memory_part{"words of a bit", 1, 300, 0, 0, 300},
    memory_part{"nearly a page", 8, 1023, 0, 0, 1023},
    memory_part{"a page", 32, 1024, 7, 0, 1024},
    memory_part{"more than a page", 64, 1025, top_address - 1024, 0, 1025},
    memory_part{"some pages", 12, 5000, top_address - 4999, 0, 5000},
    memory_part{"wide words", 130, 3000, 0, 0, 3000},
    memory_part{"the border of the halves", 16, deepest_memory, 0, half_of_deepest - 1500, 3000},
    memory_part{"the end of a deep memory", 5, deepest_memory, top_address - deepest_memory + 1,
                deepest_memory - 2500, 2500},
    memory_part{"one word above half", 32, half_of_deepest + 1, 3, half_of_deepest - 1025, 1026},
};

/// The part of a vector with one element per address.
template <class Elements>
auto elements_at(Elements& all, std::uint64_t first, std::uint64_t last) {
    return std::span(all).subspan(first, last - first + 1);
}

} // namespace

memory_image_operations::memory_image_operations(choices& source)
    : chosen(source),
      maker(source),
      part(source.one_of(memory_parts)),
      image(part.width, part.depth, part.base),
      model(part.size) {
    constexpr int different_values = 4;
    for (int count = 0; count < different_values; ++count) {
        values.push_back(other_word());
    }
}

void memory_image_operations::step() {
    using operation = stretch (memory_image_operations::*)();
    static constexpr std::array operations = {
        table_operation<operation>{"set", &memory_image_operations::set, 12},
        table_operation<operation>{"set many", &memory_image_operations::set_many, 3},
        table_operation<operation>{"fill", &memory_image_operations::fill, 6},
        table_operation<operation>{"fill unset", &memory_image_operations::fill_unset, 1},
        table_operation<operation>{"unset", &memory_image_operations::unset, 4},
        table_operation<operation>{"resize", &memory_image_operations::resize, 2},
        table_operation<operation>{"copy", &memory_image_operations::copy, 2},
        table_operation<operation>{"take bytes", &memory_image_operations::take_bytes, 1},
    };
    const table_operation<operation>& next = choose_operation(operations, chosen);
    change = next.name;
    const stretch changed = (this->*next.run)();
    if (++steps % steps_between_full_looks == 0) {
        compare_all();
        return;
    }
    const stretch around = {changed.first - std::min<std::uint64_t>(changed.first, 2),
                            std::min(changed.last + 2, size() - 1)};
    compare_runs(around); // before single words are read, because reading may convert bytes to texts
    compare_repetition(around.first);
    switch (steps % 4) {
    case 0:
        compare_words(around);
        break;
    case 1:
        compare_copy_to(around);
        break;
    case 2:
        compare_sums(around);
        break;
    default:
        compare_equality();
    }
}

word memory_image_operations::other_word() {
    constexpr unsigned dont_care_share = 9;
    return word_of_digits(maker.bits(part.width, chosen.once_in(8) ? dont_care_share : 0));
}

word memory_image_operations::any_word() {
    return chosen.once_in(2) ? chosen.one_of(values) : other_word();
}

/// Short and long ranges, and ranges up to the end.
memory_image_operations::stretch memory_image_operations::any_stretch() {
    constexpr std::uint64_t few = 10;
    const std::uint64_t first = any_index();
    const std::uint64_t longest = chosen.once_in(2) ? few : size();
    return {first, std::min(first + chosen.below(static_cast<std::uint32_t>(longest)), size() - 1)};
}

memory_image_operations::stretch memory_image_operations::set() {
    const std::uint64_t index = any_index();
    model[index] = any_word();
    image.set(address(index), *model[index]);
    return {index, index};
}

memory_image_operations::stretch memory_image_operations::set_many() {
    const stretch where = any_stretch();
    for (std::uint64_t index = where.first; index <= where.last; ++index) {
        model[index] = any_word();
        image.set(address(index), *model[index]);
    }
    return where;
}

memory_image_operations::stretch memory_image_operations::fill() {
    const stretch where = any_stretch();
    std::vector<word> pattern;
    for (std::uint32_t count = chosen.between(1, 5); count > 0; --count) {
        pattern.push_back(any_word());
    }
    image.fill({address(where.first), address(where.last)}, pattern);
    for (std::uint64_t index = where.first; index <= where.last; ++index) {
        model[index] = pattern[(index - where.first) % pattern.size()];
    }
    return where;
}

memory_image_operations::stretch memory_image_operations::fill_unset() {
    if (is_whole()) { // otherwise it would set words outside of the part
        const word value = any_word();
        image.fill_unset(value);
        for (auto& each : model) {
            each = each ? each : value;
        }
    }
    return {0, size() - 1};
}

memory_image_operations::stretch memory_image_operations::unset() {
    const stretch where = any_stretch();
    image.unset({address(where.first), address(where.last)});
    std::ranges::fill(elements_at(model, where.first, where.last), std::nullopt);
    return where;
}

memory_image_operations::stretch memory_image_operations::resize() {
    if (ends_memory()) {
        const std::uint64_t changed_size = chosen.between(1, static_cast<std::uint32_t>(part.size));
        image.resize(part.first + changed_size);
        model.resize(changed_size);
    }
    return {size() - 1, size() - 1};
}

memory_image_operations::stretch memory_image_operations::copy() {
    memory_image other = image;
    expect(other == image, "a copy", 0);
    other.fill({address(0), address(size() - 1)}, std::array{other_word()});
    other = image;
    image = std::move(other);
    return any_stretch();
}

/// Assigns another memory of the same size, which stores its words as bytes until one changes.
memory_image_operations::stretch memory_image_operations::take_bytes() {
    if (is_whole()) {
        const byte_order order = chosen.once_in(2) ? byte_order::little : byte_order::big;
        std::string bytes;
        for (auto& each : model) {
            each = word_of_digits(chosen.once_in(2) ? std::string(part.width, '0') : maker.bits(part.width));
            bytes += each->to_bytes(order).value();
        }
        image = kvrimage::image_of_bytes(bytes, {.width = part.width, .order = order, .base = part.base});
        expect(bytes_of_image(image, order) == bytes, "its bytes", 0);
    }
    return any_stretch();
}

void memory_image_operations::compare_all() {
    const stretch everything = {0, size() - 1};
    expect(image.width() == part.width && image.base() == part.base, "width or base", 0);
    expect(image.depth() == (ends_memory() ? part.first + size() : part.depth), "the depth", size());
    compare_sums(any_stretch());
    compare_runs(everything);
    compare_words(everything);
    compare_copy_to(any_stretch());
    compare_repetition(any_index());
    compare_equality();
}

void memory_image_operations::compare_words(stretch where) const {
    for (std::uint64_t index = where.first; index <= where.last; ++index) {
        expect(image[address(index)] == model[index], "a word", index);
    }
}

void memory_image_operations::compare_runs(stretch where) const {
    std::uint64_t next = where.first;
    for (const run& each : image.runs({address(where.first), address(where.last)})) {
        expect(each.addresses.first == address(next) && each.addresses.last <= address(where.last),
               "where a run begins or ends", next);
        const std::uint64_t last = each.addresses.last - address(0);
        for (; next <= last; ++next) {
            expect(each.value == model[next], "a word of a run", next);
        }
        expect(last == where.last || model[last + 1] != model[last], "a run is too short", last);
    }
    expect(next == where.last + 1, "the end of the runs", next);
}

void memory_image_operations::compare_repetition(std::uint64_t index) const {
    const kvrimage::repetition found = image.repetition_at(address(index));
    expect(found.last >= address(index) && found.period != 0, "a repetition", index);
    const std::uint64_t last = std::min(found.last - address(0), size() - 1);
    for (std::uint64_t each = index; each + found.period <= last; ++each) {
        expect(model[each] == model[each + found.period], "a word of a repetition", each + found.period);
    }
}

void memory_image_operations::compare_sums(stretch where) const {
    const auto is_set = [](const auto& each) { return each.has_value(); };
    const auto in_part = elements_at(model, where.first, where.last);
    expect(image.count_set() == static_cast<std::uint64_t>(std::ranges::count_if(model, is_set)),
           "how many words are set", 0);
    expect(image.count_set({address(where.first), address(where.last)}) ==
               static_cast<std::uint64_t>(std::ranges::count_if(in_part, is_set)),
           "how many words of a range are set", where.first);
    const auto lowest = std::ranges::find_if(model, is_set);
    const auto above = std::find_if(model.rbegin(), model.rend(), is_set).base();
    const auto bounds = lowest == model.end()
                            ? std::optional<address_range>()
                            : address_range{address(static_cast<std::uint64_t>(lowest - model.begin())),
                                            address(static_cast<std::uint64_t>(above - model.begin())) - 1};
    expect(image.bounds() == bounds, "the bounds", 0);
}

void memory_image_operations::compare_copy_to(stretch where) const {
    constexpr std::uint64_t for_unset = 77;
    const auto in_part = elements_at(model, where.first, where.last);
    const bool is_refused = part.width > 64 || std::ranges::any_of(in_part, [](const auto& each) {
                                return each && each->has_dont_care();
                            });
    std::vector<std::uint64_t> out(in_part.size());
    try {
        image.copy_to(address(where.first), out, for_unset);
    } catch (const std::domain_error&) {
        expect(is_refused, "words that cannot be copied", where.first);
        return;
    }
    expect(!is_refused, "a copy of words that are no numbers", where.first);
    for (std::size_t index = 0; index < out.size(); ++index) {
        const auto& value = in_part[index];
        expect(out[index] == (value ? value->to_unsigned() : for_unset), "a copied word",
               where.first + index);
    }
}

void memory_image_operations::compare_equality() {
    memory_image other = image;
    const std::uint64_t index = any_index();
    const word value = any_word();
    other.set(address(index), value);
    expect((other == image) == (model[index] == value), "whether it equals another memory", index);
    if (model[index]) {
        other.set(address(index), *model[index]);
    } else {
        other.unset({address(index), address(index)});
    }
    expect(other == image, "whether it equals a memory with the same words", index);
}

void memory_image_operations::fail(std::string_view what, std::uint64_t index) const {
    throw std::logic_error(
        fmt::format("{}: {} at {} after step {}, {}", part.name, what, index, steps, change));
}

} // namespace kvr_test
