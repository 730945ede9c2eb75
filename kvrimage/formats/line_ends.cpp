#include "kvrimage/formats/line_ends.h"

#include "kvrimage/diagnostics/diagnose.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace kvrimage {

std::optional<diagnostic> lines_without_lf(std::string_view contents, const read_options& options) {
    constexpr auto none = std::string_view::npos;
    if (contents.find('\n') != none || contents.find_first_not_of(" \t\r", contents.find('\r')) == none) {
        return std::nullopt;
    }
    places where;
    std::vector<text_edit> edits;
    for (std::size_t at = contents.find('\r'); at != none; at = contents.find('\r', at + 1)) {
        where.add({at, 1});
        if (options.wants_repairs || where.count() <= places::kept) {
            edits.push_back({at, 1, "\n"});
        }
    }
    diagnostic found = diagnose::lines_of_carriage_return(where);
    // If only some lines ended with LF, the others would be read as one line.
    if (edits.size() == where.count()) {
        found.fix = std::move(edits);
        found.repair = "lines end with LF now";
    }
    return found;
}

} // namespace kvrimage
