#include "tools/kvrmem/check/check_fix.h"
#include "tools/kvrmem/check/check_report.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/commands/repair.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/message.h"
#include "tools/kvrmem/surroundings/standard_output.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <fmt/format.h>

#include <algorithm>
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
    std::uint64_t files = 0;             ///< that could be checked
    std::uint64_t faulty = 0;            ///< of these, with errors or warnings
    std::uint64_t refused = 0;           ///< that could not be checked
    exit_code refusal = exit_code::fine; ///< the worst reason why a file could not be checked

    void add(const fault_list& faults) {
        errors += faults.count(severity::error);
        warnings += faults.count(severity::warning);
        ++files;
        const bool is_faulty = faults.count(severity::error) + faults.count(severity::warning) != 0;
        faulty += static_cast<std::uint64_t>(is_faulty);
    }
    void refuse(exit_code reason) {
        ++refused;
        refusal = std::max(refusal, reason);
    }
    [[nodiscard]] exit_code verdict() const {
        return std::max(refusal, errors != 0 ? exit_code::negative : exit_code::fine);
    }
};

/// What was found in the files that could be checked. @p only: the name of the only one, "" for several.
std::string summary(const check_totals& totals, const std::string& only) {
    const std::string faults = counted_faults(totals.errors, totals.warnings);
    if (totals.files == 0) {
        return "";
    }
    if (!only.empty()) {
        return totals.faulty == 0 ? fmt::format("{}: no faults\n", only)
                                  : fmt::format("{} in {}\n", faults, only);
    }
    const std::string left_out = totals.refused == 0 ? "" : fmt::format(", {} not checked", totals.refused);
    return totals.faulty == 0 ? fmt::format("{}: no faults{}\n", counted(totals.files, "file"), left_out)
                              : fmt::format("{} in {} of {}{}\n", faults, totals.faulty,
                                            counted(totals.files + totals.refused, "file"), left_out);
}

/// A file and what was found in it.
struct checked_file {
    input_options options;
    check_source source;
    fault_list faults;
};

class text_output {
public:
    explicit text_output(const arguments& arguments_given)
        : given(arguments_given),
          paint(painter_for(stdout, arguments_given.color)) {}

    [[nodiscard]] static std::size_t faults_kept() { return shown_faults; }
    void take(const std::string& path, const checked_file& file) {
        print(faults_as_text(title_of_file(path), file.source, file.faults, paint));
    }
    void take_refused(const std::string& path, const tool_error& /*error*/) {
        refused.append(refused.empty() ? "" : ", ").append(title_of_file(path));
    }
    void finish(const check_totals& totals) {
        const bool is_one = given.files.size() == 1;
        print(summary(totals, is_one ? title_of_file(given.files[0]) : ""));
        if (!is_one && !refused.empty()) {
            print(fmt::format("not checked: {}\n", refused));
        }
    }

private:
    const arguments& given;
    painter paint;
    std::string refused; ///< names of files that could not be checked
};

class json_output {
public:
    explicit json_output(const arguments& /*arguments_given*/) {}

    [[nodiscard]] static std::size_t faults_kept() { return told_faults; }
    void take(const std::string& path, const checked_file& file) {
        files.push_back(faults_as_json(path, format_title(file.options.format).data(), file.faults));
    }
    void take_refused(const std::string& path, const tool_error& error) {
        refused.push_back({{"file", json_name(path)}, {"message", make_visible(error.message()).text}});
    }
    void finish(const check_totals& totals) {
        print_json({{"schema", "kvrmem-check-1"},
                    {"errors", totals.errors},
                    {"warnings", totals.warnings},
                    {"files", std::move(files)},
                    {"not_checked", std::move(refused)}});
    }

private:
    json_value files = json_value::array();
    json_value refused = json_value::array();
};

/// @param faults_kept of each severity.
checked_file check_file(const arguments& given, const std::string& path, std::size_t faults_kept) {
    checked_file file{options_for(given, path), check_source::of(input_file(path)), fault_list(faults_kept)};
    check_format(file.source, file.options, file.faults);
    return file;
}

/// Nothing, and @p totals and @p output say so, when the file cannot be checked: the others are all the same.
template <class Output>
std::optional<checked_file> check_or_report(const arguments& given, const std::string& path,
                                            check_totals& totals, Output& output) {
    try {
        return check_file(given, path, Output::faults_kept());
    } catch (const tool_error& error) {
        totals.refuse(error.code());
        output.take_refused(path, error);
        tell_failure(error.message(), given.color);
        return std::nullopt;
    }
}

template <class Output>
exit_code check_files(const arguments& given, Output output) {
    check_totals totals;
    for (const std::string& path : given.files) {
        const std::optional<checked_file> file = check_or_report(given, path, totals, output);
        if (file) {
            totals.add(file->faults);
            output.take(path, *file);
        }
    }
    output.finish(totals);
    return totals.verdict();
}

void require_fix_arguments(const arguments& given) {
    if (given.fix && !given.output) {
        usage_error("--fix needs --output OUT for the repaired file");
    }
    if (given.fix && given.files.size() != 1) {
        usage_error("--fix takes one file");
    }
}

exit_code check(const arguments& given) {
    require_fix_arguments(given);
    if (given.fix) {
        return repair_file(given);
    }
    return given.json ? check_files(given, json_output(given)) : check_files(given, text_output(given));
}

constexpr std::array check_options = {option_id::from,           option_id::width, option_id::depth,
                                      option_id::json,           option_id::fix,   option_id::output,
                                      option_id::force_overwrite};

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
