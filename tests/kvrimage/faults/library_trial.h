#pragma once

#include "kvrimage/compare/difference_figures.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/operations/error_correction/protection.h"
#include "kvrimage/operations/merge.h"
#include "kvrimage/operations/statistics.h"
#include "kvrimage/operations/statistics/histogram.h"
#include "tests/faults/allocation_faults.h"
#include "tests/kvrimage/faults/outcome_text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage_tests {

/// The objects of a call of the library and the storage for its results, which needs no allocation.
struct library_trial {
    // The operands of the call, which may change them.
    std::optional<kvrimage::memory_image> image;
    std::optional<kvrimage::memory_image> other;
    std::vector<kvrimage::memory_image> parts;
    kvrimage::run_iterator walk;
    std::optional<kvrimage::difference_counter> counter;
    std::optional<kvrimage::difference> found; ///< for the counter
    std::optional<kvrimage::ecc_scheme> scheme;

    // The results.
    std::optional<kvrimage::memory_image> made;
    std::optional<kvrimage::word> value;
    std::optional<kvrimage::merge_result> merge;
    std::optional<kvrimage::ecc_report> report;
    std::optional<kvrimage::word_statistics> statistics;
    std::optional<kvrimage::word_histogram> histogram;
    std::string text;
    std::array<std::uint64_t, 64> figures{};

    [[nodiscard]] std::string outcome() const {
        std::ostringstream out;
        for (const auto* each : {&image, &other, &made}) {
            show(out, *each);
        }
        show(out, parts);
        show(out, value);
        for (const std::uint64_t figure : figures) {
            out << figure << ' ';
        }
        out << '\n' << text << '\n';
        show_walk(out);
        show_counter(out);
        show_merge(out);
        show_report(out);
        show_statistics(out);
        return std::move(out).str();
    }

private:
    void show_walk(std::ostream& out) const {
        if (walk != std::default_sentinel) {
            show(out, walk->addresses);
            show(out, walk->value);
        }
    }
    void show_counter(std::ostream& out) const {
        if (!counter) {
            return;
        }
        const kvrimage::difference_figures& all = counter->figures();
        out << all.words << ' ' << all.ranges << ' ' << all.left_only << ' ' << all.right_only << ' '
            << all.bits << '\n';
        for (const std::uint64_t words : all.words_by_bit) {
            out << words << ' ';
        }
        for (const kvrimage::block_figures& block : all.blocks) {
            show(out, block.addresses);
            out << block.words << ' ' << block.bits << '\n';
        }
    }
    void show_merge(std::ostream& out) const {
        if (!merge) {
            return;
        }
        show(out, merge->image);
        for (const kvrimage::merged_part& part : merge->parts) {
            out << part.words << ' ';
            show(out, part.ranges);
        }
        for (const kvrimage::merge_overlap& overlap : merge->overlaps) {
            show(out, overlap.addresses);
            out << overlap.kept << ' ' << overlap.other << ' ' << overlap.difference.value_or(0) << '\n';
        }
        out << merge->overlap_count << '\n';
    }
    void show_report(std::ostream& out) const {
        if (!report) {
            return;
        }
        out << report->checked << ' ' << report->corrected << ' ' << report->damaged << '\n';
        for (const kvrimage::ecc_finding& each : report->findings) {
            out << each.address << ' ' << each.count << ' ' << each.step << ' ' << each.bit.value_or(1000)
                << '\n';
        }
    }
    void show_statistics(std::ostream& out) const {
        if (statistics) {
            out << statistics->set << ' ' << statistics->runs << ' ' << statistics->distinct << ' '
                << statistics->most_frequent_count << ' ';
            show(out, statistics->most_frequent);
        }
        if (histogram) {
            out << histogram->set << ' ' << histogram->distinct << ' ' << histogram->entropy << ' ';
            for (const kvrimage::counted_word& each : histogram->most_frequent) {
                show(out, each.value);
                out << each.count << ' ';
            }
        }
    }
};

using library_call = kvr_test::faulty_call<library_trial>;

/// The preparation of a call that needs none.
inline void prepare_nothing(library_trial& /*trial*/) {}

/// Returns a word of the width of trial.image.
inline kvrimage::word word_for(const library_trial& trial, std::uint64_t number) {
    return kvrimage::word::of(number, trial.image->width());
}

/// A kind of memory with a name.
struct image_kind {
    char letter; ///< for image_call
    const char* name;
    kvrimage::memory_image (*make)();
};

/// A call on trial.image.
struct image_call {
    const char* name;
    void (*call)(library_trial&);
    std::string_view free_for = {}; ///< the letters of the memories for which it allocates nothing
};

/// All combinations of @p calls and @p kinds.
template <std::size_t Kinds, std::size_t Calls>
std::vector<library_call> each_call_on_each(const image_kind (&kinds)[Kinds],
                                            const image_call (&calls)[Calls]) {
    std::vector<library_call> all;
    for (const image_call& each : calls) {
        for (const image_kind& kind : kinds) {
            all.push_back({std::string(each.name) + " of " + kind.name,
                           [make = kind.make](library_trial& trial) { trial.image = make(); }, each.call,
                           each.free_for.find(kind.letter) == std::string_view::npos});
        }
    }
    return all;
}

} // namespace kvrimage_tests
