#include "kvrimage/files/file_error.h"
#include "kvrimage/formats/format_text.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/broken_file.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/files/lost_comments.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>

namespace kvrmem {

namespace {

/// Returns "MIF, Intel HEX, RIF".
std::string titles_with_a_layout() {
    std::string titles;
    for (const kvrimage::format* each : kvrimage::formats()) {
        if (each->lay_out != nullptr) {
            titles.append(titles.empty() ? "" : ", ").append(each->title);
        }
    }
    return titles;
}

[[noreturn]] void refuse_other_size(std::string_view option, const memory_input& input, std::uint64_t given,
                                    std::uint64_t stated) {
    usage_error(fmt::format("{}: --{} {} contradicts the file, which states {}", input.name(), option, given,
                            stated));
}

/// Rejects sizes that contradict the file or the words, since the file keeps its own settings.
void refuse_contradicted_sizes(const arguments& given, const memory_input& input) {
    const auto image_without = [&input](std::optional<std::uint32_t> width,
                                        std::optional<std::uint64_t> depth) {
        kvrimage::read_options options = input.options;
        options.width = width;
        options.depth = depth;
        return kvrimage::parse(input.file.contents(), options).image;
    };
    if (given.width && input.options.as->states_width) {
        const auto image = image_without({}, input.options.depth);
        if (image && image->width() != *given.width) {
            refuse_other_size("width", input, *given.width, image->width());
        }
    }
    if (given.depth && input.options.as->states_depth) {
        const auto image = image_without(input.options.width, {});
        if (image && image->depth() != *given.depth) {
            refuse_other_size("depth", input, *given.depth, image->depth());
        }
    }
}

memory_input read_for_layout(const arguments& given, const std::string& path) {
    memory_input input = open_memory(given, path);
    parse(input);
    if (!input.result.image) {
        throw refusal_of(given, input.path, input.file, input.result, *first_broken(input.result));
    }
    refuse_contradicted_sizes(given, input);
    return input;
}

std::string layout_of(const memory_input& input) {
    try {
        return kvrimage::format_text(input.file.contents(), input.options, input.result);
    } catch (const std::logic_error& error) {
        throw tool_error(exit_code::internal,
                         fmt::format("{}: {}, nothing was written", input.name(), error.what()));
    }
}

bool is_written_elsewhere(const arguments& given, const memory_input& input) {
    return given.output && *given.output != input.path;
}

void write_layout(const arguments& given, const memory_input& input, const std::string& text) {
    const bool has_changed = text != input.file.contents();
    const bool is_elsewhere = is_written_elsewhere(given, input);
    if (is_elsewhere && !given.force) {
        require_no_lost_comments(*given.output, text);
    }
    if (has_changed || is_elsewhere || input.path == "-") {
        write_text(given.output.value_or(input.path), text);
    }
    print_message(fmt::format("{}{}: {}", input.name(), is_elsewhere ? " -> " + *given.output : "",
                              has_changed ? "formatted" : "already formatted"));
    if (is_elsewhere) {
        note_other_extension(*given.output, *input.options.as);
    }
}

/// The results for all files of a run.
struct layout_totals {
    std::uint64_t changing = 0;
    exit_code refusal = exit_code::success; ///< the most severe reason why a file could not be formatted

    void refuse(const arguments& given, exit_code reason, std::string_view message) {
        refusal = std::max(refusal, reason);
        print_failure(message, given.color);
    }
};

/// In a check, which may include files of all formats, a file without layout rules counts as formatted.
void report_missing_rules(const arguments& given, const memory_input& input) {
    const std::string message = fmt::format("there are no rules for the layout of {}, only for {}",
                                            input.options.as->title, titles_with_a_layout());
    if (!given.only_checks_layout) {
        throw tool_error(exit_code::bad_input, fmt::format("{}: {}", input.name(), message));
    }
    print_message(fmt::format("{}: note: {}", input.name(), message));
}

void format_file(const arguments& given, const std::string& path, layout_totals& totals) {
    if (!given.only_checks_layout) {
        require_replaceable(given, path);
    }
    const memory_input input = read_for_layout(given, path);
    if (input.options.as->lay_out == nullptr) {
        report_missing_rules(given, input);
        return;
    }
    const std::string text = layout_of(input);
    if (!given.only_checks_layout) {
        write_layout(given, input, text);
    } else if (text != input.file.contents()) {
        print(fmt::format("{}: would change\n", input.name()));
        ++totals.changing;
    }
}

/// A rejected file is reported, and the other files are still formatted.
void format_or_report(const arguments& given, const std::string& path, layout_totals& totals) {
    try {
        format_file(given, path, totals);
    } catch (const kvrimage::file_error& error) {
        totals.refuse(given, exit_code::input_output, error.what());
    } catch (const tool_error& error) {
        totals.refuse(given, error.code(), error.message());
    }
}

exit_code lay_out_files(const arguments& given) {
    if (given.output && given.files.size() != 1) {
        usage_error("--output takes one file");
    }
    if (std::ranges::count(given.files, "-") > 1) {
        usage_error("standard input cannot be read twice");
    }
    layout_totals totals;
    for (const std::string& path : given.files) {
        format_or_report(given, path, totals);
    }
    return std::max(totals.refusal, totals.changing != 0 ? exit_code::negative : exit_code::success);
}

/// The options for reading files whose format has layout rules.
constexpr auto layout_reading_options = [] {
    auto options = reading_options;
    std::ranges::replace(options, option_id::read_choice, option_id::layout_choice);
    return options;
}();

constexpr auto format_options =
    united_options(layout_reading_options,
                   std::array{option_id::layout_check, option_id::output, option_id::force_overwrite});

} // namespace

const command format_command = {
    "format",
    "FILE...",
    "Bring files into the layout of their formats.",
    "  $ kvrmem format boot.mif\n"
    "  $ kvrmem format --check *.mif\n"
    "  $ kvrmem format -o tidy.mif boot.mif\n"
    "  $ kvrmem format --from mif - < boot.mif > tidy.mif\n",
    "Columns, letter case, leading zeros and blank lines change; words, addresses, their\n"
    "order and the texts of comments do not. Comments at the ends of adjacent lines are\n"
    "aligned. In Intel HEX files and S-records only the letter case changes. Files\n"
    "written by kvrmem are already formatted. A formatted file is not written, and a file\n"
    "with errors is refused. A file is replaced only after its new layout was read again.\n"
    "\n"
    "--check changes nothing and lists the files that would change. The exit code is then\n"
    "1 if there are any, and 2 or more if a file is refused. Files of formats without\n"
    "layout rules are noted, and accepted.\n",
    1,
    any_number,
    format_options,
    lay_out_files};

} // namespace kvrmem
