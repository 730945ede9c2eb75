#include "tools/kvrmem/command_line/idle_options.h"

#include "kvrimage/formats/registry.h"
#include "kvrimage/picture/picture.h"
#include "tools/kvrmem/command_line/command_words.h"
#include "tools/kvrmem/command_line/format_names.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::format;

/// What a rule can ask for.
struct run_facts {
    const arguments& given;
    const format* input = nullptr;  ///< of the first operand, as far as name and --from tell it; else null
    const format* output = nullptr; ///< of OUT, as far as name and --to tell it; else null
    std::uint32_t width = 0;        ///< bits of a word; 0 before the file is read
};

bool has(const run_facts& run, option_id option) {
    return std::find(run.given.options.begin(), run.given.options.end(), option) != run.given.options.end();
}

bool writes_no_radix(const run_facts& run) {
    return run.output != nullptr && !run.output->states_radix;
}

bool writes_no_ranges(const run_facts& run) {
    return run.output != nullptr && !run.output->holds_ranges;
}

bool edits_what_states_sizes(const run_facts& run) {
    return run.input != nullptr && run.input->states_width && run.input->states_depth;
}

bool writes_standard_output(const run_facts& run) {
    return run.given.files[0] == "-";
}

bool fixes_nothing(const run_facts& run) {
    return !run.given.fix;
}

bool fixes(const run_facts& run) {
    return run.given.fix;
}

bool edits_in_place(const run_facts& run) {
    return !run.given.output;
}

bool names_its_input(const run_facts& run) {
    return run.given.output == run.given.files[0] && run.given.output != "-";
}

bool outputs_to_standard_output(const run_facts& run) {
    return run.given.output == "-";
}

bool draws_svg(const run_facts& run) {
    return run.given.output.has_value();
}

bool draws_bits(const run_facts& run) {
    return run.width > kvrimage::widest_waveform;
}

bool is_quiet(const run_facts& run) {
    return run.given.quiet;
}

bool is_for_git(const run_facts& run) {
    return run.given.git;
}

/// git's own names differ from run to run, so one --from goes with all of them.
bool names_tell_formats(const run_facts& run) {
    return !run.given.git &&
           std::all_of(run.given.files.begin(), run.given.files.end(),
                       [](const auto& path) { return kvrimage::format_of_path(path) != nullptr; });
}

bool is_fixed_point(const std::optional<word_radix>& radix) {
    return radix && radix->is_fixed_point();
}

bool library_takes_fixed_point(const run_facts& run) {
    return run.given.library && (is_fixed_point(run.given.from_radix) || is_fixed_point(run.given.to_radix));
}

/// An option that changes nothing in some runs of a command.
struct idle_option {
    std::string_view command;
    option_id option;
    bool (*is_idle)(const run_facts&);
    const char* reason;                            ///< completes "--… has no effect "
    const format* run_facts::*concerned = nullptr; ///< whose title takes the place of "{}" in the reason
};

constexpr const char* no_radixes = "on {}, which has no radixes";
constexpr const char* no_ranges = "on {}, which has no ranges";
constexpr const char* own_sizes = "on {}, which says its width and depth itself";

constexpr const char* comments_stay = "without --output: FILE keeps its comments";
constexpr const char* comments_of_input_stay = "when --output names FILE, which keeps its comments";
constexpr const char* no_file_is_replaced = "on standard output, which replaces no file";

