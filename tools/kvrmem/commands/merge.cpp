#include "kvrimage/operations/merge.h"

#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/memory_inputs.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/files/shown_runs.h"
#include "tools/kvrmem/files/written_memory.h"
#include "tools/kvrmem/files/written_report.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/progress.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::address_range;
using kvrimage::merge_overlap;
using kvrimage::merge_result;
using kvrimage::overlap_rule;

void require_equal_widths(const memory_inputs& inputs) {
    const std::uint32_t first = inputs.images.front().width();
    for (std::size_t index = 1; index < inputs.images.size(); ++index) {
        const std::uint32_t width = inputs.images[index].width();
        if (width != first) {
            usage_error(
                fmt::format("{} has words of {}, but {} of {}; use --width BITS to read all with one width",
                            inputs.name(0), counted(first, "bit"), inputs.name(index), width));
        }
    }
}

/// Returns "a.mif: 16 words, at 0x0..0x7, 0x10..0x17".
std::string line_on_part(const std::string& name, const kvrimage::merged_part& part) {
    return fmt::format("{}: {}{}{}", name, counted(part.words, "word"), part.ranges.empty() ? "" : ", at ",
                       shown_ranges(part.ranges));
}

/// Returns "0x8..0xF (8 words) in a.mif and b.mif, the same words".
std::string line_on_overlap(const memory_inputs& inputs, const merge_overlap& overlap) {
    const std::uint64_t words = overlap.addresses.last - overlap.addresses.first + 1;
    return fmt::format("{} ({}) in {} and {}, {}", shown_range(overlap.addresses), counted(words, "word"),
                       inputs.name(std::min(overlap.kept, overlap.other)),
                       inputs.name(std::max(overlap.kept, overlap.other)),
                       overlap.difference ? fmt::format("other words from 0x{:X} on", *overlap.difference)
                                          : std::string("the same words"));
}

/// Lists only the ranges and overlaps that the library keeps; there may be more.
json_value as_json(const memory_inputs& inputs, const merge_result& result, json_value output) {
    json_value document = report_on_inputs("kvrmem-merge-1", inputs.files);
    for (std::size_t index = 0; index < inputs.files.size(); ++index) {
        document["inputs"][index]["words"] = result.parts[index].words;
        json_value& ranges = document["inputs"][index]["ranges"] = json_value::array();
        for (const address_range& range : result.parts[index].ranges) {
            ranges.push_back({{"first", range.first}, {"last", range.last}});
        }
    }
    json_value& overlaps = document["overlaps"] = json_value::array();
    for (const merge_overlap& each : result.overlaps) {
        overlaps.push_back({{"first", each.addresses.first},
                            {"last", each.addresses.last},
                            {"kept", json_name(inputs.files[each.kept].path)},
                            {"other", json_name(inputs.files[each.other].path)},
                            {"difference", each.difference ? json_value(*each.difference) : json_value()}});
    }
    document["overlap_count"] = result.overlap_count;
    document["output"] = std::move(output);
    return document;
}

void report_parts(const memory_inputs& inputs, const merge_result& result) {
    for (std::size_t index = 0; index < inputs.files.size(); ++index) {
        print_message(line_on_part(inputs.name(index), result.parts[index]));
    }
}

/// Reports the first overlaps of @p result and the number of the others.
void report_overlaps(const memory_inputs& inputs, const merge_result& result) {
    constexpr std::size_t most_shown_overlaps = 8;
    const std::size_t count = std::min(result.overlaps.size(), most_shown_overlaps);
    for (const merge_overlap& each : std::span(result.overlaps).first(count)) {
        print_message(fmt::format("overlap: {}{}", line_on_overlap(inputs, each),
                                  each.difference
                                      ? fmt::format("; those of {} are written", inputs.name(each.kept))
                                      : std::string()));
    }
    if (const std::uint64_t more = result.overlap_count - count; more != 0) {
        print_message(fmt::format("{} beyond these", counted(more, "overlap")));
    }
}

