#include "tools/kvrmem/memory/lost_comments.h"

#include "kvr/memory/io/line_source.h"
#include "kvr/memory/mif/mif_line.h"
#include "tools/kvrmem/memory/line_text.h"
#include "tools/kvrmem/memory/mif_output.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/input_file.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <sys/stat.h>
#include <unordered_map>
#include <vector>

namespace kvrmem {

namespace {

/// Longer lines are no lines of a MIF or of Intel HEX; of these the beginning is enough.
constexpr std::size_t longest_line = 4096;

struct comment {
    std::uint64_t line;
    std::string text;
};

/// Gathers the comments of a text line by line, whichever format it turns out to have.
class comment_finder {
public:
    void see(std::string_view line) {
        ++number;
        const std::string_view code = trimmed(kvr::without_comments(line));
        if (!code.empty()) {
            see_code(code);
        }
        const std::string_view mark = trimmed(line.substr(kvr::without_comments(line).size()));
        if (!mark.empty() && mark != mif_first_line) {
            marked.push_back({number, std::string(mark)});
        }
        if (!trimmed(line).empty() && trimmed(line).front() != ':') {
            no_records.push_back({number, std::string(trimmed(line))});
        }
    }

    [[nodiscard]] std::vector<comment> found() && {
        if (where == part::header && has_records) {
            return std::move(no_records);
        }
        if (where != part::header) {
            marked.insert(marked.end(), idle.begin(), idle.end());
            std::sort(marked.begin(), marked.end(),
                      [](const comment& one, const comment& other) { return one.line < other.line; });
        }
        return std::move(marked);
    }

private:
    enum class part : std::uint8_t { header, content, behind };

    /// @param code what stands in front of a comment in the line.
    void see_code(std::string_view code) {
        constexpr std::array<std::string_view, 4> settings = {"WIDTH", "DEPTH", "ADDRESS_RADIX",
                                                              "DATA_RADIX"};
        const std::string upper = upper_case(code);
        has_records = has_records || code.front() == ':';
        if (where == part::content) {
            where = kvr::contains(upper, "END") ? part::behind : part::content;
        } else if (where == part::header && kvr::contains(upper, "CONTENT")) {
            where = part::content;
        } else if (where == part::behind || std::none_of(settings.begin(), settings.end(), [&](auto setting) {
                       return kvr::contains(upper, setting);
                   })) {
            idle.push_back({number, std::string(code)});
        }
    }

    std::uint64_t number = 0;
    part where = part::header; ///< of a MIF; without CONTENT it is none
    bool has_records = false;
    std::vector<comment> marked;     ///< behind "--" or "%"
    std::vector<comment> idle;       ///< lines of a MIF that it takes for comments
    std::vector<comment> no_records; ///< lines of an Intel HEX file
};

std::vector<comment> comments_of(kvr::line_source lines) {
    comment_finder finder;
    while (!lines.at_end()) {
        finder.see(lines.next_line());
    }
    return std::move(finder).found();
}

bool is_regular_file(const std::string& path) {
    struct stat status {};
    return path != "-" && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// The comments of @p old that are not among those of @p written.
std::vector<comment> lost_of(const std::vector<comment>& old, const std::vector<comment>& written) {
    std::unordered_map<std::string, std::size_t> kept;
    for (const comment& each : written) {
        ++kept[each.text];
    }
    std::vector<comment> lost;
    for (const comment& each : old) {
        std::size_t& left = kept[each.text];
        if (left == 0) {
            lost.push_back(each);
        } else {
            --left;
        }
    }
    return lost;
}

} // namespace

void require_no_lost_comments(const std::string& target, std::string_view written) {
    if (!is_regular_file(target)) {
        return;
    }
    kvr::line_source old = kvr::line_source::open(target, longest_line);
    if (!old.is_open()) {
        return; // who may not read it does not see what it loses, and may still replace it
    }
    const std::vector<comment> lost =
        lost_of(comments_of(std::move(old)), comments_of(kvr::line_source(written, longest_line)));
    if (!lost.empty()) {
        usage_error(fmt::format("{}: is there already and would lose {}, {}in line {}; --force replaces it",
                                title_of_file(target), counted(lost.size(), "comment"),
                                lost.size() == 1 ? "" : "the first ", lost.front().line));
    }
}

} // namespace kvrmem
