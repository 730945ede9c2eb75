#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/lost_comments.h"
#include "tools/kvrmem/memory/memory_input.h"
#include "tools/kvrmem/memory/memory_output.h"
#include "tools/kvrmem/memory/output_size.h"
#include "tools/kvrmem/memory/word_runs.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/message.h"
#include "tools/kvrmem/surroundings/replacement_file.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace kvrmem {

namespace {

[[noreturn]] void fail_at_word(const input_file& input, const input_options& options, std::uint32_t address,
                               const std::string& what) {
    std::string place = input.name();
    const std::uint64_t line = line_that_sets(input, options, address);
    if (line != 0) {
        place += fmt::format(":{}", line);
    }
    throw tool_error(exit_code::bad_input, fmt::format("{}: error: {}", place, what));
}

output_layout layout_for(const arguments& given, const memory_image& image) {
    output_layout layout;
    layout.format = format_for(given.to, given.files[1], "--to");
    layout.address_radix = given.address_radix.value_or(image.address_radix);
    layout.data_radix = given.data_radix.value_or(image.data_radix);
    layout.with_runs = !given.no_runs;
    return layout;
}

/// Gives the words that were never set the value @p text.
void fill_unset_words(memory_image& image, const std::string& text) {
    const std::string fill = word_of_person(text, image.width, "--fill " + text);
    const auto skip_cycle = [](const kvr::word_cycle& cycle) { return length_of(cycle); };
    for_each_cycle_or_run(image.words, skip_cycle, [&](const kvr::word_run& run) {
        if (run.text.empty()) {
            image.words.fill(run.first, run.last, {fill});
        }
    });
}

void require_words(const input_file& input, const memory_image& image) {
    if (!bounds_of(image.words)) {
        throw tool_error(exit_code::bad_input,
                         input.name() + ": error: the file sets no word; --fill VALUE gives all of them one");
    }
}

void require_writable_words(const input_file& input, const input_options& options, const memory_image& image,
                            const output_layout& layout) {
    try {
        require_writable(image, layout);
    } catch (const unwritable_word& word) {
        fail_at_word(input, options, word.address(), word.message());
    }
}

std::string radix_note(KVR_FILE_TYPES format, KVR_MEMORY_RADIXES radix) {
    return format == FILE_TYPE_MIF ? fmt::format(" in {}", radix_title(radix)) : std::string();
}

/// "16 words of 8 bits". A MIF says how many words the memory has; Intel HEX and RIF hold those that are set,
/// "2 of 16 words of 8 bits".
std::string written_words(const memory_image& image, KVR_FILE_TYPES format) {
    const std::uint64_t written = format == FILE_TYPE_MIF ? image.depth : count_set_words(image.words);
    const std::string part = written < image.depth ? fmt::format("{} of ", written) : std::string();
    return fmt::format("{}{} of {}", part, counted(image.depth, "word"), counted(image.width, "bit"));
}

/// A few bytes can stand for billions of words, which a user who mistyped a number does not want on the disk.
/// @return "28.0 GiB, from the 65 bytes of in.mif" when the output would be huge, and out of proportion to
/// @p input; else "".
std::string excessive_size(const input_file& input, const memory_image& image, const output_layout& layout) {
    constexpr std::uint64_t gibibyte = std::uint64_t{1} << 30U;
    constexpr std::uint64_t most_growth = 100;
    constexpr std::uint64_t longest_line_without_word = 96;
    const KVR_MEMORY_RADIXES radix = layout.format == FILE_TYPE_MIF ? layout.data_radix : RADIX_HEX;
    const std::uint64_t longest_line =
        longest_line_without_word + most_characters_of_word({radix}, image.width);
    if (count_set_words(image.words) <= gibibyte / longest_line) {
        return "";
    }
    const std::uint64_t size = estimated_output_size(image, layout);
    if (size <= gibibyte || size / most_growth <= input.size()) {
        return "";
    }
    return fmt::format("{:.1f} GiB, from the {} of {}",
                       static_cast<double>(size) / static_cast<double>(gibibyte),
                       counted(input.size(), "byte"), input.name());
}

/// @throws tool_error (wrong usage) with all that --force gives up.
void require_harmless(const input_file& input, const memory_image& image, const output_layout& layout,
                      const std::string& target) {
    const std::string size = excessive_size(input, image, layout);
    if (size.empty()) {
        require_no_lost_comments(target, "");
        return;
    }
    const std::string lost = lost_comments(target, "");
    usage_error(fmt::format("{}: would write {}{}; --force writes it", title_of_output(target), size,
                            lost.empty() ? "" : fmt::format(", and lose {}", lost)));
}

exit_code convert(const arguments& given) {
    const input_file input(given.files[0]);
    const input_options from = options_for(given, given.files[0]);
    memory_image image = read_memory(input, from);
    if (given.fill) {
        fill_unset_words(image, *given.fill);
    }
    const output_layout layout = layout_for(given, image);
    require_words(input, image);
    require_writable_words(input, from, image, layout);
    if (!given.force) {
        require_harmless(input, image, layout, given.files[1]);
    }
    replacement_file target(given.files[1]);
    write_memory(image, layout, target.output());
    target.commit();
    if (!image.note.empty()) {
        tell(fmt::format("{}: note: width {}", input.name(), image.note));
    }
    tell(fmt::format("{} ({}{}) -> {} ({}{}): {}", input.name(), format_title(image.format),
                     radix_note(image.format, image.data_radix), given.files[1], format_title(layout.format),
                     radix_note(layout.format, layout.data_radix), written_words(image, layout.format)));
    tell_of_other_extension(given.files[1], layout.format);
    return exit_code::fine;
}

constexpr std::array convert_options = {option_id::from,  option_id::to,         option_id::width,
                                        option_id::depth, option_id::data_radix, option_id::address_radix,
                                        option_id::fill,  option_id::no_runs,    option_id::force_conversion};

} // namespace

const command convert_command = {
    "convert",
    "IN OUT",
    "Write a memory in another format or radix, every value exactly.",
    "  $ kvrmem convert sine.mif sine.hex\n"
    "  $ kvrmem convert --data-radix bin font.mif font_bin.mif\n"
    "  $ kvrmem convert --width 16 boot.hex boot.mif --fill 0\n"
    "  $ kvrmem convert --from mif --to rif - - < table.txt\n",
    "The extensions .mif, .hex, .ihex and .rif tell the formats. A word that does\n"
    "not fit is refused, with its place in the file, and OUT stays as it was.\n"
    "Words that are never set stay out of OUT, unless --fill gives them a value.\n"
    "Comments are not carried over. Where OUT is a file with comments (after -- or %,\n"
    "in Intel HEX lines that do not begin with ':'), which would be lost, or would\n"
    "have more than 1 GiB and more than 100 times the size of IN, nothing is written\n"
    "without --force.\n",
    2,
    2,
    convert_options,
    convert};

} // namespace kvrmem
