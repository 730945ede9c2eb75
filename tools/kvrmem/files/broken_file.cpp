#include "tools/kvrmem/files/broken_file.h"

#include "kvrimage/diagnostics/diagnostic_text.h"
#include "tools/kvrmem/command_line/whole_command.h"
#include "tools/kvrmem/files/diagnostic_colors.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

std::string first_line(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

} // namespace

const kvrimage::diagnostic* first_broken(const kvrimage::read_result& result) {
    const auto found = std::ranges::find_if(result.diagnostics, [](const kvrimage::diagnostic& each) {
        return kvrimage::about(each.id).level == kvrimage::diagnostic_class::broken;
    });
    return found != result.diagnostics.end() ? &*found : nullptr;
}

broken_file::broken_file(const arguments& given, const kvrimage::diagnostic& found, std::string_view name,
                         std::string_view contents, std::string_view after)
    : tool_error(exit_code::bad_input, first_line(kvrimage::diagnostic_text(found, name, ""))),
      text(std::make_shared<const std::string>(
          kvrimage::diagnostic_text(found, name, contents, diagnostic_painter(stderr, given.color)) +
          std::string(after))) {}

broken_file refusal_of(const arguments& given, const std::string& path, const kvrimage::input_file& file,
                       const kvrimage::read_result& result, const kvrimage::diagnostic& shown) {
    const std::uint64_t more = result.diagnostics.size() - 1 + result.facts.diagnostics_left_out;
    const std::string note =
        more == 0 ? "" : fmt::format("{} more; {} shows all\n", more, check_line(given, path));
    return {given, shown, file.name(), file.contents(), note + remedy_of(given, result.diagnostics)};
}

std::string remedy_of(const arguments& given, std::span<const kvrimage::diagnostic> found) {
    std::vector<std::string> options;
    for (const kvrimage::diagnostic& each : found) {
        if (kvrimage::about(each.id).level != kvrimage::diagnostic_class::broken) {
            continue;
        }
        if (each.option.empty()) {
            return "";
        }
        if (std::ranges::find(options, each.option) == options.end()) {
            options.push_back(each.option);
        }
    }
    const std::string line = options.empty() ? "" : command_with(given, options);
    return line.empty() ? "" : fmt::format("try: {}\n", line);
}

std::string check_line(const arguments& given, const std::string& path) {
    std::string line = "kvrmem check";
    for (const std::string& option : given.reading_options) {
        line += " " + option;
    }
    return line + " " + shell_word(path);
}

} // namespace kvrmem
