#include "kvrimage/formats/srec/srec_formatter.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/formats/srec/srec_parser.h"

#include <algorithm>

namespace kvrimage {

std::string lay_out_srec(std::string_view contents, const read_options& /*options*/,
                         const read_result& /*ours*/) {
    std::string text(contents);
    srec_parser parser(contents);
    while (parser.next()) {
        if (parser.line().what == srec_line::kind::record) {
            const span& record = parser.line().content;
            const auto first = text.begin() + static_cast<std::ptrdiff_t>(record.offset);
            std::transform(first, first + static_cast<std::ptrdiff_t>(record.length), first,
                           kvr::upper_case_of);
        }
    }
    return text;
}

} // namespace kvrimage
