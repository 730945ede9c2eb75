#include "kvrimage/diagnostics/diagnostic_text.h"

#include "kvrimage/diagnostics/visible_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace kvrimage {

namespace {

std::string painted(const text_painter& paint, text_part part, std::string_view text) {
    return paint ? paint(part, text) : std::string(text);
}

std::string title_of_place(std::string_view name, const place& where) {
    if (where.line == 0) {
        return fmt::format("{}:", name);
    }
    return fmt::format("{}:{}:{}:", name, where.line, where.column);
}

/// Returns the line that contains @p where, without its line end.
std::string_view line_around(std::string_view contents, const place& where) {
    const std::size_t begin = where.offset - (where.column - 1);
    std::string_view line = contents.substr(begin, contents.find('\n', begin) - begin);
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

std::string excerpt_text(const place& where, std::string_view contents, const text_painter& paint) {
    if (where.line == 0 || where.offset > contents.size() || contents.empty()) {
        return {};
    }
    const source_excerpt shown =
        make_excerpt(line_around(contents, where), static_cast<std::size_t>(where.column),
                     static_cast<std::size_t>(where.length));
    return fmt::format("  {}\n  {}{}\n", shown.line, shown.blanks,
                       painted(paint, text_part::mark, shown.mark));
}

/// The first lines with further places, except the line of the first place. `places_beyond` counts the places
/// outside these lines.
struct further_lines {
    std::vector<std::uint64_t> lines;
    std::uint64_t places_beyond = 0;
};

further_lines further_lines_of(const diagnostic& found) {
    constexpr std::size_t most_lines = 5;
    further_lines further;
    further.places_beyond = found.count - 1;
    for (const place& each : found.more) {
        if (each.line == found.where.line) {
            continue;
        }
        const bool is_new = further.lines.empty() || further.lines.back() != each.line;
        if (is_new && further.lines.size() == most_lines) {
            break;
        }
        if (is_new) {
            further.lines.push_back(each.line);
        }
        --further.places_beyond;
    }
    return further;
}

std::string counted_places(std::uint64_t count) {
    return fmt::format("{} more place{}", count, count == 1 ? "" : "s");
}

std::string further_places_text(const diagnostic& found) {
    if (found.count == 1) {
        return {};
    }
    const further_lines further = further_lines_of(found);
    if (further.lines.empty()) {
        return fmt::format("  also in {}\n", counted_places(further.places_beyond));
    }
    // The last item, a line or the number of remaining places, follows "and".
    std::vector<std::string> items;
    std::ranges::transform(further.lines, std::back_inserter(items),
                           [](std::uint64_t line) { return fmt::format("{}", line); });
    if (further.places_beyond != 0) {
        items.push_back(counted_places(further.places_beyond));
    }
    const std::string last = items.back();
    items.pop_back();
    return fmt::format("  also in line{} {}{}{}\n", further.lines.size() == 1 ? "" : "s",
                       fmt::join(items, ", "), items.empty() ? "" : " and ", last);
}

std::string hint_text(const diagnostic& found) {
    return found.hint.empty() ? "" : fmt::format("  hint: {}\n", make_visible(found.hint).text);
}

} // namespace

std::string level_of(const diagnostic& found) {
    const diagnostic_class level = about(found.id).level;
    if (level == diagnostic_class::consumer) {
        return fmt::format("error for {}", found.consumer);
    }
    return level == diagnostic_class::suspect ? "warning" : "error";
}

std::string diagnostic_text(const diagnostic& found, std::string_view name, std::string_view contents,
                            const text_painter& paint) {
    const text_part level_part = about(found.id).level == diagnostic_class::suspect ? text_part::warning_level
                                                                                    : text_part::error_level;
    return fmt::format("{} {} {}\n", painted(paint, text_part::place, title_of_place(name, found.where)),
                       painted(paint, level_part, level_of(found) + ":"), make_visible(found.message).text) +
           excerpt_text(found.where, contents, paint) + further_places_text(found) + hint_text(found);
}

} // namespace kvrimage
