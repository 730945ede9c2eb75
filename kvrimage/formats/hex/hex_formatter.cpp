#include "kvrimage/formats/hex/hex_formatter.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/formats/hex/hex_parser.h"

#include <algorithm>

namespace kvrimage {

std::string lay_out_hex(std::string_view contents, const read_options& /*options*/,
                        const read_result& /*ours*/) {
    std::string text(contents);
    hex_parser parser(contents);
    while (parser.next()) {
        if (parser.line().what == hex_line::kind::record) {
            const span& record = parser.line().record.where;
            const auto first = text.begin() + static_cast<std::ptrdiff_t>(record.offset);
            std::transform(first, first + static_cast<std::ptrdiff_t>(record.length), first,
                           kvr::upper_case_of);
        }
    }
    return text;
}

} // namespace kvrimage
