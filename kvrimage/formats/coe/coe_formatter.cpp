#include "kvrimage/formats/coe/coe_formatter.h"

#include "kvrimage/formats/coe/coe_parser.h"
#include "kvrimage/formats/coe/coe_reader.h"
#include "kvrimage/layout/canonical_digits.h"
#include "kvrimage/layout/list_layout.h"

#include <fmt/format.h>

namespace kvrimage {

namespace {

class coe_formatter final : public coe_sink {
public:
    coe_formatter(std::string_view contents, std::uint32_t word_width)
        : text(contents),
          width(word_width),
          layout(contents) {}

    void take(const coe_piece& piece) override {
        switch (piece.what) {
        case coe_piece::kind::comment:
            layout.add_comment(piece.where, true);
            break;
        case coe_piece::kind::radix:
            digits = canonical_word_digits(*coe_radix_of(piece.where.in(text)), width);
            layout.add(piece.where, fmt::format("memory_initialization_radix={};", piece.where.in(text)));
            break;
        case coe_piece::kind::vector:
            layout.add(piece.where, "memory_initialization_vector=", true);
            break;
        case coe_piece::kind::word:
            layout.append(is_first ? "" : ",");
            layout.add(piece.where, canonical_number(piece.where.in(text), digits), is_first);
            is_first = false;
            break;
        case coe_piece::kind::end:
            layout.append(";");
            break;
        default: // commas, which separate words, and names, which belong to their values
            break;
        }
    }
    [[nodiscard]] std::string finish() { return layout.finish(); }

private:
    std::string_view text;
    std::uint32_t width;
    list_layout layout;
    std::size_t digits = 1;
    bool is_first = true;
};

} // namespace

std::string lay_out_coe(std::string_view contents, const read_options& /*options*/, const read_result& ours) {
    coe_formatter formatter(contents, ours.image->width());
    coe_parser(contents, formatter).parse();
    return formatter.finish();
}

} // namespace kvrimage
