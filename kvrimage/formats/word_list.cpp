#include "kvrimage/formats/word_list.h"

#include "kvr/numeric/digit_run.h"
#include "kvr/util/letter_case.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/exchange/far_start.h"
#include "kvrimage/formats/word_digits.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace kvrimage {

namespace {

/// Returns the bits per digit; 1 in decimal, which has no fixed number.
std::uint64_t bits_per_digit(radix digits_radix) {
    switch (digits_radix) {
    case radix::hex:
        return bits_per_hex_digit;
    case radix::oct:
        return 3;
    default:
        return 1;
    }
}

/// Returns the bits that a word needs by its digits. Leading zeros count, except in decimal.
std::uint64_t bits_by_digits(std::string_view digits, radix digits_radix, std::string& scratch) {
    if (digits_radix != radix::dec && digits_radix != radix::uns) {
        return digits.size() * bits_per_digit(digits_radix);
    }
    const auto fault = make_word(digits, digits_radix, 1, scratch);
    return fault ? fault->bits_needed : 1;
}

/// Returns the depth from @p base on, or all of @p stated if the base is beyond it.
std::optional<std::uint64_t> depth_from(std::uint64_t base, std::optional<std::uint64_t> stated) {
    if (stated && base < *stated) {
        return *stated - base;
    }
    return stated;
}

} // namespace

word_list::word_list(std::string_view contents, const read_options& given, radix digits_radix,
                     const stated_sizes& stated, list_habits of_format)
    : text(contents),
      options(given),
      digits_are(digits_radix),
      known_width(given.width ? given.width : stated.width),
      known_depth(given.depth ? given.depth : depth_from(given.base.value_or(0), stated.depth)),
      width_setting(given.width ? "--width" : stated.width_setting),
      habits(std::move(of_format)),
      base(given.base.value_or(0)),
      step(stated.address_step),
      words(std::make_unique<image_words>(std::min(known_depth.value_or(deepest_memory), deepest_memory))),
      batch(words->lower_half()),
      lowest(std::numeric_limits<std::uint64_t>::max()) {}

void word_list::add(const address_range& addresses, std::string_view digits, const span& where) {
    const bool readable = fits(digits, where);
    add_raw(addresses, readable ? in_upper_case(digits) : unreadable_text, where);
}

void word_list::add_unchecked(const address_range& addresses, const span& digits, const span& where) {
    const std::string_view word = digits.in(text);
    if (find_bad_digit(word, digits_are) == std::string_view::npos) {
        add(addresses, word, where);
    } else {
        bad_digits.add(digits);
        add_raw(addresses, unreadable_text, where);
    }
}

bool word_list::add_spaced(std::uint64_t address, const spaced_words& all) {
    const std::uint64_t end = std::min(words->size(), image_words::half());
    const std::uint64_t offset = address - base;
    const std::uint64_t bits = bits_by_digits({all.first, all.length}, digits_are, scratch);
    const bool has_next_address = all.count <= std::numeric_limits<std::uint64_t>::max() - address;
    if (address < base || offset < set_end || offset > end || end - offset < all.count || !has_next_address ||
        bits > known_width.value_or(widest_word)) {
        return false;
    }
    copy_spaced(static_cast<std::uint32_t>(offset), all);
    lowest = std::min(lowest, address);
    longest_bits = std::max(longest_bits, static_cast<std::uint32_t>(bits));
    set_end = offset + all.count;
    return true;
}

void word_list::copy_spaced(std::uint32_t offset, const spaced_words& all) {
    for (std::size_t index = 0; index < all.count;) {
        const auto address = static_cast<std::uint32_t>(offset + index);
        const auto room = batch.room_for_some(address, all.length);
        if (room.count == 0) {
            batch.set_apart(address, in_upper_case(all[index++]));
            continue;
        }
        const std::size_t count = std::min(room.count, all.count - index);
        char* place = room.place;
        for (const std::size_t last = index + count; index < last; ++index, place += all.length) {
            kvr::copy_digits(all[index].data(), all.length, all.has_lower_case, place);
        }
        batch.take(count);
    }
}

