#include "tools/kvrmem/files/broken_file.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/diagnostics/diagnostic_text.h"
#include "tools/kvrmem/command_line/whole_command.h"
#include "tools/kvrmem/files/diagnostic_colors.h"
#include "tools/kvrmem/numbers/human_number.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

std::string first_line(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

constexpr std::string_view base_option = "--base ";

/// Adapts @p option to the addresses given by the user: a base that makes the first word word 0 would exclude
/// them. "" if no base fits, because addresses count bytes and words have several.
std::string for_asked_addresses(const arguments& given, const std::string& option) {
    const std::vector<kvrimage::address_range> asked = asked_addresses(given);
    if (!option.starts_with(base_option) || asked.empty()) {
        return option;
    }
    const std::uint64_t base =
        read_human_size(option.substr(base_option.size()), ~std::uint64_t{0}).value_or(0);
    const std::uint64_t bytes = kvrimage::bytes_of_width(given.width.value_or(1));
    const std::uint64_t last = std::ranges::max(asked, {}, &kvrimage::address_range::last).last;
    if (last < base / bytes) {
        return option;
    }
    return bytes == 1 || last < base ? "--base 0" : "";
}

} // namespace

bool is_wrong_usage(const kvrimage::diagnostic& found) {
    return found.id == kvrimage::diagnostic_id::choice_without_effect ||
           found.id == kvrimage::diagnostic_id::choice_value;
}

const kvrimage::diagnostic* first_broken(const kvrimage::read_result& result) {
    const auto found = std::ranges::find_if(result.diagnostics, [](const kvrimage::diagnostic& each) {
        return kvrimage::about(each.id).level == kvrimage::diagnostic_class::broken;
    });
    return found != result.diagnostics.end() ? &*found : nullptr;
}

broken_file::broken_file(const arguments& given, const kvrimage::diagnostic& found, std::string_view name,
                         std::string_view contents, std::string_view after)
    : tool_error(is_wrong_usage(found) ? exit_code::wrong_usage : exit_code::bad_input,
                 first_line(kvrimage::diagnostic_text(found, name, ""))),
      text(std::make_shared<const std::string>(
          kvrimage::diagnostic_text(found, name, contents, diagnostic_painter(stderr, given.color)) +
          std::string(after))) {}

broken_file refusal_of(const arguments& given, const std::string& path, const kvrimage::input_file& file,
                       const kvrimage::read_result& result, const kvrimage::diagnostic& shown,
                       std::span<const kvrimage::diagnostic> later) {
    std::vector<kvrimage::diagnostic> all = result.diagnostics;
    all.insert(all.end(), later.begin(), later.end());
    const std::uint64_t more = result.diagnostics.size() - 1 + result.facts.diagnostics_left_out;
    const std::string note =
        more == 0 ? "" : fmt::format("{} more; {} shows all\n", more, check_line(given, path));
    return {given, shown, file.name(), file.contents(), note + remedy_of(given, all)};
}

std::vector<std::string> options_asked_for(const arguments& given,
                                           std::span<const kvrimage::diagnostic> found) {
    std::vector<std::string> options;
    for (const kvrimage::diagnostic& each : found) {
        if (kvrimage::about(each.id).level != kvrimage::diagnostic_class::broken) {
            continue;
        }
        const std::string option = for_asked_addresses(given, each.option);
        if (option.empty()) {
            return {};
        }
        if (std::ranges::find(options, option) == options.end()) {
            options.push_back(option);
        }
    }
    return options;
}

std::string remedy_of(const arguments& given, std::span<const kvrimage::diagnostic> found) {
    const std::vector<std::string> options = options_asked_for(given, found);
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
