#include "tools/kvrmem/check/check_fix.h"
#include "tools/kvrmem/check/check_report.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/commands/repair.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/surroundings/message.h"
#include "tools/kvrmem/surroundings/standard_output.h"

#include <fmt/format.h>

#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

/// What a run has found in all its files.
struct check_totals {
    std::uint64_t errors = 0;
    std::uint64_t warnings = 0;
    std::uint64_t files = 0;  ///< that could be read
    std::uint64_t faulty = 0; ///< of these, with errors or warnings
    bool unreadable = false;  ///< some file could not be read

    void add(const fault_list& faults) {
        errors += faults.count(severity::error);
        warnings += faults.count(severity::warning);
        ++files;
        const bool is_faulty = faults.count(severity::error) + faults.count(severity::warning) != 0;
        faulty += static_cast<std::uint64_t>(is_faulty);
    }
    [[nodiscard]] exit_code verdict() const {
        return unreadable ? exit_code::input_output : errors != 0 ? exit_code::negative : exit_code::fine;
    }
};

std::string summary(const check_totals& totals, const std::vector<std::string>& names) {
    const std::string faults = counted_faults(totals.errors, totals.warnings);
    if (names.size() == 1 && totals.files == 1) {
        return totals.faulty == 0 ? fmt::format("{}: no faults\n", names[0])
                                  : fmt::format("{} in {}\n", faults, names[0]);
    }
    if (totals.files == 0) {
        return "";
    }
    const char* plural = totals.files == 1 ? "" : "s";
    return totals.faulty == 0
               ? fmt::format("{} file{}: no faults\n", totals.files, plural)
               : fmt::format("{} in {} of {} file{}\n", faults, totals.faulty, totals.files, plural);
}

/// Whoever runs the command learns of a file that cannot be read, and of the others all the same.
void report_unreadable(const arguments& given, const tool_error& error) {
    tell_failure(error.message(), given.color);
}

class text_output {
public:
    explicit text_output(const arguments& arguments_given)
        : given(arguments_given),
          paint(painter_for(stdout, arguments_given.color)) {}

    [[nodiscard]] static std::size_t faults_kept() { return shown_faults; }
    void take(const std::string& name, const input_options& /*options*/, const check_source& source,
              const fault_list& faults) {
        names.push_back(name);
        print(faults_as_text(name, source, faults, paint));
    }
    void take_unreadable(const std::string& name, const tool_error& error) {
        names.push_back(name);
        report_unreadable(given, error);
    }
    void finish(const check_totals& totals) { print(summary(totals, names)); }

private:
    const arguments& given;
    painter paint;
    std::vector<std::string> names;
};

class json_output {
public:
    explicit json_output(const arguments& arguments_given) : given(arguments_given) {}

    [[nodiscard]] static std::size_t faults_kept() { return told_faults; }
    void take(const std::string& name, const input_options& options, const check_source& /*source*/,
              const fault_list& faults) {
        files.push_back(faults_as_json(name, format_title(options.format).data(), faults));
    }
    void take_unreadable(const std::string& /*name*/, const tool_error& error) {
        report_unreadable(given, error);
    }
    void finish(const check_totals& totals) {
        print_json({{"schema", "kvrmem-check-1"},
                    {"errors", totals.errors},
                    {"warnings", totals.warnings},
                    {"files", std::move(files)}});
    }

private:
    const arguments& given;
    json_value files = json_value::array();
};

/// What the person says of each file; a name that does not tell its format ends the run before it begins.
std::vector<input_options> options_of_files(const arguments& given) {
    std::vector<input_options> all;
    for (const std::string& path : given.files) {
        all.push_back(options_for(given, path));
    }
    return all;
}

/// The contents of @p file; nothing, and the totals say so, when it cannot be read.
template <class Output>
std::optional<check_source> read_or_report(const std::string& path, check_totals& totals, Output& output) {
    try {
        return check_source::of(input_file(path));
    } catch (const tool_error& error) {
        totals.unreadable = true;
        output.take_unreadable(path, error);
        return std::nullopt;
    }
}

template <class Output>
exit_code check_files(const arguments& given, Output output) {
    const std::vector<input_options> options = options_of_files(given);
    check_totals totals;
    for (std::size_t index = 0; index < given.files.size(); ++index) {
        const std::string& path = given.files[index];
        const std::optional<check_source> source = read_or_report(path, totals, output);
        if (source) {
            fault_list faults(Output::faults_kept());
            check_format(*source, options[index], faults);
            totals.add(faults);
            output.take(title_of_file(path), options[index], *source, faults);
        }
    }
    output.finish(totals);
    return totals.verdict();
}

void require_fix_arguments(const arguments& given) {
    if (given.output && !given.fix) {
        usage_error("--output belongs to --fix: kvrmem check --fix -o OUT FILE");
    }
    if (given.fix && !given.output) {
        usage_error("--fix needs --output OUT for the repaired file");
    }
    if (given.fix && given.files.size() != 1) {
        usage_error("--fix takes one file");
    }
    if (given.fix && given.json) {
        usage_error("--fix and --json do not go together");
    }
}

exit_code check(const arguments& given) {
    require_fix_arguments(given);
    if (given.fix) {
        return repair_file(given);
    }
    return given.json ? check_files(given, json_output(given)) : check_files(given, text_output(given));
}

constexpr std::array check_options = {option_id::from, option_id::width, option_id::depth,
                                      option_id::json, option_id::fix,   option_id::output};

} // namespace

const command check_command = {
    "check",
    "FILE...",
    "Tell every fault of memory files, with its place and the likely repair.",
    "  $ kvrmem check boot.mif\n"
    "  $ kvrmem check --width 16 --depth 4096 *.hex\n"
    "  $ kvrmem check --fix -o boot_fixed.hex boot.hex\n"
    "  $ kvrmem check --json boot.mif | jq '.files[].faults[].message'\n"
    "  $ kvrmem check --from mif - < table.txt\n",
    "An error is what the library refuses; a file without one is read. A warning is\n"
    "what the library reads though it is hardly meant so: kvrmem convert refuses\n"
    "where values would be lost. A --width or --depth is a limit, and what breaks\n"
    "it is an error. The exit code is 1 when a file has errors; warnings are free.\n"
    "\n"
    "Of each file the first 100 errors and 100 warnings are shown, in JSON 10000 of\n"
    "each. --fix mends what is certain (checksums, a missing end record or END;, a\n"
    "missing ';' at a line end, END in the line of a statement, [a - b] for [a..b],\n"
    "WIDTH 8, a radix that many values do not fit) and leaves every other byte\n"
    "alone. OUT is written only when no error is left.\n",
    1,
    any_number,
    check_options,
    check};

} // namespace kvrmem
