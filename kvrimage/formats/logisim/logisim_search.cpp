#include "kvrimage/formats/logisim/logisim_search.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/exchange/line_place.h"
#include "kvrimage/formats/logisim/logisim_parser.h"

namespace kvrimage {

namespace {

const logisim_variant* variant_in(std::string_view contents) {
    const logisim_variant* variant = nullptr;
    // The first line contains only the header.
    for_each_logisim_piece(contents.substr(0, contents.find('\n')), [&](const logisim_piece& header) {
        variant = logisim_variant_of(header.where.in(contents));
    });
    return variant;
}

} // namespace

certainty sniff_logisim(std::string_view head) {
    if (variant_in(head) != nullptr) {
        return certainty::certain;
    }
    return head.starts_with("v2.0 raw") || head.starts_with("v3.0 hex ") ? certainty::likely : certainty::no;
}

std::optional<span> find_in_logisim(std::string_view contents, std::uint64_t address) {
    std::optional<span> found;
    for_each_logisim_piece(contents, [&](const logisim_piece& piece) {
        if (piece.what == logisim_piece::kind::word && piece.address && *piece.address <= address &&
            address <= piece.last_address()) {
            found = piece.where;
        }
    });
    return found;
}

std::optional<place> find_logisim_word(std::string_view contents, const read_options& options,
                                       std::uint64_t address) {
    constexpr std::uint32_t width_of_byte = 8;
    const logisim_variant* const variant = variant_in(contents);
    const bool has_bytes = variant != nullptr && variant->bytes;
    const std::uint64_t unit = has_bytes ? bytes_of_width(options.width.value_or(width_of_byte)) : 1;
    const auto found = find_in_logisim(contents, options.base.value_or(0) + address * unit);
    return found ? std::optional(line_place(contents, *found)) : std::nullopt;
}

void find_logisim_comments(std::string_view contents, const std::function<void(const span&)>& take) {
    for_each_logisim_piece(contents, [&take](const logisim_piece& piece) {
        if (piece.what == logisim_piece::kind::comment) {
            take(piece.where);
        }
    });
}

} // namespace kvrimage
