#include "kvrimage/diagnostics/visible_text.h"
#include "kvrimage/files/file_error.h"
#include "kvrimage/files/file_name.h"
#include "kvrimage/formats/memory_file.h"
#include "tools/kvrmem/check/outputs.h"
#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/commands/repair.h"
#include "tools/kvrmem/files/check_report.h"
#include "tools/kvrmem/files/diagnostic_colors.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/protection_report.h"
#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kvrmem {

namespace {

class quiet_output : public check_output {
public:
    [[nodiscard]] std::size_t most_diagnostics() const override { return 1; }
    void take(const checked_file& /*file*/) override {}
    void report_refused(const std::string& /*path*/, std::string_view /*reason*/) override {}
    void finish(const check_totals& /*totals*/) override {}
};

class text_output : public check_output {
public:
    explicit text_output(const arguments& arguments_given)
        : given(arguments_given),
          paint(diagnostic_painter(stdout, arguments_given.color)) {}

    [[nodiscard]] std::size_t most_diagnostics() const override { return most_shown; }
    void take(const checked_file& file) override {
        const memory_input& input = file.input;
        print(report_as_text(input.name(), input.file.contents(), input.result, paint));
        if (file.protection) {
            print(protection_as_text(input.name(), *file.protection));
        }
    }
    void report_refused(const std::string& path, std::string_view /*reason*/) override {
        refused.append(refused.empty() ? "" : ", ").append(kvrimage::title_of_input(path));
    }
    void finish(const check_totals& totals) override {
        const bool is_one = given.files.size() == 1;
        print(summary_of(totals, is_one ? kvrimage::title_of_input(given.files[0]) : ""));
        if (!is_one && !refused.empty()) {
            print(fmt::format("not checked: {}\n", refused));
        }
    }

private:
    const arguments& given;
    kvrimage::text_painter paint;
    std::string refused; ///< names of files that could not be checked
};

class json_output : public check_output {
public:
    [[nodiscard]] std::size_t most_diagnostics() const override { return most_in_json; }
    void take(const checked_file& file) override {
        json_value report = report_as_json(file.input.path, file.input.result);
        if (file.protection) {
            report["ecc"] = protection_as_json(*file.protection);
        }
        files.push_back(std::move(report));
    }
    void report_refused(const std::string& path, std::string_view reason) override {
        refused.push_back({{"file", json_name(path)}, {"message", kvrimage::make_visible(reason).text}});
    }
    void finish(const check_totals& totals) override {
        print_json({{"schema", "kvrmem-check-2"},
                    {"broken", totals.found.of(kvrimage::diagnostic_class::broken)},
                    {"consumer", totals.found.of(kvrimage::diagnostic_class::consumer)},
                    {"suspect", totals.found.of(kvrimage::diagnostic_class::suspect)},
                    {"files", std::move(files)},
                    {"not_checked", std::move(refused)}});
    }

private:
    json_value files = json_value::array();
    json_value refused = json_value::array();
};

checked_file check_file(const arguments& given, const std::string& path, std::size_t most_diagnostics) {
    memory_input input = open_memory(given, path);
    kvrimage::check_options options = check_options_for(given, input.options);
    options.read.most_diagnostics = most_diagnostics;
    input.result = kvrimage::check(input.file.contents(), options);
    std::optional<protection_result> protection;
    if (given.protection && input.result.image) {
        protection = check_protection(input, *given.protection);
    }
    return {std::move(input), std::move(protection)};
}

/// Returns nothing for a file that cannot be checked. It is reported, and the other files are still checked.
std::optional<checked_file> check_or_report(const arguments& given, const std::string& path,
                                            check_totals& totals, check_output& output) {
    const auto refuse = [&](exit_code code, std::string_view reason) {
        totals.refuse(code);
        output.report_refused(path, reason);
        print_failure(reason, given.color);
    };
    try {
        return check_file(given, path, output.most_diagnostics());
    } catch (const kvrimage::file_error& error) {
        refuse(exit_code::input_output, error.what());
    } catch (const tool_error& error) {
        refuse(error.code(), error.message());
    }
    return std::nullopt;
}

exit_code check_files(const arguments& given, check_output& output) {
    check_totals totals;
    for (const std::string& path : given.files) {
        if (const std::optional<checked_file> file = check_or_report(given, path, totals, output)) {
            totals.add(*file);
            output.take(*file);
        }
    }
    output.finish(totals);
    return totals.verdict(given.strict);
}

void require_fix_arguments(const arguments& given) {
    if (given.fix && !given.output) {
        usage_error("--fix needs --output OUT for the repaired file");
    }
    if (given.fix && given.files.size() != 1) {
        usage_error("--fix takes one file");
    }
}

std::unique_ptr<check_output> output_of(const arguments& given) {
    if (given.quiet) {
        return std::make_unique<quiet_output>();
    }
    switch (given.json ? report_format::json : given.report) {
    case report_format::json:
        return std::make_unique<json_output>();
    case report_format::sarif:
        return make_sarif_output(given);
    case report_format::github:
        return make_github_output(given);
    case report_format::junit:
        return make_junit_output(given);
    case report_format::gitlab:
        return make_gitlab_output(given);
    default: // report_format::text
        break;
    }
    return std::make_unique<text_output>(given);
}

exit_code check(const arguments& given) {
    require_fix_arguments(given);
    if (given.fix) {
        return repair_file(given);
    }
    return check_files(given, *output_of(given));
}

constexpr auto check_options_taken = united_options(
    reading_options, std::array{option_id::consumer, option_id::strict, option_id::check_protection,
                                option_id::quiet, option_id::report, option_id::json, option_id::fix,
                                option_id::output, option_id::force_overwrite});

} // namespace

