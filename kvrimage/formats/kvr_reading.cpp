#include "kvrimage/formats/kvr_reading.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>

namespace kvrimage {

namespace {

/// Converts an address that is below the size of its store.
std::uint32_t address_of_kvr(std::uint64_t address) {
    return static_cast<std::uint32_t>(address);
}

constexpr std::string_view kvr_name = "kvr";

/// Compares our words with those of the library, by address.
class word_comparison {
public:
    /// @param first the file address of the lowest address of @p image
    word_comparison(const memory_image& image, std::uint64_t first, const kvr::word_store& words_of_kvr,
                    radix radix_of_kvr)
        : ours(image.words()),
          theirs(words_of_kvr),
          base(first),
          width(image.width()),
          texts_radix(radix_of_kvr) {}

    /// Calls @p take (first address, last address, our text, their text) for each range of different words,
    /// in order.
    template <class Take>
    void for_each_difference(Take&& take) {
        const std::uint64_t end = std::max<std::uint64_t>(base + ours.size(), theirs.size());
        for (std::uint64_t address = 0; address < end;) {
            if (const std::uint64_t equal = equal_at_once(address)) {
                address += equal;
                continue;
            }
            const text_run our_run = run_of_ours(address, end);
            const text_run their_run = run_of_theirs(address, end);
            const std::uint64_t last = std::min(our_run.last, their_run.last);
            if (!is_same(our_run.text, their_run.text)) {
                take(address, last, our_run.text, their_run.text);
            }
            address = last + 1;
        }
    }

private:
    [[nodiscard]] bool is_in_both(std::uint64_t address) const {
        return address >= base && address - base < ours.size() && address < theirs.size();
    }

    /// Returns how many words from @p address on are equal without comparing each run; 0 if unknown.
    std::uint64_t equal_at_once(std::uint64_t address) {
        if (!is_in_both(address)) {
            return 0;
        }
        const std::uint64_t in_rows = equal_in_rows(address);
        return in_rows != 0 ? in_rows : equal_in_cycles(address);
    }

    std::uint64_t equal_in_rows(std::uint64_t address) {
        const kvr::word_row our_row = ours.row_at(address - base);
        const kvr::word_row their_row = theirs.row_at(address_of_kvr(address));
        const std::uint32_t count = std::min(our_row.count, their_row.count);
        if (texts_radix == radix::hex && our_row.part(0, count).all() == their_row.part(0, count).all()) {
            return count;
        }
        std::uint32_t same = 0;
        while (same < count && is_same(our_row[same], their_row[same])) {
            ++same;
        }
        return same;
    }

    /// Compares one period of words that repeat in both memories, so billions of words cost one period.
    std::uint64_t equal_in_cycles(std::uint64_t address) {
        if (address < cycles_known_until) {
            return 0;
        }
        const text_cycle our_cycle = ours.cycle_at(address - base);
        const kvr::word_cycle their_cycle = theirs.cycle_at(address_of_kvr(address));
        cycles_known_until = std::min<std::uint64_t>(our_cycle.last + base, their_cycle.last) + 1;
        const std::uint64_t period =
            std::lcm(std::uint64_t{our_cycle.period}, std::uint64_t{their_cycle.period});
        const std::uint64_t rounds = period != 0 ? (cycles_known_until - address) / period : 0;
        if (rounds < 2) {
            return 0;
        }
        for (std::uint64_t index = 0; index < period; ++index) {
            if (!is_same(ours[address - base + index], theirs[address_of_kvr(address + index)])) {
                return 0;
            }
        }
        return rounds * period;
    }

    [[nodiscard]] text_run run_of_ours(std::uint64_t address, std::uint64_t end) const {
        if (address < base) {
            return {address, base - 1, ""};
        }
        if (address - base >= ours.size()) {
            return {address, end - 1, ""};
        }
        const text_run run = ours.run_at(address - base);
        return {address, run.last + base, run.text};
    }

    [[nodiscard]] text_run run_of_theirs(std::uint64_t address, std::uint64_t end) const {
        if (address >= theirs.size()) {
            return {address, end - 1, ""};
        }
        const kvr::word_run run = theirs.run_at(address_of_kvr(address));
        return {address, run.last, run.text};
    }

    bool is_same(std::string_view our_text, std::string_view their_text) {
        if (our_text == their_text && (texts_radix == radix::hex || our_text.empty())) {
            return true;
        }
        bool is_unsigned = false;
        if (their_text.empty() ||
            make_word_of_any_sign(their_text, texts_radix, width, word_of_theirs, is_unsigned)) {
            return false;
        }
        return our_text.empty() ? word_of_theirs.find_first_not_of('0') == std::string::npos
                                : word_of_theirs == our_text;
    }

