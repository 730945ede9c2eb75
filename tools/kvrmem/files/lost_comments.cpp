#include "tools/kvrmem/files/lost_comments.h"

#include "kvrimage/files/file_error.h"
#include "kvrimage/files/file_name.h"
#include "kvrimage/files/input_file.h"
#include "kvrimage/formats/comments.h"
#include "tools/kvrmem/files/memory_output.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

namespace kvrmem {

std::string lost_comments(const std::string& target, std::string_view written) {
    if (!is_regular_file(target)) {
        return "";
    }
    try {
        const kvrimage::input_file file(target);
        const auto lost = kvrimage::find_missing_comments(file.contents(), written, target);
        return lost.count == 0 ? ""
                               : fmt::format("{}, {}in line {}", counted(lost.count, "comment"),
                                             lost.count == 1 ? "" : "the first ", lost.first_line);
    } catch (const kvrimage::file_error&) { // it may still be replaced
        return "";
    }
}

void require_no_lost_comments(const std::string& target, std::string_view written) {
    const std::string lost = lost_comments(target, written);
    if (!lost.empty()) {
        usage_error(fmt::format("{}: already exists and would lose {}; use --force to replace it",
                                kvrimage::title_of_output(target), lost));
    }
}

} // namespace kvrmem
