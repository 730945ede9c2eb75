#include "kvrimage/operations/merge.h"

#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/files/written_memory.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/message.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

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

/// The files that are merged.
struct merge_inputs {
    std::vector<memory_input> files; ///< without their images
    std::vector<kvrimage::memory_image> images;
    std::size_t size = 0; ///< of all files

    [[nodiscard]] const std::string& name(std::size_t index) const { return files[index].name(); }
    [[nodiscard]] std::string names() const {
        std::vector<std::string> all;
        for (const memory_input& each : files) {
            all.push_back(each.name());
        }
        return fmt::format("{}", fmt::join(all, ", "));
    }
};

merge_inputs read_inputs(const arguments& given) {
    merge_inputs inputs;
    for (const std::string& path : given.files) {
        memory_input& input = inputs.files.emplace_back(read_memory(given, path));
        inputs.images.push_back(std::move(*input.result.image));
        inputs.size += input.file.contents().size();
        const std::uint32_t width = inputs.images.back().width();
        if (width != inputs.images.front().width()) {
            usage_error(fmt::format("{} has words of {}, {} of {}; --width BITS reads all of them alike",
                                    inputs.name(0), counted(inputs.images.front().width(), "bit"),
                                    input.name(), width));
        }
    }
    return inputs;
}

/// "0x5", "0x5..0x8"
std::string shown(const address_range& range) {
    return range.first == range.last ? fmt::format("0x{:X}", range.first)
                                     : fmt::format("0x{:X}..0x{:X}", range.first, range.last);
}

/// "a.mif: 16 words, at 0x0..0x7, 0x10..0x17"
std::string line_on_part(const std::string& name, const kvrimage::merged_part& part) {
    constexpr std::size_t most_shown_ranges = 8;
    std::vector<std::string> ranges;
    for (const address_range& range : part.ranges) {
        ranges.push_back(shown(range));
    }
    const bool are_more = ranges.size() > most_shown_ranges;
    ranges.resize(std::min(ranges.size(), most_shown_ranges));
    return fmt::format("{}: {}{}{}{}", name, counted(part.words, "word"), ranges.empty() ? "" : ", at ",
                       fmt::join(ranges, ", "), are_more ? " ..." : "");
}

/// "0x8..0xF (8 words) in a.mif and b.mif, the same words"
std::string line_on_overlap(const merge_inputs& inputs, const merge_overlap& overlap) {
    const std::uint64_t words = overlap.addresses.last - overlap.addresses.first + 1;
    return fmt::format("{} ({}) in {} and {}, {}", shown(overlap.addresses), counted(words, "word"),
                       inputs.name(std::min(overlap.kept, overlap.other)),
                       inputs.name(std::max(overlap.kept, overlap.other)),
                       overlap.difference ? fmt::format("other words from 0x{:X} on", *overlap.difference)
                                          : std::string("the same words"));
}

/// Reports the first overlaps of @p result, and how many there are beyond these.
void report_overlaps(const merge_inputs& inputs, const merge_result& result) {
    constexpr std::size_t most_shown_overlaps = 8;
    const std::size_t count = std::min(result.overlaps.size(), most_shown_overlaps);
    for (const merge_overlap& each : std::span(result.overlaps).first(count)) {
        tell(fmt::format("overlap: {}{}", line_on_overlap(inputs, each),
                         each.difference ? fmt::format("; those of {} are written", inputs.name(each.kept))
                                         : std::string()));
    }
    if (const std::uint64_t more = result.overlap_count - count; more != 0) {
        tell(fmt::format("{} beyond these", counted(more, "overlap")));
    }
}

/// @throws tool_error (bad input) with the first overlap that @p rule does not allow
void require_merged(const merge_inputs& inputs, const merge_result& result, overlap_rule rule) {
    if (result.image) {
        return;
    }
    const auto culprit = std::ranges::find_if(result.overlaps, [rule](const merge_overlap& each) {
        return rule == overlap_rule::refuse || each.difference;
    });
    const std::string which = culprit != result.overlaps.end() ? line_on_overlap(inputs, *culprit)
                                                               : std::string("one that is not shown");
    throw tool_error(exit_code::bad_input,
                     fmt::format("{}{} {}; --overlap first or last says whose words count",
                                 counted(result.overlap_count, "overlap"),
                                 result.overlap_count == 1 ? ":" : ", such as", which));
}

merge_result merged_or_refused(const merge_inputs& inputs, overlap_rule rule) {
    try {
        return kvrimage::merged(inputs.images, rule);
    } catch (const std::out_of_range& error) {
        usage_error(fmt::format("{}: {}", inputs.names(), error.what()));
    }
}

merge_result merge_images(const merge_inputs& inputs, overlap_rule rule) {
    merge_result result = merged_or_refused(inputs, rule);
    require_merged(inputs, result, rule);
    if (!result.image->bounds()) {
        throw tool_error(exit_code::bad_input, inputs.names() + ": error: no word is set");
    }
    return result;
}

exit_code merge(const arguments& given) {
    if (!given.output) {
        usage_error("merge needs --output OUT");
    }
    const std::string& target = *given.output;
    const merge_inputs inputs = read_inputs(given);
    const merge_result result = merge_images(inputs, given.overlap);
    const kvrimage::write_options options =
        write_options_for(given, target, inputs.files.front().result.facts);
    require_writable(given, *result.image, target, options);
    if (!given.force) {
        require_harmless(*result.image, {inputs.names(), inputs.size}, options, target);
    }
    write_image(target, *result.image, options);
    for (std::size_t index = 0; index < inputs.files.size(); ++index) {
        tell(line_on_part(inputs.name(index), result.parts[index]));
    }
    report_overlaps(inputs, result);
    tell(fmt::format("{} -> {} ({}): {}", inputs.names(), target, title_of_written(options),
                     written_words(*result.image, *options.as)));
    note_other_extension(target, *options.as);
    return exit_code::fine;
}

constexpr std::array merge_options = {
    option_id::output,     option_id::overlap,       option_id::from,        option_id::to,
    option_id::width,      option_id::depth,         option_id::unit,        option_id::order,
    option_id::base,       option_id::pad,           option_id::read_choice, option_id::write_choice,
    option_id::data_radix, option_id::address_radix, option_id::no_runs,     option_id::force_conversion};

} // namespace

const command merge_command = {
    "merge",
    "FILE FILE...",
    "Merge memory files whose words lie at different addresses.",
    "  $ kvrmem merge -o all.mif boot.mif tables.mif\n"
    "  $ kvrmem merge --overlap last -o patched.hex boot.hex patch.hex\n",
    "Each word keeps its address. What came from which file is reported, with its ranges,\n"
    "and so are addresses that several files set. These are refused, unless --overlap says\n"
    "that the words must be the same (same), or whose words count (first, last). Words of\n"
    "different widths are refused, unless --width reads all files alike.\n",
    2,
    any_number,
    merge_options,
    merge};

} // namespace kvrmem
