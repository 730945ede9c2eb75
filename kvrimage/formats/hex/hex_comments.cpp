#include "kvrimage/formats/hex/hex_comments.h"

#include "kvrimage/formats/hex/hex_parser.h"

namespace kvrimage {

namespace {

/// A file without records is not Intel HEX, so its lines are not comments.
bool holds_record(std::string_view contents) {
    hex_parser lines(contents);
    bool found = false;
    while (!found && lines.next()) {
        found = lines.line().what == hex_line::kind::record;
    }
    return found;
}

} // namespace

void find_hex_comments(std::string_view contents, const std::function<void(const span&)>& take) {
    if (!holds_record(contents)) {
        return;
    }
    for (hex_parser lines(contents); lines.next();) {
        if (lines.line().what == hex_line::kind::text) {
            take(lines.line().content);
        }
    }
}

} // namespace kvrimage
