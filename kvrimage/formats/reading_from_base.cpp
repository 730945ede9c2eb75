#include "kvrimage/formats/reading_from_base.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/diagnostics/places.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_copy.h"
#include "kvrimage/image/word_runs.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

/// Returns @p options for reading the file without a base.
read_options from_zero(const read_options& options) {
    read_options whole = options;
    whole.base = std::min(*options.base, deepest_memory - 1);
    if (whole.depth) {
        whole.depth = std::min(*whole.base + *whole.depth, deepest_memory);
    }
    return whole;
}

/// Returns the words of @p all from @p base on.
std::unique_ptr<image_words> moved_down(const image_words& all, std::uint64_t base) {
    auto moved = std::make_unique<image_words>(all.size() - base);
    copy_words(all, base, all.size() - 1, *moved, 0);
    return moved;
}

std::vector<address_range> moved_down(const std::vector<address_range>& ranges, std::uint64_t base) {
    std::vector<address_range> moved;
    for (const address_range& range : ranges) {
        if (range.last >= base) {
            moved.push_back({std::max(range.first, base) - base, range.last - base});
        }
    }
    return moved;
}

/// Returns the number of words set before @p end and the lowest address of them.
std::pair<std::uint64_t, std::uint64_t> words_before(const image_words& words, std::uint64_t end) {
    std::uint64_t count = 0;
    std::uint64_t lowest = end;
    for_each_set_stretch(words, [&](std::uint64_t first, std::uint64_t last) {
        if (first < end) {
            lowest = std::min(lowest, first);
            count += std::min(last, end - 1) - first + 1;
        }
    });
    return {count, lowest};
}

/// Moves the words of a file down by the base.
class base_shift {
public:
    base_shift(std::string_view file, const read_options& options_of_file,
               const reading_from_zero& format_of_file)
        : contents(file),
          options(options_of_file),
          as(format_of_file),
          base(*options_of_file.base) {}

    void shift(read_result& result) const {
        diagnostic_list list(options.most_diagnostics, options.wants_repairs);
        const std::uint64_t depth = result.image->depth();
        const auto [count, lowest] = words_before(result.image->words(), std::min(base, depth));
        if (count != 0) {
            list.add(words_below(count, lowest));
        } else if (base >= deepest_memory) {
            list.add(diagnose::address_outside({}, base, deepest_memory - 1));
        } else if (base >= depth) { // stated in the file: a depth in the options counts from the base
            list.add(diagnose::beyond_depth({}, base, depth, depth - 1, "DEPTH", base + 1));
        }
        if (base >= depth || (list.has_broken() && !options.keep_going)) {
            result.image.reset();
            result.unreadable.clear();
        } else {
            move_down(result);
        }
        std::ranges::move(list.finish(contents), std::back_inserter(result.diagnostics));
        sort_by_place(result.diagnostics);
    }

private:
    void move_down(read_result& result) const {
        result.image.emplace(result.image->width(), moved_down(result.image->words(), base));
        if (options.depth) {
            result.image->resize(*options.depth);
        }
        result.unreadable = moved_down(result.unreadable, base);
    }

    [[nodiscard]] diagnostic words_below(std::uint64_t count, std::uint64_t lowest) const {
        // find_word finds any word that was read.
        const place at = as.find_word(contents, options, lowest).value_or(place());
        diagnostic below = diagnose::below_base(span{at.offset, at.length}, fmt::format("{:X}", lowest),
                                                fmt::format("{:X}", base));
        below.count = count;
        return below;
    }

    std::string_view contents;
    const read_options& options;
    const reading_from_zero& as;
    std::uint64_t base;
};

} // namespace

read_result read_from_base(std::string_view contents, const read_options& options,
                           const reading_from_zero& as) {
    if (options.base.value_or(0) == 0) {
        return as.read(contents, options);
    }
    const read_options whole = from_zero(options);
    read_result result = as.read(contents, whole);
    if (result.image) {
        base_shift(contents, options, as).shift(result);
    }
    return result;
}

std::optional<place> find_from_base(std::string_view contents, const read_options& options,
                                    std::uint64_t address, const reading_from_zero& as) {
    const std::uint64_t base = options.base.value_or(0);
    return address <= std::numeric_limits<std::uint64_t>::max() - base
               ? as.find_word(contents, options, base + address)
               : std::nullopt;
}

} // namespace kvrimage
