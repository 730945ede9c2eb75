#include "kvrimage/formats/memheader/memheader_search.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/exchange/line_place.h"
#include "kvrimage/formats/memheader/memheader_parser.h"

namespace kvrimage {

certainty sniff_memheader(std::string_view head) {
    bool has_format = false;
    bool has_stray = false;
    for_each_memheader_piece(head, [&](const memheader_piece& piece) {
        has_format = has_format || (piece.what == memheader_piece::kind::setting && piece.value.length != 0 &&
                                    kvr::equal_ignoring_case(piece.name.in(head), "Format"));
        has_stray = has_stray || (piece.what == memheader_piece::kind::stray_word && !has_format);
    });
    if (!has_format) {
        return certainty::no;
    }
    return has_stray ? certainty::possible : certainty::certain;
}

std::optional<place> find_memheader_word(std::string_view contents, const read_options& options,
                                         std::uint64_t address) {
    const std::uint64_t in_file = address + options.base.value_or(0);
    std::optional<span> found;
    for_each_memheader_piece(contents, [&](const memheader_piece& piece) {
        if (piece.what == memheader_piece::kind::word && piece.address == in_file) {
            found = piece.where;
        }
    });
    return found ? std::optional(line_place(contents, *found)) : std::nullopt;
}

} // namespace kvrimage
