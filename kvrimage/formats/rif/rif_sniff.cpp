#include "kvrimage/formats/rif/rif_sniff.h"

#include "kvrimage/formats/rif/rif_parser.h"

namespace kvrimage {

namespace {

/// What a look at the pieces counts.
struct piece_counts {
    std::uint64_t addresses = 0; ///< proper ones
    std::uint64_t words = 0;     ///< proper ones
    std::uint64_t faults = 0;
    bool has_comments = false;

    void take(const rif_piece& piece) {
        using piece_kind = rif_piece::kind;
        const bool is_proper = piece.fault.length == 0 && piece.address_fault == rif_address_fault::none;
        addresses += piece.what == piece_kind::address && is_proper ? 1 : 0;
        words += piece.what == piece_kind::word && is_proper ? 1 : 0;
        faults += piece.what == piece_kind::stray || !is_proper ? 1 : 0;
        has_comments = has_comments || piece.what == piece_kind::comment;
    }
};

/// Without the last line when it may have been cut.
std::string_view whole_lines(std::string_view head) {
    constexpr std::size_t most = std::size_t{64} * 1024;
    const std::size_t newline = head.rfind('\n');
    return head.size() < most || newline == std::string_view::npos ? head : head.substr(0, newline + 1);
}

} // namespace

certainty sniff_rif(std::string_view head) {
    piece_counts counts;
    for_each_rif_piece(whole_lines(head), [&counts](const rif_piece& piece) { counts.take(piece); });
    if (counts.words == 0 || counts.faults > counts.words) {
        return certainty::no;
    }
    if (counts.addresses == 0) {
        return counts.faults == 0 ? certainty::possible : certainty::no;
    }
    return counts.faults == 0 && !counts.has_comments ? certainty::certain : certainty::likely;
}

} // namespace kvrimage
