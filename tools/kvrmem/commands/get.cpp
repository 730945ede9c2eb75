#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/memory/memory_input.h"
#include "tools/kvrmem/memory/word_runs.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

address_range range_of_operand(const std::string& text, const memory_image& image) {
    const auto range = read_address_range(text);
    if (!range) {
        throw tool_error(exit_code::wrong_usage,
                         fmt::format("'{}' is no address and no range FIRST..LAST", text));
    }
    if (range->last >= image.depth) {
        throw tool_error(exit_code::wrong_usage, fmt::format("address {} is beyond the depth {} (0 to {})",
                                                             range->last, image.depth, image.depth - 1));
    }
    return *range;
}

/// Prints the words of @p range, a line each. False when one of them was never set.
bool print_words(const memory_image& image, const address_range& range, const word_radix& radix,
                 output_stream& output) {
    bool all_set = true;
    std::string text;
    for_each_run(image.words, range.first, range.last, [&](const kvr::word_run& run) {
        all_set = all_set && !run.text.empty();
        show_word_or_gap(run.text, radix, image.width, text);
        text += '\n';
        for (std::uint64_t left = length_of(run); left > 0; --left) {
            output.write(text);
        }
    });
    return all_set;
}

exit_code get(const arguments& given) {
    const input_file input(given.files[0]);
    const memory_image image = read_memory(input, options_for(given, given.files[0]));
    const word_radix radix = given.radix.value_or(word_radix{image.data_radix});
    require_fitting(radix, image.width);
    std::vector<address_range> ranges;
    std::transform(given.files.begin() + 1, given.files.end(), std::back_inserter(ranges),
                   [&image](const std::string& text) { return range_of_operand(text, image); });
    output_stream output;
    bool all_set = true;
    for (const address_range& range : ranges) {
        all_set = print_words(image, range, radix, output) && all_set;
    }
    output.finish();
    return all_set ? exit_code::fine : exit_code::negative;
}

constexpr std::array get_options = {option_id::from, option_id::width, option_id::depth, option_id::radix};

} // namespace

const command get_command = {"get",
                             "FILE ADDRESS[..LAST]...",
                             "Print single words, one a line.",
                             "  $ kvrmem get sine.mif 0x10\n"
                             "  $ kvrmem get --radix hex sine.mif 0..3 255\n"
                             "  $ kvrmem get --radix fixed:1.15 filter.mif 0..31\n",
                             "Words are shown in the file's own radix unless --radix says otherwise. For a\n"
                             "word that was never set the line is 'unset', and the exit code 1.\n",
                             2,
                             any_number,
                             get_options,
                             get};

} // namespace kvrmem
