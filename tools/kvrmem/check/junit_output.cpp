#include "kvrimage/diagnostics/diagnostic_text.h"
#include "kvrimage/diagnostics/visible_text.h"
#include "kvrimage/diagnostics/xml_text.h"
#include "tools/kvrmem/check/outputs.h"
#include "tools/kvrmem/check/reported_fault.h"
#include "tools/kvrmem/platform/standard_output.h"

#include <fmt/format.h>

#include <string>

namespace kvrmem {

namespace {

/// The test cases of a file and their number.
struct test_suite {
    std::string cases;
    std::uint64_t tests = 0;
    std::uint64_t failures = 0;
    std::uint64_t errors = 0;

    void add(const std::string& file, const std::string& name, const std::string& inside) {
        cases += fmt::format(R"(    <testcase classname="{}" name="{}")", kvrimage::xml_text(file),
                             kvrimage::xml_text(name));
        cases += inside.empty() ? std::string("/>\n") : fmt::format(">\n{}    </testcase>\n", inside);
        ++tests;
    }
};

class junit_output final : public check_output {
public:
    explicit junit_output(const arguments& arguments_given) : given(arguments_given) {}

    [[nodiscard]] std::size_t most_diagnostics() const override { return most_in_json; }
    void take(const checked_file& file) override {
        const std::string name = reported_name(file.input.path);
        test_suite suite;
        for (const reported_fault& fault : faults_of(file)) {
            const bool fails = fault.is_error || given.strict;
            suite.add(name, name_of(fault), fails ? failure_of(name, fault) : warning_of(name, fault));
            suite.failures += fails ? 1 : 0;
        }
        if (suite.tests == 0) {
            suite.add(name, "no faults", "");
        }
        add(name, suite);
    }
    void report_refused(const std::string& path, std::string_view reason) override {
        const std::string name = reported_name(path);
        test_suite suite;
        suite.errors = 1;
        suite.add(name, "not checked",
                  fmt::format("      <error message=\"{}\"/>\n",
                              kvrimage::xml_text(kvrimage::make_visible(reason).text)));
        add(name, suite);
    }
    void finish(const check_totals& /*totals*/) override {
        print(fmt::format("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<testsuites name=\"kvrmem check\" tests=\"{}\" failures=\"{}\" errors=\"{}\">\n"
                          "{}</testsuites>\n",
                          all.tests, all.failures, all.errors, all.cases));
    }

private:
    static std::string name_of(const reported_fault& fault) {
        const bool has_place = fault.found != nullptr && fault.found->where.line != 0;
        return has_place ? fmt::format("{} in line {}", fault.code, fault.found->where.line)
                         : std::string(fault.code);
    }
    /// Returns the lines of `check` without the line of the file.
    static std::string lines_of(const std::string& name, const reported_fault& fault) {
        return fault.found != nullptr ? kvrimage::diagnostic_text(*fault.found, name, "")
                                      : fmt::format("{}: {}: {}\n", name, fault.level, fault.message);
    }
    static std::string failure_of(const std::string& name, const reported_fault& fault) {
        return fmt::format("      <failure type=\"{}\" message=\"{}\">{}</failure>\n",
                           kvrimage::xml_text(fault.level), kvrimage::xml_text(fault.message),
                           kvrimage::xml_text(lines_of(name, fault)));
    }
    static std::string warning_of(const std::string& name, const reported_fault& fault) {
        return fmt::format("      <system-out>{}</system-out>\n", kvrimage::xml_text(lines_of(name, fault)));
    }
    void add(const std::string& name, const test_suite& suite) {
        all.cases += fmt::format(
            "  <testsuite name=\"{}\" tests=\"{}\" failures=\"{}\" errors=\"{}\">\n{}  </testsuite>\n",
            kvrimage::xml_text(name), suite.tests, suite.failures, suite.errors, suite.cases);
        all.tests += suite.tests;
        all.failures += suite.failures;
        all.errors += suite.errors;
    }

    const arguments& given;
    test_suite all;
};

} // namespace

std::unique_ptr<check_output> make_junit_output(const arguments& given) {
    return std::make_unique<junit_output>(given);
}

} // namespace kvrmem
