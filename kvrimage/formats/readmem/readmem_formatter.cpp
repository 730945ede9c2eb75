#include "kvrimage/formats/readmem/readmem_formatter.h"

#include "kvrimage/formats/readmem/readmem_parser.h"
#include "kvrimage/layout/canonical_digits.h"
#include "kvrimage/layout/list_layout.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrimage {

namespace {

/// Returns the digits of the largest address of a word or in an '@'.
std::size_t address_digits_of_readmem(std::string_view contents, radix digits_radix) {
    std::uint64_t largest = 0;
    std::uint64_t next = 0;
    for_each_readmem_piece(contents, digits_radix, [&](const readmem_piece& piece) {
        if (piece.what == readmem_piece::kind::address) {
            next = piece.address;
            largest = std::max(largest, next);
        } else if (piece.what == readmem_piece::kind::word) {
            largest = std::max(largest, next++);
        }
    });
    return fmt::formatted_size("{:X}", largest);
}

std::string lay_out_readmem(std::string_view contents, const read_result& ours, radix digits_radix) {
    using kind = readmem_piece::kind;
    const std::size_t word_digits = canonical_word_digits(digits_radix, ours.image->width());
    const std::size_t address_digits = address_digits_of_readmem(contents, digits_radix);
    list_layout layout(contents);
    for_each_readmem_piece(contents, digits_radix, [&](const readmem_piece& piece) {
        if (piece.what == kind::address) {
            layout.add(piece.where, fmt::format("@{:0{}X}", piece.address, address_digits), true);
        } else if (piece.what == kind::word) {
            layout.add(piece.where, canonical_number(piece.where.in(contents), word_digits));
        } else if (piece.what == kind::line_comment || piece.what == kind::block_comment) {
            layout.add_comment(piece.where, piece.what == kind::line_comment);
        }
    });
    return layout.finish();
}

} // namespace

std::string lay_out_readmemh(std::string_view contents, const read_options& /*options*/,
                             const read_result& ours) {
    return lay_out_readmem(contents, ours, radix::hex);
}

std::string lay_out_readmemb(std::string_view contents, const read_options& /*options*/,
                             const read_result& ours) {
    return lay_out_readmem(contents, ours, radix::bin);
}

} // namespace kvrimage
