#include "tools/kvrmem/check/mif_check.h"

#include "kvr/memory/mif/mif_line.h"
#include "tools/kvrmem/memory/mif_unread_text.h"

#include <algorithm>

namespace kvrmem {

void add_at_line(mif_check& check, severity level, const char* code, std::uint64_t line, std::string message,
                 std::string hint, std::optional<repair> mended) {
    const std::string_view text = check.source.line(line);
    const std::size_t begin = std::min(text.find_first_not_of(mif_blanks), text.size());
    check.faults.add(
        {level, code, line, begin < text.size() ? begin + 1 : 0,
         kvr::without_comments(text).size() > begin ? kvr::without_comments(text).size() - begin : 1,
         std::move(message), std::move(hint), std::move(mended)});
}

} // namespace kvrmem
