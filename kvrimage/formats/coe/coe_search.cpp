#include "kvrimage/formats/coe/coe_search.h"

#include "kvrimage/exchange/line_place.h"
#include "kvrimage/formats/coe/coe_parser.h"

namespace kvrimage {

certainty sniff_coe(std::string_view head) {
    bool has_statement = false;
    bool has_stray = false;
    for_each_coe_piece(head, [&](const coe_piece& piece) {
        has_statement =
            has_statement || piece.what == coe_piece::kind::radix || piece.what == coe_piece::kind::vector;
        has_stray = has_stray || (piece.what == coe_piece::kind::stray && !has_statement);
    });
    if (!has_statement) {
        return certainty::no;
    }
    return has_stray ? certainty::likely : certainty::certain;
}

std::optional<place> find_coe_word(std::string_view contents, const read_options& options,
                                   std::uint64_t address) {
    std::uint64_t before = address + options.base.value_or(0);
    std::optional<span> found;
    for_each_coe_piece(contents, [&](const coe_piece& piece) {
        if (piece.what == coe_piece::kind::word && before-- == 0) {
            found = piece.where;
        }
    });
    return found ? std::optional(line_place(contents, *found)) : std::nullopt;
}

void find_coe_comments(std::string_view contents, const std::function<void(const span&)>& take) {
    for_each_coe_piece(contents, [&take](const coe_piece& piece) {
        if (piece.what == coe_piece::kind::comment) {
            take(piece.where);
        }
    });
}

} // namespace kvrimage