void word_list::add_raw(const address_range& addresses, std::string_view raw, const span& where) {
    lowest = std::min(lowest, addresses.first);
    if (!is_within(addresses, where)) {
        return;
    }
    has_unreadable = has_unreadable || raw == unreadable_text;
    const address_range offsets{addresses.first - base, std::min(addresses.last - base, words->size() - 1)};
    if (offsets.first < set_end) {
        note_set_twice(offsets, raw, where);
    }
    set(offsets, raw);
    set_end = std::max(set_end, offsets.last + 1);
}

/// Returns false if none of @p addresses is in the memory. Records those that are not.
bool word_list::is_within(const address_range& addresses, const span& where) {
    if (addresses.first < base) {
        below.add(where, addresses.first);
        return false;
    }
    const std::uint64_t last = addresses.last - base;
    if (last >= words->size()) {
        beyond.add(where, std::max(addresses.first, base + words->size()), last);
    }
    return addresses.first - base < words->size();
}

bool word_list::fits(std::string_view digits, const span& where) {
    const std::uint64_t bits = bits_by_digits(digits, digits_are, scratch);
    if (bits > known_width.value_or(widest_word)) {
        const auto fault = make_word(digits, digits_are, known_width.value_or(widest_word), scratch);
        if (fault) {
            too_wide.add(where, fault->bits_needed);
            return false;
        }
    }
    longest_bits =
        std::max(longest_bits, static_cast<std::uint32_t>(std::min<std::uint64_t>(bits, widest_word)));
    return true;
}

void word_list::note_set_twice(const address_range& offsets, std::string_view raw, const span& where) {
    batch.flush();
    const bool also_same = habits.first_line != nullptr;
    bool is_set = false;
    for_each_run(*words, offsets.first, std::min(offsets.last + 1, set_end), [&](const text_run& run) {
        is_set = is_set || (!run.text.empty() && (also_same || run.text != raw));
    });
    if (is_set) {
        set_twice.add(where, base + offsets.first);
    }
}

void word_list::set(const address_range& offsets, std::string_view raw) {
    if (offsets.first == offsets.last && offsets.first < image_words::half()) {
        batch.set(static_cast<std::uint32_t>(offsets.first), raw);
    } else {
        batch.flush();
        words->fill(offsets.first, offsets.last, {raw});
    }
}

std::string_view word_list::in_upper_case(std::string_view digits) {
    scratch.resize(digits.size());
    std::ranges::transform(digits, scratch.begin(), kvr::upper_case_of);
    return scratch;
}

std::uint32_t word_list::width() const {
    const auto least = static_cast<std::uint32_t>(bits_per_digit(digits_are)); // if all words are unreadable
    return known_width.value_or(std::max(longest_bits, least));
}

void word_list::finish(diagnostic_list& diagnostics, read_result& result) {
    batch.flush();
    report(diagnostics);
    const bool proportionate = is_in_proportion(diagnostics);
    result.facts.width_source = known_width || longest_bits == 0 ? "" : "the longest word";
    const bool has_size = !empty() || (known_width && known_depth);
    if (empty() && !diagnostics.has_broken()) {
        diagnostics.add(has_size ? diagnose::no_words({}) : diagnose::size_unknown({}));
    }
    if (has_size && proportionate && (options.keep_going || !diagnostics.has_broken())) {
        result.image = make_image(result.unreadable);
    }
}

