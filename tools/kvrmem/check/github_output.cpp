#include "kvrimage/diagnostics/visible_text.h"
#include "tools/kvrmem/check/outputs.h"
#include "tools/kvrmem/check/reported_fault.h"
#include "tools/kvrmem/platform/standard_output.h"

#include <fmt/format.h>

#include <string>

namespace kvrmem {

namespace {

/// Escapes @p text as the message of a command.
std::string as_command_data(std::string_view text) {
    std::string data;
    for (const char character : text) {
        switch (character) {
        case '%':
            data += "%25";
            break;
        case '\r':
            data += "%0D";
            break;
        case '\n':
            data += "%0A";
            break;
        default:
            data += character;
        }
    }
    return data;
}

/// Escapes @p text as the value of a property, which "," and ":" would end.
std::string as_command_property(std::string_view text) {
    std::string property;
    for (const char character : as_command_data(text)) {
        if (character == ':') {
            property += "%3A";
        } else if (character == ',') {
            property += "%2C";
        } else {
            property += character;
        }
    }
    return property;
}

class github_output final : public check_output {
public:
    explicit github_output(const arguments& arguments_given) : given(arguments_given) {}

    [[nodiscard]] std::size_t most_diagnostics() const override { return most_shown; }
    void take(const checked_file& file) override {
        std::string text;
        for (const reported_fault& fault : faults_of(file)) {
            for (const kvrimage::place& where : fault.places()) {
                text += command_of(file, fault, where);
            }
        }
        print(text);
    }
    void report_refused(const std::string& path, std::string_view reason) override {
        print(fmt::format("::error file={},title=not checked::{}\n", as_command_property(path),
                          as_command_data(kvrimage::make_visible(reason).text)));
    }
    void finish(const check_totals& totals) override {
        print(summary_of(totals, given.files.size() == 1 ? reported_name(given.files[0]) : ""));
    }

private:
    static std::string command_of(const checked_file& file, const reported_fault& fault,
                                  const kvrimage::place& where) {
        const std::string hint = fault.hint.empty() ? "" : "\n" + fault.hint;
        return fmt::format("::{} file={}{},title={}::{}\n", fault.is_error ? "error" : "warning",
                           as_command_property(file.input.path), place_of(file, where),
                           as_command_property(fmt::format("{} ({})", fault.code, fault.level)),
                           as_command_data(fault.message + hint));
    }
    /// Returns "" for faults of the whole file.
    static std::string place_of(const checked_file& file, const kvrimage::place& where) {
        if (where == kvrimage::place{}) {
            return "";
        }
        const std::string_view contents = file.input.file.contents();
        // A fault at the end of a line may have the line end as its place.
        const bool is_line_end = contents.substr(where.offset, where.length) == "\n";
        const text_region region =
            region_of(contents, where.offset, is_line_end ? 0 : where.length, where.line);
        // Columns are valid only within one line.
        return region.first_line == region.last_line
                   ? fmt::format(",line={},col={},endColumn={}", region.first_line, region.first_column,
                                 region.end_column)
                   : fmt::format(",line={},endLine={}", region.first_line, region.last_line);
    }

    const arguments& given;
};

} // namespace

std::unique_ptr<check_output> make_github_output(const arguments& given) {
    return std::make_unique<github_output>(given);
}

} // namespace kvrmem
