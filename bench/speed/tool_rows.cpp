// The commands of the tool: whole processes.

#include "bench/speed/corpus.h"
#include "bench/speed/table.h"
#include "bench/speed/timing.h"

#include <array>
#include <filesystem>
#include <string>
#include <vector>

namespace speed {

namespace {

constexpr std::array<corpus_file, 2> inputs = {
    {{"m8.mif", file_shape::one_word_a_line, 8, words_measured},
     {"m32.mif", file_shape::one_word_a_line, 32, words_measured}}};

/// A command whose time is compared with the time of a conversion.
struct command_row {
    const char* name;
    double target;
    double stretch;
};
constexpr std::array<command_row, 4> command_rows = {
    {{"info", 3, 1}, {"check", 4, 2}, {"dump", 4, 2}, {"set", 3, 2}}};

struct tool_run {
    const table_settings& settings;
    std::string input;
    std::string output;

    [[nodiscard]] std::vector<std::string> convert() const {
        return {settings.tool, "convert", "--force", input, output};
    }
    [[nodiscard]] std::vector<std::string> command(const std::string& name) const {
        if (name == "set") {
            return {settings.tool, "set", "--force", "--output", input + ".set.mif", input, "77=3"};
        }
        return {settings.tool, name, input};
    }
};

std::string named(const char* work, const corpus_file& file) {
    return work + (", " + std::to_string(file.bits)) + " bits";
}

void print_conversion(const tool_run& run, const corpus_file& file) {
    static_cast<void>(time_of_process(run.convert()));
    const std::string bytes = std::to_string(std::filesystem::file_size(run.output));
    const comparison result = compare(
        [&] { return time_of_process(run.convert()); },
        [&] {
            return time_of_process({run.settings.self, "floor-convert", run.input, bytes, run.output});
        },
        run.settings.rounds);
    print_row({named("convert MIF to HEX", file), result.ratio, 2.3, 1.4, milliseconds(result)});
}

void print_command(const tool_run& run, const corpus_file& file, const command_row& row) {
    const comparison result = compare([&] { return time_of_process(run.command(row.name)); },
                                      [&] { return time_of_process(run.convert()); }, run.settings.rounds);
    print_row({named((row.name + std::string(", against convert")).c_str(), file), result.ratio, row.target,
               row.stretch, milliseconds(result)});
}

/// The peak memory of a command, in units of the file size.
void print_peak(const tool_run& run, const corpus_file& file) {
    constexpr double bytes_per_mb = 1e6;
    const double size = static_cast<double>(std::filesystem::file_size(run.input)) / bytes_per_mb;
    print_row({named("set, peak of memory against the file", file),
               peak_of_process(run.command("set")) / size, 2, 1.5, ""});
}

void print_start(const table_settings& settings) {
    constexpr int rounds = 301;
    const comparison result = compare(
        [&] {
            return time_of_process({settings.tool, "--version"});
        },
        [] { return time_of_process({"/bin/true"}); }, rounds);
    print_row({"start of the tool, against /bin/true", result.ratio, 1.15, 1.0, milliseconds(result)});
}

} // namespace

void tool_rows(const table_settings& settings) {
    for (const corpus_file& file : inputs) {
        const tool_run run{settings, make_file(settings.folder, file), settings.folder + "/converted.hex"};
        print_conversion(run, file);
        for (const command_row& row : command_rows) {
            print_command(run, file, row);
        }
        print_peak(run, file);
    }
    print_start(settings);
}

} // namespace speed
