#include "kvrimage/formats/csv/csv_search.h"

#include "kvrimage/exchange/line_place.h"
#include "kvrimage/formats/csv/csv_cells.h"
#include "kvrimage/formats/piece_output.h"

namespace kvrimage {

certainty sniff_csv(std::string_view head) {
    return names_csv_columns(head) ? certainty::likely : certainty::no;
}

std::optional<place> find_csv_word(std::string_view contents, const read_options& options,
                                   std::uint64_t address) {
    std::optional<diagnostic> fault;
    const csv_value_rules rules = csv_rules_of(options, fault);
    const csv_layout layout = csv_layout_of(contents, options, rules, fault);
    const std::uint64_t in_file = address + options.base.value_or(0);
    std::optional<span> found;
    for_each_csv_cell(contents, layout, [&](const csv_cell& cell) {
        if (cell.what == csv_cell::kind::value && cell.address == in_file) {
            found = cell.where;
        }
    });
    return found ? std::optional(line_place(contents, *found)) : std::nullopt;
}

void find_csv_pieces(std::string_view contents, const read_options& options, const read_result& /*ours*/,
                     const piece_taker& take) {
    std::optional<diagnostic> fault;
    const csv_value_rules rules = csv_rules_of(options, fault);
    const csv_layout layout = csv_layout_of(contents, options, rules, fault);
    const piece_output pieces(take, options.base.value_or(0));
    std::optional<csv_cell> waiting; // an address preceded by words of its row
    const auto hand_out_waiting = [&] {
        if (waiting) {
            pieces.add(text_piece::kind::address, waiting->where, waiting->address);
            waiting.reset();
        }
    };
    for_each_csv_cell(contents, layout, [&](const csv_cell& cell) {
        const bool is_address =
            cell.what == csv_cell::kind::address || cell.what == csv_cell::kind::bad_address;
        if (is_address || (waiting && cell.where.offset > waiting->where.offset)) {
            hand_out_waiting();
        }
        if (is_address) {
            waiting = cell;
        } else if (cell.what == csv_cell::kind::value) {
            pieces.add(text_piece::kind::word, cell.where, cell.address);
        }
    });
    hand_out_waiting();
}

} // namespace kvrimage
