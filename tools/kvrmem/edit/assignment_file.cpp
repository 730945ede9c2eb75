#include "tools/kvrmem/edit/assignment_file.h"

#include "kvrimage/files/input_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kvrmem {

namespace {

constexpr std::string_view blanks_of_assignment = " \t\r";

/// Returns @p line up to the "#" of its comment.
std::string_view without_comment(std::string_view line) {
    bool in_text = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] == '#' && !in_text) {
            return line.substr(0, at);
        }
        if (line[at] == '\\' && in_text) {
            ++at; // an escaped character does not end the string
        } else if (line[at] == '"') {
            in_text = !in_text;
        }
    }
    return line;
}

} // namespace

std::vector<assignment_line> read_assignment_file(const std::string& path) {
    const kvrimage::input_file file(path);
    std::string_view rest = file.contents();
    std::vector<assignment_line> lines;
    for (std::uint64_t number = 1; !rest.empty(); ++number) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = without_comment(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        const std::size_t first = line.find_first_not_of(blanks_of_assignment);
        if (first != std::string_view::npos) {
            const std::size_t last = line.find_last_not_of(blanks_of_assignment);
            lines.push_back({std::string(line.substr(first, last - first + 1)),
                             fmt::format("{}:{}:{}", file.name(), number, first + 1)});
        }
    }
    return lines;
}

} // namespace kvrmem
