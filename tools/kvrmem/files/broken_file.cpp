#include "tools/kvrmem/files/broken_file.h"

#include "kvrimage/diagnostics/diagnostic_text.h"
#include "tools/kvrmem/command_line/command_words.h"
#include "tools/kvrmem/files/diagnostic_colors.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace kvrmem {

namespace {

/// @p word as a shell takes it.
std::string shell_word(const std::string& word) {
    const auto is_plain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               std::string_view("_-+=:,./@%").find(c) != std::string_view::npos;
    };
    return std::ranges::all_of(word, is_plain) ? word : fmt::format("'{}'", replaced(word, "'", R"('\'')"));
}

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
    return {given, shown, file.name(), file.contents(), note};
}

std::string check_line(const arguments& given, const std::string& path) {
    std::string line = "kvrmem check";
    for (const std::string& option : given.reading_options) {
        line += " " + option;
    }
    return line + " " + shell_word(path);
}

} // namespace kvrmem
