#include "kvrimage/formats/hex/hex_comments.h"

#include "kvrimage/formats/hex/hex_parser.h"

namespace kvrimage {

void find_hex_comments(std::string_view contents, const std::function<void(const span&)>& take) {
    for (hex_parser lines(contents); lines.next();) {
        if (lines.line().what == hex_line::kind::text) {
            take(lines.line().content);
        }
    }
}

} // namespace kvrimage
