#include "tools/kvrmem/memory/lost_comments.h"

#include "kvr/memory/io/line_source.h"
#include "kvr/memory/mif/mif_line.h"
#include "tools/kvrmem/memory/line_text.h"
#include "tools/kvrmem/memory/mif_output.h"
#include "tools/kvrmem/memory/mif_unread_text.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/input_file.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <sys/stat.h>
#include <unordered_map>

namespace kvrmem {

namespace {

/// Longer lines are no lines of a MIF or of Intel HEX; of these the beginning is enough.
constexpr std::size_t longest_line = 4096;

/// True for a line that only Intel HEX has: a ":" and the digits of length, address, type and checksum.
bool is_record(std::string_view line) {
    constexpr std::size_t fewest_digits = 10;
    const std::string_view digits = line.substr(std::min<std::size_t>(line.size(), 1), fewest_digits);
    return line.starts_with(':') && digits.size() == fewest_digits && is_number_in(digits, RADIX_HEX);
}

bool holds_records(kvr::line_source lines) {
    while (!lines.at_end()) {
        if (is_record(trimmed(lines.next_line()))) {
            return true;
        }
    }
    return false;
}

/// What @p line holds beside records or a MIF; "" when there is nothing.
std::string_view comment_of(std::string_view line, bool among_records) {
    if (among_records) {
        const std::string_view text = trimmed(line);
        return text.starts_with(':') ? std::string_view() : text;
    }
    const std::string_view text = trimmed(line.substr(kvr::without_comments(line).size()));
    return text == mif_first_line ? std::string_view() : text;
}

/// Calls @p take with the number and the text of each comment. @p open gives the same lines each time.
template <class Open, class Take>
void for_each_comment(Open open, Take take) {
    const bool among_records = holds_records(open());
    kvr::line_source lines = open();
    for (std::uint64_t number = 1; !lines.at_end(); ++number) {
        const std::string_view comment = comment_of(lines.next_line(), among_records);
        if (!comment.empty()) {
            take(number, comment);
        }
    }
}

/// How often each comment stands in a text, by the hash of the comment.
using comment_counts = std::unordered_map<std::size_t, std::uint64_t>;

comment_counts count_comments(std::string_view text) {
    comment_counts counts;
    for_each_comment([text] { return kvr::line_source(text, longest_line); },
                     [&counts](std::uint64_t, std::string_view comment) {
                         ++counts[std::hash<std::string_view>()(comment)];
                     });
    return counts;
}

bool is_regular_file(const std::string& path) {
    struct stat status {};
    return path != "-" && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

std::string lost_comments(const std::string& target, std::string_view written) {
    if (!is_regular_file(target)) {
        return "";
    }
    comment_counts kept = count_comments(written);
    std::uint64_t lost = 0;
    std::uint64_t first_line = 0;
    // A file that cannot be read has no lines here: it may still be replaced.
    for_each_comment([&target] { return kvr::line_source::open(target, longest_line); },
                     [&](std::uint64_t line, std::string_view comment) {
                         const auto found = kept.find(std::hash<std::string_view>()(comment));
                         if (found != kept.end() && found->second != 0) {
                             --found->second;
                         } else if (++lost == 1) {
                             first_line = line;
                         }
                     });
    return lost == 0 ? ""
                     : fmt::format("{}, {}in line {}", counted(lost, "comment"),
                                   lost == 1 ? "" : "the first ", first_line);
}

void require_no_lost_comments(const std::string& target, std::string_view written) {
    const std::string lost = lost_comments(target, written);
    if (!lost.empty()) {
        usage_error(fmt::format("{}: is there already and would lose {}; --force replaces it",
                                title_of_file(target), lost));
    }
}

} // namespace kvrmem
