#include "kvrimage/formats/csv/csv_cells.h"

namespace kvrimage {

namespace {

class csv_cell_sink final : public csv_sink {
public:
    csv_cell_sink(std::string_view contents, const csv_layout& columns,
                  const std::function<void(const csv_cell&)>& target)
        : text(contents),
          layout(columns),
          taker(target),
          in_header(columns.has_header) {}

    void take(const csv_piece& piece) override {
        switch (piece.what) {
        case csv_piece::kind::field:
            fields.push_back(piece.where);
            break;
        case csv_piece::kind::after_quote:
            hand_out(csv_cell::kind::after_quote, piece.where, 0);
            break;
        case csv_piece::kind::open_quote:
            hand_out(csv_cell::kind::open_quote, piece.where, 0);
            has_open_quote = true;
            break;
        default: // csv_piece::kind::row_end
            if (!in_header && !has_open_quote) {
                read_row(piece.where);
            }
            in_header = false;
            fields.clear();
            break;
        }
    }

private:
    void read_row(const span& end) {
        if (fields.size() > layout.columns) {
            hand_out(csv_cell::kind::extra, fields[layout.columns], fields.size());
            return;
        }
        if (layout.address) {
            read_address(field_at(*layout.address, end));
        }
        if (layout.value) {
            read_value(field_at(*layout.value, end), *layout.value);
            return;
        }
        for (std::size_t column = 0; column < fields.size(); ++column) {
            if (column != layout.address) {
                read_value(fields[column], column);
            }
        }
    }
    void read_address(const span& where) {
        address = csv_address_of(where.in(text));
        hand_out(address ? csv_cell::kind::address : csv_cell::kind::bad_address, where, *layout.address);
    }
    void read_value(const span& where, std::size_t column) {
        hand_out(where.length != 0 ? csv_cell::kind::value : csv_cell::kind::empty, where, column);
        if (address) {
            ++*address;
        }
    }
    /// The field of @p column; nothing at the end of the row where it has none.
    [[nodiscard]] span field_at(std::size_t column, const span& end) const {
        return column < fields.size() ? fields[column] : end;
    }
    void hand_out(csv_cell::kind what, const span& where, std::size_t number) {
        taker({what, where, address, number});
    }

    std::string_view text;
    const csv_layout& layout;
    const std::function<void(const csv_cell&)>& taker;
    bool in_header;
    bool has_open_quote = false;
    std::vector<span> fields; ///< of the row
    std::optional<std::uint64_t> address = 0;
};

} // namespace

void for_each_csv_cell(std::string_view contents, const csv_layout& layout,
                       const std::function<void(const csv_cell&)>& take) {
    csv_cell_sink sink(contents, layout, take);
    csv_parser(contents, sink).parse();
}

} // namespace kvrimage
