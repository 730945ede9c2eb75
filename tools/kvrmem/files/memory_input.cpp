#include "tools/kvrmem/files/memory_input.h"

#include "kvrimage/files/file_error.h"
#include "kvrimage/formats/format_choice.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/formats/unset_words.h"
#include "tools/kvrmem/command_line/whole_command.h"
#include "tools/kvrmem/files/broken_file.h"
#include "tools/kvrmem/files/format_choice.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/progress.h"
#include "tools/kvrmem/platform/terminal.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

namespace kvrmem {

namespace {

/// What is broken in @p input when it is read with the options that its diagnostics ask for, or what @p later
/// says of it then: with the options for that, too, the command can be tried once instead of twice.
std::vector<kvrimage::diagnostic> next_obstacles(const arguments& given, const memory_input& input,
                                                 const later_obstacles& later) {
    const std::vector<std::string> asked = options_asked_for(given, input.result.diagnostics);
    if (asked.empty()) {
        return {};
    }
    const arguments then = with_options(given, asked);
    kvrimage::read_options options = read_options_of(then, input.path);
    options.keep_going = false;
    const kvrimage::read_result result = kvrimage::parse(input.file.contents(), options);
    return result.image ? (later ? later(then, result) : std::vector<kvrimage::diagnostic>())
                        : result.diagnostics;
}

/// Reports what is broken, where the command goes on with the rest.
void report_or_refuse(const arguments& given, const memory_input& input, const later_obstacles& later) {
    const kvrimage::diagnostic* const broken = first_broken(input.result);
    if (broken == nullptr) {
        return;
    }
    if (!given.keep_going || !input.result.image) {
        throw refusal_of(given, input.path, input.file, input.result, *broken,
                         next_obstacles(given, input, later));
    }
    tell_as_it_is(refusal_of(given, input.path, input.file, input.result, *broken).shown());
}

/// What has no end, or too long a line, is bad input.
kvrimage::input_file read_file(const std::string& path, const kvrimage::read_options& options) {
    try {
        return kvrimage::input_file(path, show_reading, [&options](std::string_view bytes) {
            return kvrimage::may_have_any_lines(bytes, options);
        });
    } catch (const kvrimage::file_error& error) {
        if (error.code() == std::errc::file_too_large) {
            throw tool_error(exit_code::bad_input, error.what());
        }
        throw;
    }
}

} // namespace

kvrimage::read_options read_options_of(const arguments& given, const std::string& path) {
    kvrimage::read_options options;
    options.as = given.from;
    options.file_name = path;
    options.width = given.width;
    options.depth = given.depth;
    options.unit = given.unit;
    options.order = given.order;
    options.base = given.base;
    options.pad = given.pad;
    options.choices = given.read_choices;
    options.keep_going = given.keep_going;
    return options;
}

memory_input open_memory(const arguments& given, const std::string& path) {
    if (path == "-" && is_terminal(stdin)) {
        static_cast<void>(format_for(given.from, path, "--from")); // before the user types a file
    }
    kvrimage::read_options options = read_options_of(given, path);
    kvrimage::input_file file = read_file(path, options);
    options.keeper = file.keeper();
    require_known_format(given.from, path, file.contents());
    return {path, std::move(file), options, {}};
}

void parse(memory_input& input) {
    input.result = kvrimage::parse(input.file.contents(), input.options);
    input.options.as = input.result.facts.as;
}

memory_input read_memory(const arguments& given, const std::string& path, const later_obstacles& later) {
    memory_input input = open_memory(given, path);
    parse(input);
    report_or_refuse(given, input, later);
    if (!given.quiet) {
        note_suspect_ones(given, input);
    }
    return input;
}

arguments for_compared_file(const arguments& given, const std::string& path) {
    arguments of_file = given;
    of_file.from = kvrimage::format_of_path(path) != nullptr ? nullptr : given.from;
    return of_file;
}

memory_input read_compared_memory(const arguments& given, const std::string& path) {
    return read_memory(for_compared_file(given, path), path);
}

void note_suspect_ones(const arguments& given, const memory_input& input) {
    auto count = static_cast<std::uint64_t>(
        std::ranges::count_if(input.result.diagnostics, [](const kvrimage::diagnostic& each) {
            return kvrimage::about(each.id).level == kvrimage::diagnostic_class::suspect;
        }));
    if (count != 0 && first_broken(input.result) == nullptr) {
        count += kvrimage::find_unset_words(input.result, "") ? 1U : 0U;
        tell(fmt::format("{}: note: {}; {} shows {}", input.name(), counted(count, "warning"),
                         check_line(given, input.path), count == 1 ? "it" : "them"));
    }
}

void note_width(const memory_input& input) {
    if (!input.result.facts.width_source.empty()) {
        tell(fmt::format("{}: note: width taken from {}", input.name(), input.result.facts.width_source));
    }
}

std::string range_fault(const kvrimage::address_range& range, const kvrimage::memory_image& image) {
    if (range.first >= image.base() && range.last <= image.last_address()) {
        return "";
    }
    const std::uint64_t outside = range.first < image.base() ? range.first : range.last;
    return fmt::format("address {} is beyond the depth {} ({} to {})", outside, image.depth(), image.base(),
                       image.last_address());
}

kvrimage::address_range range_within(const arguments& given, const kvrimage::memory_image& image) {
    const kvrimage::address_range all{image.base(), image.last_address()};
    const kvrimage::address_range range = given.range.value_or(all);
    const std::string fault = range_fault(range, image);
    if (!fault.empty()) {
        usage_error(fmt::format("--range: {}", fault));
    }
    return range;
}

} // namespace kvrmem
