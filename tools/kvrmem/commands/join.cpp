#include "kvrimage/files/file_name.h"
#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/memory_inputs.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/files/written_memory.h"
#include "tools/kvrmem/files/written_report.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/progress.h"
#include "tools/kvrmem/platform/tool_error.h"
#include "tools/kvrmem/split/manifest.h"
#include "tools/kvrmem/split/split_plan.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

void require_arguments(const arguments& given) {
    if (!given.output) {
        usage_error("join needs --output OUT");
    }
    if (given.manifest && (given.lane_bits || given.banks || given.blocks || !given.files.empty())) {
        usage_error("--manifest states the files to join, and how");
    }
    if (!given.manifest && given.files.empty()) {
        usage_error("too few operands: kvrmem join FILE... or kvrmem join --manifest FILE");
    }
}

/// Returns @p given completed by the manifest. Options of the user take precedence.
arguments with_manifest(arguments given) {
    const manifest what = read_manifest(*given.manifest);
    const bool has_lanes = what.plan.how == split_plan::kind::lanes;
    given.files = what.files;
    given.from = given.from != nullptr ? given.from : kvrimage::format_of_name(what.format);
    given.width = given.width.value_or(has_lanes ? static_cast<std::uint32_t>(what.plan.number) : what.width);
    given.unit = given.unit ? given.unit : what.unit;
    given.order = given.order ? given.order : what.order;
    given.depth = given.depth.value_or(has_lanes ? what.depth : what.depth / what.plan.number);
    (has_lanes ? given.lane_bits : (what.plan.how == split_plan::kind::banks ? given.banks : given.blocks)) =
        what.plan.number;
    return given;
}

memory_inputs read_parts(const arguments& given) {
    memory_inputs inputs = read_memories(given);
    if (given.fill) {
        for (kvrimage::memory_image& image : inputs.images) {
            image.fill_unset(word_of_user(*given.fill, image.width(), "--fill " + *given.fill));
        }
    }
    return inputs;
}

void require_count(const split_plan& plan, const memory_inputs& inputs) {
    const kvrimage::memory_image& first = inputs.images.front();
    if (plan.how == split_plan::kind::lanes && first.width() != plan.number) {
        usage_error(fmt::format("{}: {} has words of {}", plan.title(), inputs.name(0),
                                counted(first.width(), "bit")));
    }
    if (plan.how != split_plan::kind::lanes && inputs.images.size() != plan.number) {
        usage_error(fmt::format("{}: {}", plan.title(), counted(inputs.images.size(), "file")));
    }
}

/// @param reading options for reading the files; @p given has the options for writing
exit_code join_files(const arguments& given, arguments reading) {
    const split_plan plan = plan_of(reading);
    if (plan.how == split_plan::kind::lanes && !reading.width) {
        reading.width = static_cast<std::uint32_t>(plan.number);
    }
    const memory_inputs inputs = read_parts(reading);
    require_count(plan, inputs);
    const std::string names = inputs.names();
    show_operation(plan.title(), names);
    const kvrimage::memory_image image = joined(inputs.images, plan);
    const std::string& target = *given.output;
    const kvrimage::write_options options =
        write_options_for(given, target, inputs.files.front().result.facts);
    if (!image.bounds()) {
        throw tool_error(exit_code::bad_input,
                         names + ": error: no word is set; use --fill VALUE to set all words");
    }
    require_writable(given, image, target, options);
    if (!given.force) {
        require_harmless(image, {names, inputs.size}, options, target);
    }
    write_image(target, image, options);
    std::ranges::for_each(inputs.files, note_lost_start);
    if (given.json) {
        json_value document = report_on_inputs("kvrmem-join-1", inputs.files);
        document["output"] = output_as_json(target, image, options);
        print_json(document);
    } else {
        print_message(fmt::format("{} -> {} ({}): {}", names, target, title_of_written(options),
                                  written_words(image, *options.as)));
    }
    note_other_extension(target, *options.as);
    return exit_code::success;
}

exit_code join(const arguments& given) {
    require_arguments(given);
    require_json_apart(given, *given.output);
    return join_files(given, given.manifest ? with_manifest(given) : given);
}

constexpr auto join_options =
    united_options(reading_options, writing_options,
                   std::array{option_id::output, option_id::lane_bits, option_id::banks, option_id::blocks,
                              option_id::manifest, option_id::fill, option_id::json});

} // namespace

const command join_command = {
    "join",
    "FILE...",
    "Join the files that kvrmem split makes to one memory.",
    "  $ kvrmem join --bits 8 -o boot.mif lane0.mif lane1.mif lane2.mif lane3.mif\n"
    "  $ kvrmem join --every 2 -o boot.mif bank0.hex bank1.hex\n"
    "  $ kvrmem join --manifest boot.json -o boot.mif\n",
    "The files are given in the order of their numbers, and --bits, --every or --blocks\n"
    "states how the memory was split; --manifest FILE states both. Files that differ in\n"
    "width or depth are refused. A word that is set in some lanes only is refused, unless\n"
    "--fill gives a value to words that are not set.\n",
    0,
    any_number,
    join_options,
    join};

} // namespace kvrmem
