#include "kvrimage/formats/srec/srec_pieces.h"

#include "kvrimage/bytes/byte_pieces.h"
#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/formats/piece_output.h"
#include "kvrimage/formats/srec/srec_parser.h"
#include "kvrimage/image/word_text.h"

namespace kvrimage {

namespace {

constexpr std::uint64_t type_length = 2; ///< "S1"

class srec_piece_finder {
public:
    srec_piece_finder(const read_options& options, const read_result& ours, const piece_taker& taker)
        : words(taker, 0),
          bytes(taker, options.base.value_or(0),
                bytes_of_width(ours.image ? ours.image->width() : options.width.value_or(bits_per_byte))) {}

    void take(const srec_line& line) const {
        if (line.what == srec_line::kind::text) {
            words.add(text_piece::kind::comment, line.content);
        } else if (line.what == srec_line::kind::record && line.fault == srec_fault::none) {
            add_record(line);
        }
    }

private:
    void add_record(const srec_line& line) const {
        words.add(text_piece::kind::record, {line.content.offset, type_length});
        const span address{line.content.offset + 2 * type_length,
                           std::uint64_t{2} * srec_address_bytes[line.type]};
        if (line.is_data() && !line.data.empty()) {
            bytes.add_address(address, line.address, line.data.size());
            bytes.add_data(line.address, line.data.size(), [&line](std::uint64_t first, std::uint64_t count) {
                return span{line.span_of_byte(first).offset, 2 * count};
            });
        } else {
            words.add(text_piece::kind::setting, address);
        }
        words.add(text_piece::kind::checksum, {line.content.end() - 2, 2});
    }

    piece_output words;
    byte_pieces bytes;
};

} // namespace

void find_srec_pieces(std::string_view contents, const read_options& options, const read_result& ours,
                      const piece_taker& take) {
    const srec_piece_finder finder(options, ours, take);
    for (srec_parser parser(contents); parser.next();) {
        finder.take(parser.line());
    }
}

} // namespace kvrimage
