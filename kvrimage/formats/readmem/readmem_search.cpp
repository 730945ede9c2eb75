#include "kvrimage/formats/readmem/readmem_search.h"

#include "kvrimage/formats/readmem/readmem_addresses.h"
#include "kvrimage/formats/readmem/readmem_banner.h"

#include <algorithm>

namespace kvrimage {

namespace {

std::optional<place> find_readmem_word(std::string_view contents, const read_options& options,
                                       std::uint64_t address, radix digits_radix) {
    const std::uint64_t unit = readmem_unit_bytes(contents, options, digits_radix);
    const std::uint64_t wanted = address + options.base.value_or(0) / unit;
    readmem_addresses addresses(unit);
    std::optional<place> found;
    for_each_readmem_piece(contents, digits_radix, [&](const readmem_piece& piece) {
        if (piece.what == readmem_piece::kind::address) {
            addresses.take(piece);
        } else if (piece.what == readmem_piece::kind::word) {
            if (addresses.peek() == wanted) {
                found = place{0, 0, piece.where.offset, piece.where.length};
            }
            addresses.advance();
        }
    });
    if (found) {
        const std::string_view before = contents.substr(0, found->offset);
        found->line = static_cast<std::uint64_t>(std::ranges::count(before, '\n')) + 1;
        found->column = before.size() - (before.rfind('\n') + 1) + 1;
    }
    return found;
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
