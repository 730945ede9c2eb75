#include "kvrimage/diagnostics/visible_text.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/image/word_runs.h"
#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/command_line/whole_command.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/files/shown_runs.h"
#include "tools/kvrmem/files/written_memory.h"
#include "tools/kvrmem/files/written_report.h"
#include "tools/kvrmem/operations/apply.h"
#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

void require_words(const memory_input& input, bool was_changed) {
    if (!input.image().bounds() && was_changed) {
        const kvrimage::read_result before = kvrimage::parse(input.file.contents(), input.options);
        throw tool_error(
            exit_code::bad_input,
            fmt::format("{}: error: no word is left of those at {}; use --fill VALUE to set all words",
                        input.name(), set_addresses(before.image.value())));
    }
    if (!input.image().bounds()) {
        throw tool_error(exit_code::bad_input,
                         input.name() + ": error: the file sets no word; use --fill VALUE to set all words");
    }
}

/// Returns whether each word of @p bytes bytes has all of its bytes set, or none.
bool makes_whole_words(const kvrimage::memory_image& image, std::uint64_t bytes) {
    bool is_whole = true;
    std::uint64_t end = 0; // of the words set before the current range
    kvrimage::for_each_set_stretch(image.words(), [&](std::uint64_t first, std::uint64_t last) {
        const bool goes_on = image.base() + first == end;
        is_whole = is_whole && (goes_on || (end % bytes == 0 && (image.base() + first) % bytes == 0));
        end = image.base() + last + 1;
    });
    return is_whole && end % bytes == 0;
}

constexpr std::uint32_t width_of_bytes = 8;

/// Returns options that combine the bytes of @p input into wider words; none if its words are not bytes, or
/// if the user gives the width.
std::vector<std::string> options_for_wider_words(const arguments& given, const memory_input& input) {
    if (given.width || input.result.facts.unit != kvrimage::address_unit::byte ||
        input.image().width() != width_of_bytes) {
        return {};
    }
    const bool makes_fours = makes_whole_words(input.image(), 4);
    const bool makes_pairs = makes_whole_words(input.image(), 2);
    std::vector<std::string> options = {makes_pairs && !makes_fours ? "--width 16" : "--width 32"};
    if (!input.result.facts.order) {
        options.emplace_back("--endian little");
    }
    if (!makes_pairs && !input.options.pad) {
        options.emplace_back("--pad 0");
    }
    return options;
}

/// Notes that a file of bytes was read with 8-bit words because no width was given, if the output is a file
/// of words.
/// @param wider options for wider words
void note_words_of_bytes(const arguments& given, const memory_input& input,
                         const std::vector<std::string>& wider, const kvrimage::format& written) {
    if (wider.empty() || input.image().width() != width_of_bytes ||
        written.counts == kvrimage::address_unit::byte) {
        return;
    }
    const std::string line = command_with(given, wider);
    print_message(fmt::format("{}: note: each byte is a word; for wider ones give --width{}", input.name(),
                              line.empty() ? "" : ", as in " + line));
}

/// Returns the obstacles to writing the words of @p result without operations.
std::vector<kvrimage::diagnostic> obstacles_to_output(const arguments& given,
                                                      const kvrimage::read_result& result) {
    if (!given.operations.empty() ||
        (given.to == nullptr && kvrimage::format_of_path(given.files[1]) == nullptr)) {
        return {};
    }
    const kvrimage::write_options options = write_options_for(given, given.files[1], result.facts);
    return options.as->write != nullptr ? kvrimage::can_write(*result.image, options)
                                        : std::vector<kvrimage::diagnostic>();
}

void report_conversion(const arguments& given, const memory_input& input,
                       const std::vector<std::string>& done, const kvrimage::write_options& options) {
    const std::string& target = given.files[1];
    if (given.json) {
        json_value document = report_on_inputs("kvrmem-convert-1", std::span(&input, 1));
        document["operations"] = json_value::array();
        for (const std::string& each : done) {
            document["operations"].push_back(kvrimage::make_visible(each).text);
        }
        document["output"] = output_as_json(target, input.image(), options);
        print_json(document);
        return;
    }
    std::ranges::for_each(done, print_message);
    print_message(fmt::format("{} ({}) -> {} ({}): {}{}", input.name(), title_of_read(input), target,
                              title_of_written(options), written_words(input.image(), *options.as),
                              lost_start_address(input.result.facts, options)));
}

