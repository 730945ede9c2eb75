#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/shown_runs.h"
#include "tools/kvrmem/files/words_as_json.h"
#include "tools/kvrmem/numbers/human_number.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

kvrimage::address_range range_of_operand(const std::string& text, const kvrimage::memory_image& image) {
    const auto range = read_address_range(text);
    if (!range) {
        usage_error(fmt::format("'{}': {}", text,
                                advice_on_range(text, "expected an address or a range FIRST..LAST")));
    }
    const std::string fault = range_fault(*range, image);
    if (!fault.empty()) {
        usage_error(fault);
    }
    return *range;
}

/// Prints the words of @p range, one per line. Returns false if one of them is unset.
bool print_words(const memory_input& input, const kvrimage::address_range& range, const word_radix& radix,
                 output_stream& output) {
    bool all_set = true;
    for_each_shown_run(input.result, range, [&](const shown_run& run) {
        all_set = all_set && run.value.has_value();
        const std::string line = (run.is_unreadable ? "unreadable" : shown_or_gap(run.value, radix)) + '\n';
        for (std::uint64_t left = run.addresses.last - run.addresses.first + 1; left > 0; --left) {
            output.write(line);
        }
    });
    return all_set;
}

exit_code get(const arguments& given) {
    const memory_input input = read_memory(given, given.files[0]);
    const word_radix radix =
        given.radix.value_or(word_radix{input.result.facts.data_radix.value_or(kvrimage::radix::hex)});
    require_fitting(radix, input.image().width());
    std::vector<kvrimage::address_range> ranges;
    std::transform(given.files.begin() + 1, given.files.end(), std::back_inserter(ranges),
                   [&input](const std::string& text) { return range_of_operand(text, input.image()); });
    if (given.json) {
        return print_words_as_json("kvrmem-get-1", input, ranges, radix) ? exit_code::success
                                                                         : exit_code::negative;
    }
    output_stream output;
    bool all_set = true;
    for (const kvrimage::address_range& range : ranges) {
        all_set = print_words(input, range, radix, output) && all_set;
    }
    output.finish();
    return all_set ? exit_code::success : exit_code::negative;
}

constexpr auto get_options =
    united_options(reading_options, std::array{option_id::radix, option_id::json, option_id::keep_going});

} // namespace

const command get_command = {
    "get",
    "FILE ADDRESS[..LAST]...",
    "Print single words, one per line.",
    "  $ kvrmem get sine.mif 0x10\n"
    "  $ kvrmem get --radix hex sine.mif 0..3 255\n"
    "  $ kvrmem get --radix fixed:1.15 filter.mif 0..31\n",
    "Words are shown in the radix of the file, unless --radix selects another one. For a\n"
    "word that is not set the line is 'unset', and the exit code is 1; with --keep-going\n"
    "the line is 'unreadable' for a word in doubt. --json has an entry for each run of\n"
    "equal words.\n",
    2,
    any_number,
    get_options,
    get};

} // namespace kvrmem
