#include "kvrimage/formats/rif/rif_sniff.h"

#include "kvrimage/formats/rif/rif_parser.h"

namespace kvrimage {

namespace {

/// Counts of the pieces.
struct piece_counts {
    std::uint64_t addresses = 0; ///< valid ones
    std::uint64_t words = 0;     ///< valid ones
    std::uint64_t faults = 0;
    bool has_comments = false;
    bool are_bytes = true; ///< each word has two digits

    void take(const rif_piece& piece) {
        using piece_kind = rif_piece::kind;
        const bool is_proper = piece.fault.length == 0 && piece.address_fault == rif_address_fault::none;
        addresses += piece.what == piece_kind::address && is_proper ? 1 : 0;
        words += piece.what == piece_kind::word && is_proper ? 1 : 0;
        faults += piece.what == piece_kind::stray || !is_proper ? 1 : 0;
        has_comments = has_comments || piece.what == piece_kind::comment;
        are_bytes = are_bytes && (piece.what != piece_kind::word || piece.where.length == 2);
    }
};

/// Returns @p head without its last line if that may be cut.
std::string_view whole_lines(std::string_view head) {
    const std::size_t newline = head.rfind('\n');
    if (head.size() < sniffed_bytes || newline == std::string_view::npos) {
        return head;
    }
    return head.substr(0, newline + 1);
}

piece_counts counts_of(std::string_view head) {
    piece_counts counts;
    for_each_rif_piece(whole_lines(head), [&counts](const rif_piece& piece) { counts.take(piece); });
    return counts;
}

} // namespace

bool is_hardly_rif(std::string_view head) {
    const piece_counts counts = counts_of(head);
    return counts.faults > counts.words + counts.addresses;
}

certainty sniff_rif(std::string_view head) {
    const piece_counts counts = counts_of(head);
    if (counts.words == 0 || counts.faults > counts.words) {
        return certainty::no;
    }
    if (counts.addresses == 0) {
        return counts.faults == 0 ? certainty::possible : certainty::no;
    }
    const bool may_be_titxt = counts.are_bytes && head.starts_with('@'); // files from write() begin with LF
    return counts.faults == 0 && !counts.has_comments && !may_be_titxt ? certainty::certain
                                                                       : certainty::likely;
}

} // namespace kvrimage
