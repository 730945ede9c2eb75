#include "kvrimage/formats/titxt/titxt_formatter.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/formats/titxt/titxt_parser.h"
#include "kvrimage/layout/list_layout.h"

#include <fmt/format.h>

namespace kvrimage {

namespace {

class titxt_formatter {
public:
    explicit titxt_formatter(std::string_view contents) : text(contents), layout(contents) {}

    void take(const titxt_piece& piece) {
        if (piece.what == titxt_piece::kind::bytes) {
            add_bytes(piece);
            return;
        }
        const bool is_end = piece.what == titxt_piece::kind::end;
        layout.add(piece.where, is_end ? "q" : fmt::format("@{:04X}", piece.address), true);
        begins_line = true;
    }
    [[nodiscard]] std::string finish() { return layout.finish(); }

private:
    void add_bytes(const titxt_piece& piece) {
        for (std::uint64_t index = 0; index < piece.bytes.size(); ++index) {
            const span byte = span_of_titxt_byte(text, piece, index);
            layout.add(byte, kvr::to_upper_case(byte.in(text)), begins_line);
            begins_line = false;
        }
    }

    std::string_view text;
    list_layout layout;
    bool begins_line = false;
};

} // namespace

std::string lay_out_titxt(std::string_view contents, const read_options& /*options*/,
                          const read_result& /*ours*/) {
    titxt_formatter formatter(contents);
    for (titxt_parser parser(contents); parser.next();) {
        formatter.take(parser.piece());
    }
    return formatter.finish();
}

} // namespace kvrimage
