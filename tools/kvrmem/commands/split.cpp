#include "kvrimage/files/file_name.h"
#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/files/output_files.h"
#include "tools/kvrmem/files/written_memory.h"
#include "tools/kvrmem/files/written_report.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/progress.h"
#include "tools/kvrmem/platform/tool_error.h"
#include "tools/kvrmem/split/manifest.h"
#include "tools/kvrmem/split/split_plan.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrmem {

namespace {

constexpr std::string_view number_place = "%d";

/// @throws tool_error (wrong usage) unless @p pattern has exactly one placeholder for a number
void require_pattern(const std::string& pattern) {
    const std::size_t place = pattern.find(number_place);
    if (place == std::string::npos || pattern.find('%') != place ||
        pattern.find('%', place + 1) != std::string::npos) {
        usage_error(fmt::format("{}: the pattern needs one %d for the number of a file, and no other %",
                                kvrimage::title_of_output(pattern)));
    }
}

std::vector<std::string> names_by(const std::string& pattern, std::size_t count) {
    std::vector<std::string> names;
    for (std::size_t index = 0; index < count; ++index) {
        names.push_back(std::string(pattern).replace(pattern.find(number_place), number_place.size(),
                                                     fmt::format("{}", index)));
    }
    return names;
}

/// @throws tool_error if one of @p parts cannot be written to its file, or not without loss
void require_writable_parts(const arguments& given, const memory_input& input,
                            const std::vector<kvrimage::memory_image>& parts,
                            const std::vector<std::string>& names, const kvrimage::write_options& options) {
    for (std::size_t index = 0; index < parts.size(); ++index) {
        if (!parts[index].bounds()) {
            throw tool_error(exit_code::bad_input,
                             fmt::format("{}: error: no word of {} is set; use --fill VALUE to set all words",
                                         input.name(), kvrimage::title_of_output(names[index])));
        }
        require_writable(given, parts[index], names[index], options);
        if (!given.force) {
            require_harmless(parts[index], {input.name(), input.file.contents().size()}, options,
                             names[index]);
        }
    }
}

/// @throws tool_error (wrong usage) if a file would replace the input or another file of the same split
void require_distinct_files(const arguments& given, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        if (name_one_file(name, given.files[0])) {
            usage_error(fmt::format("{}: a file of the split would replace the input",
                                    kvrimage::title_of_output(name)));
        }
        if (given.manifest && name_one_file(name, *given.manifest)) {
            usage_error(fmt::format("--manifest {}: a file of the split has this name", *given.manifest));
        }
    }
    if (given.manifest && name_one_file(*given.manifest, given.files[0])) {
        usage_error(fmt::format("--manifest {}: it would replace the input", *given.manifest));
    }
}

/// Returns the information needed to read the files @p names, written with @p options, again.
manifest manifest_of(const kvrimage::memory_image& image, const split_plan& plan,
                     const kvrimage::write_options& options, const std::vector<std::string>& names) {
    manifest made = {plan, image.width(), image.depth(), std::string(options.as->id), names, {}, {}};
    if (options.as->counts == kvrimage::address_unit::byte) {
        made.order = options.order;
    }
    if (options.as->counts == kvrimage::address_unit::either) {
        made.unit = kvrimage::address_unit::word;
    }
    return made;
}

void report_parts(const arguments& given, const memory_input& input,
                  const std::vector<kvrimage::memory_image>& parts, const std::vector<std::string>& names,
                  const kvrimage::write_options& options) {
    json_value outputs = json_value::array();
    for (std::size_t index = 0; index < parts.size(); ++index) {
        if (given.json) {
            outputs.push_back(output_as_json(names[index], parts[index], options));
        } else {
            print_message(fmt::format("{} ({}) -> {} ({}): {}", input.name(), title_of_read(input),
                                      names[index], title_of_written(options),
                                      written_words(parts[index], *options.as)));
        }
    }
    if (given.json) {
        json_value document = report_on_inputs("kvrmem-split-report-1", std::span(&input, 1));
        document["outputs"] = std::move(outputs);
        print_json(document);
    }
}

exit_code split(const arguments& given) {
    require_json_apart(given, given.manifest.value_or(""));
    const std::string& pattern = given.files[1];
    require_pattern(pattern);
    const split_plan plan = plan_of(given);
    memory_input input = read_memory(given, given.files[0]);
    kvrimage::memory_image& image = *input.result.image;
    if (given.fill) {
        image.fill_unset(word_of_user(*given.fill, image.width(), "--fill " + *given.fill));
    }
    const kvrimage::write_options options = write_options_for(given, pattern, input.result.facts);
    show_operation(plan.title(), input.name());
    const std::vector<kvrimage::memory_image> parts = parts_of(image, plan);
    const std::vector<std::string> names = names_by(pattern, parts.size());
    require_distinct_files(given, names);
    require_writable_parts(given, input, parts, names, options);
    output_files files;
    for (std::size_t index = 0; index < parts.size(); ++index) {
        files.add(names[index], parts[index], options);
    }
    if (given.manifest) {
        files.add(*given.manifest, manifest_text(manifest_of(image, plan, options, names), *given.manifest));
    }
    files.commit();
    note_width(input);
    note_lost_start(input);
    report_parts(given, input, parts, names, options);
    note_other_extension(pattern, *options.as);
    return exit_code::success;
}

constexpr auto split_options =
    united_options(reading_options, writing_options,
                   std::array{option_id::lane_bits, option_id::banks, option_id::blocks, option_id::manifest,
                              option_id::fill, option_id::json});

} // namespace

const command split_command = {
    "split",
    "FILE PATTERN",
    "Split a memory into files: lanes of its words, banks or blocks of its addresses.",
    "  $ kvrmem split --bits 8 boot.mif lane%d.mif\n"
    "  $ kvrmem split --every 2 --manifest boot.json boot.mif bank%d.hex\n"
    "  $ kvrmem split --blocks 4 --fill 0 boot.mif part%d.mif\n",
    "--bits N makes a file for each N bits of the words, from the lowest bits on; --every\n"
    "N makes N files that take the words in turn; --blocks N makes N files of consecutive\n"
    "words. N must divide the width or depth. In PATTERN, %d is the number of a file,\n"
    "from 0 on; its extension or --to determines the format. --manifest FILE describes\n"
    "the files in JSON, and kvrmem join restores the memory from it. Either all files are\n"
    "written, or none.\n",
    2,
    2,
    split_options,
    split};

} // namespace kvrmem