/// @throws tool_error (bad input) with the first overlap that @p rule does not allow
void require_merged(const memory_inputs& inputs, const merge_result& result, overlap_rule rule) {
    if (result.image) {
        return;
    }
    const auto culprit = std::ranges::find_if(result.overlaps, [rule](const merge_overlap& each) {
        return rule == overlap_rule::refuse || each.difference;
    });
    const std::string which = culprit != result.overlaps.end() ? line_on_overlap(inputs, *culprit)
                                                               : std::string("one that is not shown");
    const bool are_equal = result.overlaps.size() == result.overlap_count &&
                           std::ranges::none_of(result.overlaps, [](const merge_overlap& each) {
                               return each.difference.has_value();
                           });
    throw tool_error(exit_code::bad_input,
                     fmt::format("{}{} {}; --overlap {}", counted(result.overlap_count, "overlap"),
                                 result.overlap_count == 1 ? ":" : ", such as", which,
                                 are_equal ? "same accepts words that are the same in all files"
                                           : "first or last selects the words"));
}

merge_result merged_or_refused(const memory_inputs& inputs, overlap_rule rule) {
    try {
        return kvrimage::merged(inputs.images, rule);
    } catch (const std::out_of_range& error) {
        usage_error(fmt::format("{}: {}", inputs.names(), error.what()));
    }
}

merge_result merge_images(const arguments& given, const memory_inputs& inputs) {
    show_operation("merge", inputs.names());
    merge_result result = merged_or_refused(inputs, given.overlap);
    require_merged(inputs, result, given.overlap);
    if (given.fill) {
        result.image->fill_unset(word_of_user(*given.fill, result.image->width(), "--fill " + *given.fill));
    }
    if (!result.image->bounds()) {
        throw tool_error(exit_code::bad_input,
                         inputs.names() + ": error: no word is set; use --fill VALUE to set all words");
    }
    return result;
}

exit_code merge(const arguments& given) {
    if (!given.output) {
        usage_error("merge needs --output OUT");
    }
    const std::string& target = *given.output;
    require_json_apart(given, target);
    const memory_inputs inputs = read_memories(given);
    require_equal_widths(inputs);
    const merge_result result = merge_images(given, inputs);
    const kvrimage::write_options options =
        write_options_for(given, target, inputs.files.front().result.facts);
    require_writable(given, *result.image, target, options);
    if (!given.force) {
        require_harmless(*result.image, {inputs.names(), inputs.size}, options, target);
    }
    write_image(target, *result.image, options);
    std::ranges::for_each(inputs.files, note_lost_start);
    if (given.json) {
        print_json(as_json(inputs, result, output_as_json(target, *result.image, options)));
    } else {
        report_parts(inputs, result);
        report_overlaps(inputs, result);
        print_message(fmt::format("{} -> {} ({}): {}", inputs.names(), target, title_of_written(options),
                                  written_words(*result.image, *options.as)));
    }
    note_other_extension(target, *options.as);
    return exit_code::success;
}

constexpr auto merge_options =
    united_options(reading_options, writing_options,
                   std::array{option_id::output, option_id::overlap, option_id::fill, option_id::json});

} // namespace

const command merge_command = {
    "merge",
    "FILE FILE...",
    "Merge memory files whose words lie at different addresses.",
    "  $ kvrmem merge -o all.mif boot.mif tables.mif\n"
    "  $ kvrmem merge --overlap last -o patched.hex boot.hex patch.hex\n",
    "Each word keeps its address. The report states the ranges of each file, and the\n"
    "addresses that several files set. Such overlaps are refused, unless --overlap\n"
    "accepts equal words (same) or selects the words of a file (first, last). Words of\n"
    "different widths are refused, unless --width reads all files with one width.\n",
    2,
    any_number,
    merge_options,
    merge};

} // namespace kvrmem