    const image_words& ours;
    const kvr::word_store& theirs;
    std::uint64_t base;
    std::uint32_t width;
    radix texts_radix;
    std::uint64_t cycles_known_until = 0;
    std::string word_of_theirs;
};

/// Formats @p text, a word of the image, for a message.
std::string shown_word(std::string_view text, const read_result& ours) {
    std::string shown;
    if (text.empty()) {
        return "no word";
    }
    const bool can_be_shown =
        show_word(text, ours.facts.data_radix.value_or(radix::hex), ours.image->width(), shown);
    return can_be_shown ? shown : std::string(text);
}

/// Formats @p text, a text of the library, for a message: like our words if it is a valid word.
std::string shown_text_of_kvr(std::string_view text, radix texts_radix, const read_result& ours) {
    std::string word;
    bool is_unsigned = false;
    const bool is_word =
        !text.empty() && !make_word_of_any_sign(text, texts_radix, ours.image->width(), word, is_unsigned);
    if (is_word || text.empty()) {
        return shown_word(word, ours);
    }
    return std::string(text);
}

/// Reports all differences in one diagnostic.
class difference_report {
public:
    difference_report(const format& format_of_file, std::string_view file,
                      const read_options& options_for_file, std::uint64_t first_address)
        : as(format_of_file),
          contents(file),
          options(options_for_file),
          base(first_address) {}

    void add(std::uint64_t first, std::uint64_t last) {
        count += last - first + 1;
        for (std::uint64_t address = first; address <= last && looked_for < places::kept; ++address) {
            ++looked_for;
            add_place(address);
        }
    }

    [[nodiscard]] diagnostic made(std::uint64_t address, const std::string& our_text,
                                  const std::string& their_text) const {
        diagnostic found = diagnose::kvr_reads_other_words(where, their_text, address, our_text);
        found.count = count;
        return found;
    }

private:
    void add_place(std::uint64_t address) {
        if (as.find_word == nullptr || address < base) {
            return;
        }
        if (const auto found = as.find_word(contents, options, address - base)) {
            where.add({found->offset, found->length});
        }
    }

    const format& as;
    std::string_view contents;
    const read_options& options;
    std::uint64_t base; ///< the file address of word 0
    places where;
    std::uint64_t count = 0;
    std::size_t looked_for = 0;
};

/// Returns the file address of word 0 of @p ours, counted in words.
std::uint64_t first_word_address(const read_options& options, const read_result& ours) {
    const std::uint64_t step =
        ours.facts.unit == address_unit::byte ? bytes_of_width(ours.image->width()) : 1;
    return ours.image->base() + options.base.value_or(0) / step;
}

std::optional<diagnostic> words_that_differ(const format& as, std::string_view contents,
                                            const read_options& options, const read_result& ours,
                                            const kvr_reading& theirs) {
    const std::uint64_t base = first_word_address(options, ours);
    difference_report report(as, contents, options, base);
    std::optional<std::uint64_t> first_address;
    std::string first_of_ours;
    std::string first_of_theirs;
    const auto take = [&](std::uint64_t first, std::uint64_t last, std::string_view our_text,
                          std::string_view their_text) {
        if (!first_address) {
            first_address = first;
            first_of_ours = shown_word(our_text, ours);
            first_of_theirs = shown_text_of_kvr(their_text, theirs.texts_radix, ours);
        }
        report.add(first, last);
    };
    word_comparison(*ours.image, base, theirs.words, theirs.texts_radix).for_each_difference(take);
    return first_address ? std::optional(report.made(*first_address, first_of_ours, first_of_theirs))
                         : std::nullopt;
}

bool is_explained(const read_result& ours) {
    return std::ranges::any_of(ours.diagnostics, [](const diagnostic& found) {
        return about(found.id).level == diagnostic_class::broken || found.consumer == kvr_name;
    });
}

} // namespace

std::vector<diagnostic> compare_with_kvr(const format& as, std::string_view contents,
                                         const read_options& options, const read_result& ours,
                                         const kvr_reading& theirs) {
    if (!ours.image || is_explained(ours)) {
        return {};
    }
    diagnostic_list list;
    if (theirs.refused) {
        const bool has_place = theirs.where.offset != 0 || theirs.where.length != 0;
        list.add(diagnose::kvr_refuses(has_place ? places(theirs.where) : places(), theirs.reason));
    } else if (auto found = words_that_differ(as, contents, options, ours, theirs)) {
        list.add(*std::move(found));
    }
    return list.finish(contents);
}

} // namespace kvrimage
