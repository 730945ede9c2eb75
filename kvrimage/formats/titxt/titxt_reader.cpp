#include "kvrimage/formats/titxt/titxt_reader.h"

#include "kvrimage/bytes/byte_blocks.h"
#include "kvrimage/bytes/found_byte.h"
#include "kvrimage/bytes/words_of_bytes.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/diagnostics/places.h"
#include "kvrimage/edit/text_lines.h"
#include "kvrimage/formats/foreign_content.h"
#include "kvrimage/formats/titxt/titxt_format.h"
#include "kvrimage/formats/titxt/titxt_parser.h"

#include <utility>

namespace kvrimage {

namespace {

/// Where the byte at @p address is set last.
span find_titxt_byte(std::string_view contents, std::uint64_t address) {
    span found;
    titxt_address addresses;
    titxt_parser parser(contents);
    while (parser.next()) {
        const titxt_piece& piece = parser.piece();
        const auto first = addresses.take(piece);
        if (piece.what == titxt_piece::kind::bytes && first && *first <= address &&
            address - *first < piece.bytes.size()) {
            found = span_of_titxt_byte(contents, piece, address - *first);
        }
    }
    return found;
}

class titxt_reading {
public:
    titxt_reading(std::string_view file, const read_options& given)
        : contents(file),
          options(given),
          list(given.most_diagnostics, given.wants_repairs),
          blocks(file.size() / 2 + 1) {}

    read_result read() {
        titxt_parser parser(contents);
        while (parser.next()) {
            take(parser.piece());
        }
        read_result result;
        result.facts.as = &titxt_format;
        if (!has_content) {
            list.add(foreign_content(contents).value_or(diagnose::not_titxt({})));
        } else {
            report();
            const bool has_fault = !bad_addresses.empty() || !bad_bytes.empty() || !homeless.empty();
            make_words_beside_faults(
                has_fault, blocks, options,
                [this](std::uint64_t address) { return find_titxt_byte(contents, address); }, list, result);
        }
        finish_byte_reading(contents, options, list, result);
        return result;
    }

private:
    void take(const titxt_piece& piece) {
        if (has_end) {
            after_end.add(piece.where);
            return;
        }
        const auto address = addresses.take(piece);
        switch (piece.what) {
        case titxt_piece::kind::address:
            has_address = has_content = true;
            break;
        case titxt_piece::kind::bytes:
            has_content = true;
            read_bytes(piece, address);
            break;
        case titxt_piece::kind::end:
            has_end = has_content = true;
            break;
        case titxt_piece::kind::bad_address:
            has_address = true;
            bad_addresses.add(piece.where);
            break;
        default: // titxt_piece::kind::bad_byte
            bad_bytes.add(piece.where);
            break;
        }
    }

    void read_bytes(const titxt_piece& piece, std::optional<std::uint64_t> address) {
        if (address) {
            piece.bytes.copy(blocks.room_for(*address, piece.bytes.size()), piece.bytes.size());
        } else if (!has_address && homeless.empty()) {
            homeless.add({piece.where.offset, 2});
        }
    }

    void report() {
        if (!bad_addresses.empty()) {
            list.add(diagnose::titxt_address(bad_addresses, text_of_first(bad_addresses)));
        }
        if (!bad_bytes.empty()) {
            list.add(diagnose::titxt_byte(bad_bytes, text_of_first(bad_bytes)));
        }
        if (!homeless.empty()) {
            list.add(diagnose::titxt_no_address(homeless));
        }
        if (!after_end.empty()) {
            list.add(diagnose::titxt_after_end(after_end, text_of_first(after_end)));
        }
        if (!has_end) {
            diagnostic found = diagnose::titxt_no_end({});
            found.fix = {{contents.size(), 0, as_last_line(contents, "q")}};
            found.repair = "a final 'q' is put after the last line";
            list.add(std::move(found));
        }
    }

    [[nodiscard]] std::string_view text_of_first(const places& all) const {
        return all.first().front().in(contents);
    }

    std::string_view contents;
    const read_options& options;
    diagnostic_list list;
    byte_blocks blocks;
    titxt_address addresses;
    places bad_addresses, bad_bytes, homeless, after_end;
    bool has_content = false;
    bool has_address = false;
    bool has_end = false;
};

} // namespace

read_result read_titxt(std::string_view contents, const read_options& options) {
    return titxt_reading(contents, options).read();
}

std::optional<place> find_titxt_word(std::string_view contents, const read_options& options,
                                     std::uint64_t address) {
    return find_byte_of_word(contents, options, address,
                             [contents](std::uint64_t byte) { return find_titxt_byte(contents, byte); });
}

certainty sniff_titxt(std::string_view head) {
    titxt_parser parser(head);
    if (!parser.next() || parser.piece().what != titxt_piece::kind::address) {
        return certainty::no;
    }
    bool has_bytes = false;
    while (parser.next()) {
        const titxt_piece& piece = parser.piece();
        const bool is_cut = head.size() == sniffed_bytes && piece.where.end() == head.size();
        switch (piece.what) {
        case titxt_piece::kind::end:
            return has_bytes ? certainty::certain : certainty::possible;
        case titxt_piece::kind::bad_address:
        case titxt_piece::kind::bad_byte:
            return has_bytes && is_cut ? certainty::possible : certainty::no;
        case titxt_piece::kind::address:
            break;
        default: // titxt_piece::kind::bytes
            has_bytes = true;
            break;
        }
    }
    return has_bytes ? certainty::possible : certainty::no;
}

} // namespace kvrimage