void word_list::report(diagnostic_list& diagnostics) const {
    if (!bad_digits.empty()) {
        diagnostics.add(describe_bad_digits(text, bad_digits, digits_are));
    }
    if (!too_wide.empty()) {
        diagnostics.add(diagnose::too_wide(too_wide.where, too_wide.where.front().in(text), too_wide.first,
                                           known_width.value_or(widest_word), width_setting, too_wide.most));
    }
    report_addresses(diagnostics);
    if (!set_twice.empty()) {
        diagnostics.add(habits.first_line ? diagnose::overwritten_word(set_twice.where, set_twice.first,
                                                                       habits.first_line(set_twice.first))
                                          : diagnose::word_set_again(set_twice.where, set_twice.first));
    }
}

void word_list::report_addresses(diagnostic_list& diagnostics) const {
    if (!below.empty()) {
        diagnostics.add(diagnose::below_base(below.where, in_file(below.first), in_file(base)));
    }
    const bool is_far = lowest != ~std::uint64_t{0} && lowest >= base && lowest - base >= least_far_start;
    if (options.base != 0U && !known_depth && !habits.may_begin_high && is_far) {
        diagnostic found = diagnose::base_needed({}, in_file(lowest));
        found.option = "--base 0x" + in_file(lowest);
        diagnostics.add(std::move(found));
    } else if (!beyond.empty() && known_depth) {
        diagnostics.add(diagnose::beyond_depth(beyond.where, beyond.first - base, *known_depth,
                                               *known_depth - 1, options.depth ? "--depth" : "DEPTH",
                                               beyond.most + 1));
    } else if (!beyond.empty()) {
        diagnostics.add(diagnose::address_outside(beyond.where, in_file(beyond.first),
                                                  in_file(base + (deepest_memory - 1))));
    }
}

/// Returns the word address @p address in the file's unit.
std::string word_list::in_file(std::uint64_t address) const {
    return fmt::format("{:X}", address * step);
}

/// Returns false, with a diagnostic, if a few long words would make the memory much larger than its file.
bool word_list::is_in_proportion(diagnostic_list& diagnostics) const {
    // Memories that need only a few times the file size are not checked.
    constexpr std::uint32_t usual_width = 256;
    constexpr std::uint64_t always_granted = std::uint64_t{16} << 20U;
    constexpr std::uint64_t most_growth = 4;
    if (width() <= usual_width || empty()) {
        return true;
    }
    std::uint64_t count = 0;
    for_each_row_or_run(
        *words,
        [&count](const kvr::word_row& row, std::uint64_t) {
            count += row.count;
            return row.count;
        },
        [&count](const text_run&) { ++count; });
    const std::uint64_t size = count * (width() / bits_per_hex_digit);
    const bool proportionate = size <= std::max(always_granted, most_growth * text.size());
    if (!proportionate) {
        diagnostics.add(diagnose::out_of_proportion({}, count, width(), size >> 20U, text.size()));
    }
    return proportionate;
}

memory_image word_list::make_image(std::vector<address_range>& unreadable) {
    words->resize(known_depth.value_or(set_end));
    if (has_unreadable) {
        for_each_run(*words, 0, words->size(), [&unreadable](const text_run& run) {
            if (run.text == unreadable_text) {
                unreadable.push_back({run.first, run.last});
            }
        });
    }
    const std::uint32_t bits = width();
    words->transform(
        [bits, this](std::string_view word, std::string& made) {
            made.clear();
            if (!word.empty() && word != unreadable_text) {
                make_word(word, digits_are, bits, made); // checked when it was added
            }
            return true;
        },
        [bits, this](const kvr::word_row& row) { return digits_are == radix::hex && are_words(row, bits); });
    return {bits, std::move(words)};
}

diagnostic describe_bad_digits(std::string_view contents, const places& where, radix digits_radix) {
    const std::string_view word = where.front().in(contents);
    const std::size_t fault = find_bad_digit(word, digits_radix);
    diagnostic found = diagnose::bad_digit(where, word.substr(fault, 1), word, adjective_of(digits_radix));
    if (fault == 0 && word.front() == '-' && digits_radix == radix::uns) {
        found.hint = "decimal values are unsigned here: write the unsigned value of the word";
    }
    return found;
}

} // namespace kvrimage