constexpr std::array<idle_option, 40> rules = {{
    {"convert", option_id::data_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"convert", option_id::address_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"convert", option_id::no_runs, writes_no_ranges, no_ranges, &run_facts::output},
    {"check", option_id::output, fixes_nothing, "without --fix: kvrmem check --fix -o OUT FILE"},
    {"check", option_id::force_overwrite, fixes_nothing, "without --fix: it is for the repaired file"},
    {"check", option_id::json, fixes, "with --fix, which writes a file"},
    {"check", option_id::check_protection, fixes, "with --fix, which mends the text of a file"},
    {"check", option_id::json, is_quiet, "with --quiet, which shows nothing"},
    {"check", option_id::quiet, fixes, "with --fix, which reports what it changes"},
    {"set", option_id::width, edits_what_states_sizes, own_sizes, &run_facts::input},
    {"set", option_id::depth, edits_what_states_sizes, own_sizes, &run_facts::input},
    {"fill", option_id::width, edits_what_states_sizes, own_sizes, &run_facts::input},
    {"fill", option_id::depth, edits_what_states_sizes, own_sizes, &run_facts::input},
    {"set", option_id::force_overwrite, edits_in_place, comments_stay},
    {"fill", option_id::force_overwrite, edits_in_place, comments_stay},
    {"set", option_id::force_overwrite, names_its_input, comments_of_input_stay},
    {"fill", option_id::force_overwrite, names_its_input, comments_of_input_stay},
    {"set", option_id::force_overwrite, outputs_to_standard_output, no_file_is_replaced},
    {"fill", option_id::force_overwrite, outputs_to_standard_output, no_file_is_replaced},
    {"check", option_id::force_overwrite, outputs_to_standard_output, no_file_is_replaced},
    {"diff", option_id::from, names_tell_formats, "when both names tell their format"},
    {"diff", option_id::radix, is_quiet, "with --quiet, which shows no words"},
    {"diff", option_id::json, is_quiet, "with --quiet, which shows nothing"},
    {"diff", option_id::quiet, is_for_git, "with --git, whose answer is a text"},
    {"plot", option_id::columns, draws_svg, "on an SVG file, which has a size of its own"},
    {"plot", option_id::is_signed, draws_bits,
     "on words of more than 64 bits, which become a map of their bits"},
    {"new", option_id::data_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"new", option_id::address_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"new", option_id::no_runs, writes_no_ranges, no_ranges, &run_facts::output},
    {"new", option_id::force, writes_standard_output, no_file_is_replaced},
    {"split", option_id::data_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"split", option_id::address_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"split", option_id::no_runs, writes_no_ranges, no_ranges, &run_facts::output},
    {"join", option_id::data_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"join", option_id::address_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"join", option_id::no_runs, writes_no_ranges, no_ranges, &run_facts::output},
    {"merge", option_id::data_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"merge", option_id::address_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"merge", option_id::no_runs, writes_no_ranges, no_ranges, &run_facts::output},
    {"radix", option_id::width, library_takes_fixed_point,
     "with --library on fixed point, which says its width"},
}};

/// The file that @p which writes; nothing when it writes none.
std::optional<std::string> target_of(const command& which, const arguments& given) {
    constexpr std::array<std::pair<std::string_view, std::size_t>, 3> operands = {
        {{"convert", 1}, {"new", 0}, {"split", 1}}};
    for (const auto& [name, operand] : operands) {
        if (name == which.name) {
            return given.files[operand];
        }
    }
    constexpr std::array<std::string_view, 2> with_output = {"join", "merge"};
    return std::ranges::find(with_output, which.name) != with_output.end() ? given.output : std::nullopt;
}

/// The format of that file; null when there is none, or nothing tells it.
const format* output_format(const command& which, const arguments& given) {
    const std::optional<std::string> target = target_of(which, given);
    if (!target) {
        return nullptr;
    }
    return given.to != nullptr ? given.to : kvrimage::format_of_path(*target);
}

const option_entry& entry_of(option_id option) {
    const auto table = option_table();
    return *std::find_if(table.begin(), table.end(),
                         [option](const option_entry& entry) { return entry.id == option; });
}

std::string reason_of(const idle_option& rule, const run_facts& run) {
    return rule.concerned != nullptr ? replaced(rule.reason, "{}", std::string((run.*rule.concerned)->title))
                                     : rule.reason;
}

} // namespace

void refuse_idle_options(const command& which, const arguments& given) {
    refuse_idle_options(which, given, 0);
}

void refuse_idle_options(const command& which, const arguments& given, std::uint32_t width) {
    if (given.files.empty()) {
        return;
    }
    const format* const input = given.from != nullptr ? given.from : kvrimage::format_of_path(given.files[0]);
    const run_facts run{given, input, output_format(which, given), width};
    for (const idle_option& rule : rules) {
        if (rule.command == which.name && has(run, rule.option) && rule.is_idle(run)) {
            usage_error(
                fmt::format("--{} has no effect {}", entry_of(rule.option).name, reason_of(rule, run)));
        }
    }
}

} // namespace kvrmem
