#include "tools/kvrmem/statistics/statistics_report.h"

#include "kvrimage/operations/statistics/histogram.h"
#include "kvrimage/operations/statistics/needed_width.h"
#include "kvrimage/operations/statistics/period.h"
#include "kvrimage/operations/statistics/runs.h"
#include "kvrimage/operations/statistics/toggles.h"
#include "tools/kvrmem/files/shown_runs.h"
#include "tools/kvrmem/platform/counted.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::memory_image;

constexpr std::size_t most_values = 10;
constexpr std::size_t widest_value_column = 64;

struct memory_statistics {
    kvrimage::word_histogram histogram;
    kvrimage::toggle_statistics toggles;
    kvrimage::run_statistics runs;
    kvrimage::needed_width width = {1, 1};
    std::optional<std::uint64_t> period;
};

memory_statistics statistics_of(const memory_image& image) {
    return {kvrimage::histogram_of(image, most_values), kvrimage::toggles_of(image), kvrimage::runs_of(image),
            kvrimage::needed_width_of(image), kvrimage::period_of(image)};
}

double share_of(std::uint64_t part, std::uint64_t all) {
    return static_cast<double>(part) / static_cast<double>(all);
}

std::string percent(double share) {
    constexpr double hundred = 100;
    return fmt::format("{:.1f} %", hundred * share);
}

/// Returns the table of the most frequent values, one per line: word, count, share.
std::string values_as_text(const kvrimage::word_histogram& histogram, const word_radix& radix) {
    std::size_t value_size = 0;
    std::size_t count_size = 0;
    for (const kvrimage::counted_word& one : histogram.most_frequent) {
        value_size = std::max(value_size, shown_or_gap(one.value, radix).size());
        count_size = std::max(count_size, fmt::format("{}", one.count).size());
    }
    value_size = std::min(value_size, widest_value_column);
    std::string text;
    for (const kvrimage::counted_word& one : histogram.most_frequent) {
        text += fmt::format("{:17}{:>{}}  {:>{}}  {:>7}\n", text.empty() ? "values" : "",
                            shown_or_gap(one.value, radix), value_size, one.count, count_size,
                            percent(share_of(one.count, histogram.set)));
    }
    const std::uint64_t others = histogram.distinct - histogram.most_frequent.size();
    return text + (others == 0 ? "" : fmt::format("{:17}and {} more\n", "", others));
}

std::uint64_t length_of(const kvrimage::run& run) {
    return run.addresses.last - run.addresses.first + 1;
}

} // namespace

std::string statistics_as_text(const memory_image& image, const word_radix& radix) {
    const memory_statistics found = statistics_of(image);
    if (!found.runs.longest) {
        return "";
    }
    const kvrimage::run& longest = *found.runs.longest;
    const kvrimage::toggle_statistics& toggles = found.toggles;
    std::string text = values_as_text(found.histogram, radix);
    const auto add = [&text](std::string_view name, std::string_view value) {
        text += fmt::format("{:<17}{}\n", name, value);
    };
    add("entropy", fmt::format("{:.3f} bits a word", found.histogram.entropy));
    add("toggle rate", toggles.compared == 0
                           ? std::string("none")
                           : fmt::format("{} ({} of {})", percent(toggles.rate()), toggles.toggled,
                                         counted(toggles.compared, "bit")));
    add("longest run",
        fmt::format("{} at {}", counted(length_of(longest), "word"), shown_range(longest.addresses)));
    add("width needed",
        fmt::format("{} unsigned, {} signed", found.width.as_unsigned, found.width.as_signed));
    add("repetition", found.period ? fmt::format("every {}", counted(*found.period, "word")) : "none");
    return text;
}

json_value statistics_as_json(const memory_image& image, const word_radix& radix) {
    const memory_statistics found = statistics_of(image);
    json_value values = json_value::array();
    for (const kvrimage::counted_word& one : found.histogram.most_frequent) {
        values.push_back({{"word", shown_or_gap(one.value, radix)},
                          {"count", one.count},
                          {"share", share_of(one.count, found.histogram.set)}});
    }
    json_value longest = nullptr;
    if (const std::optional<kvrimage::run>& run = found.runs.longest) {
        longest = {{"first", run->addresses.first},
                   {"last", run->addresses.last},
                   {"length", length_of(*run)},
                   {"word", shown_or_gap(run->value, radix)}};
    }
    return {{"values", std::move(values)},
            {"entropy", found.histogram.entropy},
            {"toggles",
             {{"pairs", found.toggles.pairs},
              {"compared_bits", found.toggles.compared},
              {"toggled_bits", found.toggles.toggled},
              {"rate", found.toggles.rate()}}},
            {"longest_run", std::move(longest)},
            {"width_needed", {{"unsigned", found.width.as_unsigned}, {"signed", found.width.as_signed}}},
            {"period", found.period ? json_value(*found.period) : json_value(nullptr)}};
}

} // namespace kvrmem
