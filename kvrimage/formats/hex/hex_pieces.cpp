#include "kvrimage/formats/hex/hex_pieces.h"

#include "kvrimage/bytes/byte_pieces.h"
#include "kvrimage/formats/hex/hex_layout.h"
#include "kvrimage/formats/hex/hex_parser.h"
#include "kvrimage/formats/hex/hex_records.h"
#include "kvrimage/formats/piece_output.h"

#include <algorithm>
#include <cstdint>

namespace kvrimage {

namespace {

/// Digits of a record, counted from the colon on.
struct hex_field {
    std::uint64_t first;
    std::uint64_t count;
};
constexpr hex_field length_field = {0, 2};
constexpr hex_field address_field = {2, 4};
constexpr hex_field type_field = {6, 2};

class hex_piece_finder {
public:
    hex_piece_finder(std::string_view file, const hex_layout& of_file, std::uint64_t base,
                     const piece_taker& taker)
        : contents(file),
          layout(of_file),
          plain(taker, base),
          bytes(taker, base, layout.bytes_per_word()) {}

    void take(const hex_line& line) {
        if (line.what == hex_line::kind::text && has_record) {
            plain.add(text_piece::kind::comment, line.content);
        } else if (line.what == hex_line::kind::record && line.fault == hex_fault::none) {
            has_record = true;
            add_record(line.record);
        }
    }

private:
    void add_record(const hex_record& record) {
        add(record, text_piece::kind::record, length_field);
        if (record.type == hex_record_type::data) {
            add_data(record);
        } else {
            add(record, text_piece::kind::address, address_field);
            add(record, text_piece::kind::record, type_field);
            add(record, text_piece::kind::setting, {hex_record::header, record.data().size()});
            if (sets_offset(record.type)) {
                offset.take(record.type, record.data());
            }
        }
        add(record, text_piece::kind::checksum, {record.digits.size() - 2, 2});
    }

    void add_data(const hex_record& record) {
        const std::uint64_t address = offset.value() + record.address;
        const std::uint64_t cells = record.data_bytes / layout.bytes_per_cell();
        const span where = place_of(record, address_field);
        if (layout.counts_bytes()) {
            bytes.add_address(where, address, cells);
        } else {
            plain.add(text_piece::kind::address, where, address,
                      address + std::max<std::uint64_t>(cells, 1) - 1);
        }
        add(record, text_piece::kind::record, type_field);
        if (layout.counts_bytes()) {
            bytes.add_data(address, cells, [&](std::uint64_t first, std::uint64_t count) {
                return place_of(record, {hex_record::header + 2 * first, 2 * count});
            });
        } else {
            add_words(record, address, cells);
        }
    }

    void add_words(const hex_record& record, std::uint64_t address, std::uint64_t count) {
        const std::uint64_t digits = 2 * std::uint64_t{layout.bytes_per_word()};
        for (std::uint64_t index = 0; index < count; ++index) {
            plain.add(text_piece::kind::word, place_of(record, {hex_record::header + index * digits, digits}),
                      address + index, address + index);
        }
    }

    [[nodiscard]] span place_of(const hex_record& record, const hex_field& field) const {
        return record.span_of(contents, field.first, field.count);
    }
    void add(const hex_record& record, text_piece::kind what, const hex_field& field) const {
        if (field.count != 0) {
            plain.add(what, place_of(record, field));
        }
    }

    std::string_view contents;
    hex_layout layout;
    piece_output plain;
    byte_pieces bytes;
    hex_offset offset;
    bool has_record = false; ///< the text before the first record may be anything
};

} // namespace

void find_hex_pieces(std::string_view contents, const read_options& options, const read_result& ours,
                     const piece_taker& take) {
    if (!ours.image) {
        return; // the address unit or the word width is unknown
    }
    hex_piece_finder finder(contents, layout_of(ours), options.base.value_or(0), take);
    for (hex_parser parser(contents); parser.next();) {
        finder.take(parser.line());
    }
}

} // namespace kvrimage