kvrimage::check_options check_options_for(const arguments& given, const kvrimage::read_options& reading) {
    kvrimage::check_options options;
    options.read = reading;
    if (given.consumers) {
        options.consumers = *given.consumers; // no consumer is named "none"
    }
    return options;
}

const command check_command = {
    "check",
    "FILE...",
    "Report every fault of memory files, with its place and the likely repair.",
    "  $ kvrmem check boot.mif\n"
    "  $ kvrmem check --width 16 --depth 4096 *.hex\n"
    "  $ kvrmem check --fix -o boot_fixed.hex boot.hex\n"
    "  $ kvrmem check --ecc hamming protected.mif\n"
    "  $ kvrmem check --json boot.mif | jq '.files[].diagnostics[].message'\n"
    "  $ kvrmem check --format sarif boot.mif > kvrmem.sarif\n"
    "  $ kvrmem check --from mif - < table.txt\n",
    "An error means that the meaning of a file is in doubt: every command refuses the\n"
    "file. An error for kvr means that the library kvr refuses the file or reads other\n"
    "words; --for none disables these checks, and --for icarus,verilator,yosys checks for\n"
    "simulators instead. A warning means that the file is read, but is probably wrong.\n"
    "--width and --depth are limits: a file that exceeds them has an error. The exit code\n"
    "is 1 if a file has errors, with --strict also if it has warnings.\n"
    "\n"
    "--ecc verifies the words against their check bits and reports wrong bits as errors.\n"
    "masks:FILE is a scheme with its masks in FILE, one hexadecimal number per line, from\n"
    "check bit 0 on; a line invert HEX names check bits to invert.\n"
    "\n"
    "--format selects the output: text, json (the same as --json), sarif (SARIF 2.1.0),\n"
    "github (workflow commands for the log), junit (JUnit XML) or gitlab (a code quality\n"
    "report). The exit code is the same for all of them.\n"
    "\n"
    "The first 100 faults of each class are shown for each file, also with --format\n"
    "github; the other formats show 10000. Faults with one cause are reported once, with\n"
    "the first places. --fix makes the certain repairs and changes nothing else; OUT is\n"
    "written only if no error is left.\n",
    1,
    any_number,
    check_options_taken,
    check};

} // namespace kvrmem
