#include "tools/kvrmem/files/lost_comments.h"

#include "kvrimage/files/file_name.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

namespace kvrmem {

std::string lost_comments(const std::string& /*target*/, std::string_view /*written*/) {
    return "";
}

void require_no_lost_comments(const std::string& target, std::string_view written) {
    const std::string lost = lost_comments(target, written);
    if (!lost.empty()) {
        usage_error(fmt::format("{}: is there already and would lose {}; --force replaces it",
                                kvrimage::title_of_output(target), lost));
    }
}

} // namespace kvrmem
