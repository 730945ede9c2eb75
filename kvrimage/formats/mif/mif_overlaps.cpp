#include "kvrimage/formats/mif/mif_overlaps.h"

#include "kvr/memory/memory_state.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/mif/mif_numbers.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>

namespace kvrimage {

namespace {

/// Returns @p address in the notation of the file.
std::string address_text(std::uint64_t address, radix shown_in) {
    std::string digits;
    const unsigned base = kvr::radix_base(kvr_radix(shown_in));
    do {
        digits.push_back("0123456789ABCDEF"[address % base]);
        address /= base;
    } while (address != 0);
    std::ranges::reverse(digits);
    return digits;
}

} // namespace

mif_overlaps::mif_overlaps(std::string_view contents, const mif_number_form& numbers, bool wants_repairs)
    : text(contents),
      form(numbers),
      all_repairs(wants_repairs) {
    words.resize(static_cast<std::uint32_t>(form.depth), "");
}

void mif_overlaps::take(const mif_statement& found, const mif_addresses& addresses) {
    values.clear();
    std::ranges::transform(found.values, std::back_inserter(values),
                           [this](const span& value) { return value.in(text); });
    const auto first = static_cast<std::uint32_t>(addresses.first);
    const auto last = static_cast<std::uint32_t>(std::min(addresses.last, form.depth - 1));
    if (found.is_range()) {
        add_range(found, first, last);
    } else if (values.size() == 1) {
        add_single(found, first);
    } else {
        add_list(found, first, last);
    }
    words.fill(first, last, values);
}

/// Returns whether the texts are different words. Invalid words are compared as texts.
bool mif_overlaps::differ(std::string_view left, std::string_view right) const {
    if (left == right) {
        return false;
    }
    const auto word_of = [this](std::string_view one) {
        std::string word;
        bool is_unsigned = false;
        const bool is_word = width != 0 && !make_word_of_any_sign(one, form.data, width, word, is_unsigned);
        return is_word ? std::optional(word) : std::nullopt;
    };
    const std::optional<std::string> left_word = word_of(left);
    return !left_word || left_word != word_of(right);
}

void mif_overlaps::add_single(const mif_statement& found, std::uint32_t address) {
    const std::string_view before = words[address];
    const bool is_other = differ(before, values.front());
    if (singles.insert(address)) {
        if (is_other && lists.contains(address)) {
            find_overlap(found, address, address);
        }
        return;
    }
    if (!is_other) {
        // A line that holds only the statement is removed with it.
        if (again.add(found.whole, text_edit{found.whole.offset, found.whole.length, ""}, all_repairs)) {
            again_address = found.first.in(text);
        }
        return;
    }
    if (twice.add(found.whole, {}, all_repairs)) {
        twice_address = found.first.in(text);
        twice_earlier = before;
        twice_value = values.front();
    }
    doubtful.push_back({address, address});
}

void mif_overlaps::add_list(const mif_statement& found, std::uint32_t first, std::uint32_t last) {
    bool is_new = true;
    for (std::uint64_t address = first; address <= last; ++address) {
        const auto at = static_cast<std::uint32_t>(address);
        const bool is_set = !lists.insert(at) || singles.contains(at);
        if (is_set && is_new && differ(words[at], values[at - first])) {
            is_new = false;
            find_overlap(found, first, at);
        }
    }
}

void mif_overlaps::add_range(const mif_statement& found, std::uint32_t first, std::uint32_t last) {
    if (const auto address = first_difference(first, last)) {
        find_overlap(found, first, *address);
    }
}

/// Returns the first address from @p first to @p last whose word differs from the current values, repeated
/// from @p first on. Ranges set by one statement are not compared word by word.
std::optional<std::uint32_t> mif_overlaps::first_difference(std::uint32_t first, std::uint32_t last) const {
    std::uint64_t address = first;
    while (address <= last) {
        const auto at = static_cast<std::uint32_t>(address);
        const kvr::word_run run = words.run_at(at);
        const kvr::word_cycle cycle = words.cycle_at(at);
        if (run.text.empty()) {
            address = std::uint64_t{run.last} + 1;
            continue;
        }
        const std::uint64_t stretch =
            cycle.period > 1 ? std::uint64_t{cycle.last} - at + 1 : std::uint64_t{run.last} - at + 1;
        const std::uint64_t looked_at =
            std::min({stretch, std::max<std::uint64_t>(cycle.period, 1) * values.size(), last - address + 1});
        for (std::uint64_t i = 0; i < looked_at; ++i) {
            const auto one = static_cast<std::uint32_t>(address + i);
            if (differ(words[one], values[(one - first) % values.size()])) {
                return one;
            }
        }
        address += stretch;
    }
    return std::nullopt;
}

void mif_overlaps::find_overlap(const mif_statement& found, std::uint32_t first, std::uint32_t address) {
    if (over.add(found.whole, {}, all_repairs)) {
        over_address = address_text(address, form.addresses);
        over_earlier = words[address];
        over_value = values[(address - first) % values.size()];
    }
}

void mif_overlaps::report(diagnostic_list& list) {
    if (!twice.empty()) {
        twice.report(diagnose::set_twice(twice.where(), twice_address, twice_earlier, twice_value), "", list);
    }
    if (!again.empty()) {
        again.report(diagnose::set_again(again.where(), again_address), "repeated statement removed", list);
    }
    if (!over.empty()) {
        over.report(diagnose::overlap(over.where(), over_address, over_earlier, over_value), "", list);
    }
}

} // namespace kvrimage
