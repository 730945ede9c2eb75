#include "kvrimage/formats/readmem/readmem_sniff.h"

#include "kvrimage/formats/readmem/readmem_parser.h"

namespace kvrimage {

namespace {

/// What the pieces are.
struct readmem_counts {
    std::uint64_t addresses = 0;
    std::uint64_t words = 0;
    std::uint64_t faults = 0;
    bool is_simple = true; ///< nothing but what RIF has, too
    bool are_bytes = true; ///< each word has two digits

    void take(const readmem_piece& piece, std::string_view text) {
        switch (piece.what) {
        case readmem_piece::kind::blanks:
            is_simple = is_simple && piece.where.in(text).find('\f') == std::string_view::npos;
            break;
        case readmem_piece::kind::word:
            on_word(piece.where.in(text), piece.fault.length == 0);
            break;
        case readmem_piece::kind::address:
            on_address(piece);
            break;
        case readmem_piece::kind::byte_order_mark:
        case readmem_piece::kind::line_comment:
        case readmem_piece::kind::block_comment:
        case readmem_piece::kind::open_comment:
            is_simple = false;
            break;
        case readmem_piece::kind::other_comment:
        case readmem_piece::kind::separator:
        default: // readmem_piece::kind::stray
            ++faults;
            break;
        }
    }

private:
    void on_address(const readmem_piece& address) {
        constexpr std::uint64_t highest_of_rif = 0xFFFFFFFF;
        const bool is_proper = address.address_fault == readmem_address_fault::none;
        addresses += is_proper ? 1 : 0;
        faults += is_proper ? 0 : 1;
        is_simple = is_simple && address.address <= highest_of_rif;
    }
    void on_word(std::string_view word, bool is_proper) {
        words += is_proper ? 1 : 0;
        faults += is_proper ? 0 : 1;
        is_simple = is_simple && word.find_first_of("_zZ") == std::string_view::npos;
        are_bytes = are_bytes && word.size() == 2;
    }
};

/// Without the last word where it may have been cut.
std::string_view whole_readmem_words(std::string_view head) {
    const std::size_t blank = head.find_last_of(readmem_blanks);
    if (head.size() < sniffed_bytes || blank == std::string_view::npos) {
        return head;
    }
    return head.substr(0, blank + 1);
}

certainty sniff_readmem(std::string_view head, radix digits_radix) {
    constexpr std::uint64_t words_for_each_fault = 8;
    const std::string_view text = whole_readmem_words(head);
    readmem_counts counts;
    for_each_readmem_piece(text, digits_radix, [&](const readmem_piece& piece) { counts.take(piece, text); });
    if (counts.words <= counts.faults * words_for_each_fault) {
        return certainty::no;
    }
    if (counts.faults != 0) {
        return certainty::possible;
    }
    // What RIF may be as well is as sure as that.
    const bool may_be_titxt = counts.are_bytes && head.starts_with('@');
    return counts.addresses != 0 && counts.is_simple && !may_be_titxt ? certainty::certain
                                                                      : certainty::likely;
}

} // namespace

certainty sniff_readmemh(std::string_view head) {
    return sniff_readmem(head, radix::hex);
}

certainty sniff_readmemb(std::string_view head) {
    return sniff_readmem(head, radix::bin);
}

} // namespace kvrimage
