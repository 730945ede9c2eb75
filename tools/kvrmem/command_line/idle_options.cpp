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

/// The facts that rules examine.
struct run_facts {
    const arguments& given;
    const format* output = nullptr; ///< of OUT, if name and --to determine it; else null
    std::uint32_t width = 0;        ///< in bits; 0 before the file is read
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

bool writes_standard_output(const run_facts& run) {
    return run.given.files[0] == "-";
}

bool fixes_nothing(const run_facts& run) {
    return !run.given.fix;
}

bool fixes(const run_facts& run) {
    return run.given.fix;
}

bool prints_no_json(const run_facts& run) {
    return has(run, option_id::report) && run.given.report != report_format::json;
}

bool checks_layout(const run_facts& run) {
    return run.given.only_checks_layout;
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

bool draws_difference(const run_facts& run) {
    return run.given.files.size() == 2;
}

bool has_fixed_rows(const run_facts& run) {
    const bool is_waveform = run.width != 0 && !draws_bits(run);
    return draws_svg(run) && (is_waveform || draws_difference(run));
}

bool writes_no_bytes(const run_facts& run) {
    return run.output != nullptr && run.output->counts == kvrimage::address_unit::word;
}

template <option_id... Options>
bool has_none_of(const run_facts& run) {
    return !(has(run, Options) || ...);
}

bool makes_every_word(const run_facts& run) {
    return !has_none_of<option_id::expression, option_id::ramp_start, option_id::random>(run);
}

bool draws_pixels(const run_facts& run) {
    return run.given.picture_columns.has_value();
}

bool draws_no_pixels(const run_facts& run) {
    return !draws_pixels(run);
}

bool is_quiet(const run_facts& run) {
    return run.given.quiet;
}

bool shows_blocks(const run_facts& run) {
    return run.given.stat;
}

bool shows_figures(const run_facts& run) {
    return run.given.summary || run.given.stat;
}

bool is_for_git(const run_facts& run) {
    return run.given.git;
}

bool has_radix(const run_facts& run) {
    return run.given.radix.has_value();
}

/// git's temporary names vary, so one --from applies to all files.
bool names_determine_formats(const run_facts& run) {
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

/// An option without effect in some runs of a command.
struct idle_option {
    std::string_view command;
    option_id option;
    bool (*is_idle)(const run_facts&);
    const char* reason;                            ///< completes "--… has no effect "
    const format* run_facts::*concerned = nullptr; ///< its title replaces "{}" in the reason
};

constexpr const char* no_radixes = "on {}, which has no radixes";
constexpr const char* no_ranges = "on {}, which has no ranges";

constexpr const char* comments_stay = "without --output: FILE keeps its comments";
constexpr const char* comments_of_input_stay = "when --output names FILE, which keeps its comments";
constexpr const char* no_file_is_replaced = "on standard output, which replaces no file";

constexpr const char* no_values_of_two = "on two files, whose values are not drawn";
constexpr const char* no_values_of_bits = "on words of more than 64 bits, which become a map of their bits";

constexpr std::array<idle_option, 70> idle_rules = {{
    {"convert", option_id::data_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"convert", option_id::address_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"convert", option_id::no_runs, writes_no_ranges, no_ranges, &run_facts::output},
    {"check", option_id::output, fixes_nothing, "without --fix: kvrmem check --fix -o OUT FILE"},
    {"check", option_id::force_overwrite, fixes_nothing, "without --fix: it applies to the repaired file"},
    {"check", option_id::json, fixes, "with --fix, which writes a file"},
    {"check", option_id::check_protection, fixes, "with --fix, which repairs the text of a file"},
    {"check", option_id::json, is_quiet, "with --quiet, which shows nothing"},
    {"check", option_id::json, prints_no_json, "with --format, which asks for another report"},
    {"check", option_id::report, fixes, "with --fix, which writes a file"},
    {"check", option_id::report, is_quiet, "with --quiet, which shows nothing"},
    {"format", option_id::output, checks_layout, "with --check, which writes nothing"},
    {"format", option_id::force_overwrite, edits_in_place, comments_stay},
    {"format", option_id::force_overwrite, names_its_input, comments_of_input_stay},
    {"format", option_id::force_overwrite, outputs_to_standard_output, no_file_is_replaced},
    {"check", option_id::quiet, fixes, "with --fix, which reports what it changes"},
    {"set", option_id::force_overwrite, edits_in_place, comments_stay},
    {"fill", option_id::force_overwrite, edits_in_place, comments_stay},
    {"set", option_id::force_overwrite, names_its_input, comments_of_input_stay},
    {"fill", option_id::force_overwrite, names_its_input, comments_of_input_stay},
    {"set", option_id::force_overwrite, outputs_to_standard_output, no_file_is_replaced},
    {"fill", option_id::force_overwrite, outputs_to_standard_output, no_file_is_replaced},
    {"check", option_id::force_overwrite, outputs_to_standard_output, no_file_is_replaced},
    {"diff", option_id::from, names_determine_formats, "when both names determine their format"},
    {"diff", option_id::radix, is_quiet, "with --quiet, which shows no words"},
    {"diff", option_id::json, is_quiet, "with --quiet, which shows nothing"},
    {"diff", option_id::summary, is_quiet, "with --quiet, which shows nothing"},
    {"diff", option_id::stat, is_quiet, "with --quiet, which shows nothing"},
    {"diff", option_id::summary, shows_blocks, "with --stat, which ends with it"},
    {"diff", option_id::radix, shows_figures, "with --summary and --stat, which show no words"},
    {"diff", option_id::quiet, is_for_git, "with --git, whose output is text"},
    {"dump", option_id::json, is_for_git, "with --git, whose output is text"},
    {"plot", option_id::columns, draws_svg, "on an SVG file, which has a size of its own"},
    {"plot", option_id::rows, draws_pixels, "with --image"},
    {"plot", option_id::rows, has_fixed_rows, "on an SVG file, unless it shows a map of bits"},
    {"plot", option_id::radix, draws_difference, no_values_of_two},
    {"plot", option_id::is_signed, draws_difference, no_values_of_two},
    {"plot", option_id::picture_columns, draws_difference, "on two files, whose differences are drawn"},
    {"plot", option_id::radix, draws_bits, no_values_of_bits},
    {"plot", option_id::is_signed, draws_bits, no_values_of_bits},
    {"plot", option_id::radix, draws_pixels, "with --image"},
    {"plot", option_id::is_signed, has_radix, "with --radix, which states how values are read"},
    {"new", option_id::data_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"new", option_id::address_radix, writes_no_radix, no_radixes, &run_facts::output},
    {"new", option_id::no_runs, writes_no_ranges, no_ranges, &run_facts::output},
    {"new", option_id::force, writes_standard_output, no_file_is_replaced},
    {"new", option_id::order, writes_no_bytes, "on {}, whose addresses count words", &run_facts::output},
    {"new", option_id::fill, makes_every_word, "with --expr, --ramp and --random, which make every word"},
    {"new", option_id::ramp_step, has_none_of<option_id::ramp_start>, "without --ramp"},
    {"new", option_id::seed, has_none_of<option_id::random>, "without --random"},
    {"new", option_id::pixel, has_none_of<option_id::picture_file>, "without --image"},
    {"new", option_id::palette_colors, has_none_of<option_id::picture_file>, "without --image"},
    {"new", option_id::palette_file, has_none_of<option_id::picture_file>, "without --image"},
    {"new", option_id::dither, has_none_of<option_id::picture_file>, "without --image"},
    {"new", option_id::channel, has_none_of<option_id::sound_file>, "without --wav"},
    {"new", option_id::rounding, has_none_of<option_id::expression, option_id::sound_file>,
     "without --expr or --wav"},
    {"new", option_id::saturate, has_none_of<option_id::expression, option_id::sound_file>,
     "without --expr or --wav"},
    {"new", option_id::is_signed, has_none_of<option_id::expression>, "without --expr"},
    {"plot", option_id::pixel, draws_no_pixels, "without --image"},
    {"plot", option_id::is_signed, draws_pixels, "with --image"},
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
     "with --library on fixed point, which states its width"},
}};

/// Returns the file that @p which writes; nothing if it writes none.
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

/// Returns the format of the output file; null if there is no file or its format is unknown.
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
    const run_facts run{given, output_format(which, given), width};
    for (const idle_option& rule : idle_rules) {
        if (rule.command == which.name && has(run, rule.option) && rule.is_idle(run)) {
            usage_error(
                fmt::format("--{} has no effect {}", entry_of(rule.option).name, reason_of(rule, run)));
        }
    }
}

} // namespace kvrmem
