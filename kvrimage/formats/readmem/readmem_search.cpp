#include "kvrimage/formats/readmem/readmem_search.h"

#include "kvrimage/exchange/line_place.h"
#include "kvrimage/formats/readmem/readmem_addresses.h"
#include "kvrimage/formats/readmem/readmem_banner.h"

namespace kvrimage {

namespace {

std::optional<place> find_readmem_word(std::string_view contents, const read_options& options,
                                       std::uint64_t address, radix digits_radix) {
    const std::uint64_t unit = readmem_unit_bytes(contents, options, digits_radix);
    const std::uint64_t wanted = address + options.base.value_or(0) / unit;
    readmem_addresses addresses(unit);
    std::optional<span> found;
    for_each_readmem_piece(contents, digits_radix, [&](const readmem_piece& piece) {
        if (piece.what == readmem_piece::kind::address) {
            addresses.take(piece);
        } else if (piece.what == readmem_piece::kind::word) {
            if (addresses.peek() == wanted) {
                found = piece.where;
            }
            addresses.advance();
        }
    });
    return found ? std::optional(line_place(contents, *found)) : std::nullopt;
}

} // namespace

std::optional<place> find_readmemh_word(std::string_view contents, const read_options& options,
                                        std::uint64_t address) {
    return find_readmem_word(contents, options, address, radix::hex);
}

std::optional<place> find_readmemb_word(std::string_view contents, const read_options& options,
                                        std::uint64_t address) {
    return find_readmem_word(contents, options, address, radix::bin);
}

void find_readmem_comments(std::string_view contents, const std::function<void(const span&)>& take) {
    for_each_readmem_piece(contents, radix::hex, [&](const readmem_piece& piece) {
        using enum readmem_piece::kind;
        const bool is_comment = piece.what == line_comment || piece.what == block_comment ||
                                piece.what == open_comment || piece.what == other_comment;
        if (is_comment && !is_readmem_banner(contents, piece.where)) {
            take(piece.where);
        }
    });
}

} // namespace kvrimage