exit_code convert(const arguments& given) {
    require_json_apart(given, given.files[1]);
    memory_input input = read_memory(given, given.files[0], obstacles_to_output);
    kvrimage::memory_image& image = *input.result.image;
    const std::vector<std::string> wider = options_for_wider_words(given, input);
    const std::vector<std::string> done = apply(given.operations, image, input.name());
    const std::string& target = given.files[1];
    kvrimage::write_options options = write_options_for(given, target, input.result.facts);
    keep_start_address(given, input.result.facts, options);
    const bool was_changed = change_words(given.operations);
    require_words(input, was_changed);
    if (was_changed) { // no line of the file is at fault
        require_writable(given, image, target, options);
    } else {
        require_writable(given, input, options);
    }
    if (!given.force) {
        require_harmless(image, {input.name(), input.file.contents().size()}, options, target);
    }
    write_image(target, image, options);
    note_width(input);
    note_words_of_bytes(given, input, wider, *options.as);
    report_conversion(given, input, was_changed ? done : std::vector<std::string>(), options);
    note_other_extension(target, *options.as);
    return exit_code::success;
}

constexpr auto convert_options = united_options(
    writing_options,
    // Before an operation, depth and padding are options for reading.
    std::array{option_id::from, option_id::width, option_id::depth_in_order, option_id::unit,
               option_id::order, option_id::base, option_id::pad_in_order, option_id::read_choice},
    std::array{option_id::only, option_id::except, option_id::move_to, option_id::fill_rest, option_id::mask,
               option_id::reverse_bits, option_id::swap_bytes, option_id::invert, option_id::reshape,
               option_id::bit_order, option_id::protect, option_id::strip_protection, option_id::json});

} // namespace

const command convert_command = {
    "convert",
    "IN OUT",
    "Write a memory in another format or radix, every value exactly.",
    "  $ kvrmem convert sine.mif sine.hex\n"
    "  $ kvrmem convert --data-radix bin font.mif font_bin.mif\n"
    "  $ kvrmem convert --width 16 boot.hex boot.mif --fill 0\n"
    "  $ kvrmem convert --only 0x100..0x1FF --move-to 0 boot.mif part.mif\n"
    "  $ kvrmem convert --fill 0 --reshape 32 --ecc hamming bytes.mif words.hex\n"
    "  $ kvrmem convert --from mif --to rif - - < table.txt\n",
    "Names and contents determine the formats, unless --from and --to name them; kvrmem\n"
    "formats lists them. A file whose meaning is in doubt is refused, with the output of\n"
    "kvrmem check, and OUT is not changed. Words that are not set are omitted from OUT,\n"
    "unless --fill gives them a value.\n"
    "\n"
    "--only, --except, --move-to, --fill, --mask, --reverse-bits, --swap-bytes, --invert,\n"
    "--reshape, --ecc and --ecc-strip are applied in the given order, and each is\n"
    "reported. A --depth after one of them, except after --fill alone, is applied in this\n"
    "order, too: it enlarges or shortens the memory, but removes no word that is set. A\n"
    "--depth before all of them is the depth of IN. --order and --pad belong to the\n"
    "--reshape before them; a --pad without --reshape applies to the bytes of IN.\n"
    "\n"
    "The schemes of --ecc are hamming, hsiao-39-32 and hsiao-72-64 (each also with\n"
    "-inverted, the first Hsiao code also as -v1), even-parity and odd-parity (each also\n"
    "with -8 for a check bit after each byte, and -8-top for all check bits on top), and\n"
    "masks:FILE. FILE has the masks of the check bits, one hexadecimal number per line,\n"
    "and optionally a line invert HEX.\n"
    "\n"
    "Comments are not copied. If OUT is a file whose comments would be lost, or would\n"
    "have more than 1 GiB and more than 100 times the size of IN, nothing is written\n"
    "without --force.\n",
    2,
    2,
    convert_options,
    convert};

} // namespace kvrmem
