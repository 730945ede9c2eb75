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
    "An error is where the meaning of a file is in doubt, so that no command takes\n"
    "it. An error for kvr is what the library kvr refuses or reads otherwise; --for\n"
    "none leaves these out, --for icarus,verilator,yosys asks for those of simulators\n"
    "instead. A warning is what is read though it is hardly meant so.\n"
    "A --width or --depth is a limit, and what breaks it is an error. The exit code\n"
    "is 1 when a file has errors, with --strict also when it has warnings.\n"
    "\n"
    "--ecc checks the words against their check bits and says which bits are wrong. That\n"
    "is an error. masks:FILE is a scheme whose masks stand in FILE, one hexadecimal\n"
    "number a line, that of check bit 0 first, and a line invert HEX for check bits to\n"
    "invert.\n"
    "\n"
    "--format says what is printed: text, json (the same as --json), sarif (SARIF 2.1.0),\n"
    "github (commands for the log of a workflow), junit (JUnit XML) or gitlab (a report on\n"
    "the quality of code). The exit code is the same for all of them.\n"
    "\n"
    "Of each file the first 100 of each kind are shown, also with --format github, and\n"
    "10000 in the others. What has one\n"
    "cause is reported once, with its first places. --fix mends what is certain and\n"
    "leaves every other byte alone; OUT is written only when no error is left.\n",
    1,
    any_number,
    check_options_taken,
    check};

} // namespace kvrmem
