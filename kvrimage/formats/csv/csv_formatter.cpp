#include "kvrimage/formats/csv/csv_formatter.h"

#include "kvrimage/edit/text_lines.h"
#include "kvrimage/formats/csv/csv_layout.h"
#include "kvrimage/formats/csv/csv_parser.h"
#include "kvrimage/formats/csv/csv_values.h"
#include "kvrimage/layout/aligned_lines.h"
#include "kvrimage/layout/canonical_digits.h"
#include "kvrimage/layout/source_lines.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace kvrimage {

namespace {

/// The parts of a number of a table or address: "0x1F". A table with invalid numbers is broken and not laid
/// out.
struct csv_digits {
    std::string_view prefix; ///< as written: "0x", "0b" or ""
    csv_number number;

    /// Returns whether numbers of this radix are padded with zeros: hexadecimal and binary ones, not decimal
    /// ones.
    [[nodiscard]] bool has_length() const {
        return number.digits_radix == radix::hex || number.digits_radix == radix::bin;
    }
};

csv_digits csv_digits_of(std::string_view text, const csv_value_rules& rules) {
    csv_digits found{"", scan_csv_number(text, rules)};
    if (found.has_length() && found.number.digits.size() != text.size()) {
        found.prefix = found.number.digits_radix == radix::hex ? "0x" : "0b";
    }
    return found;
}

/// The maximum digits of the hexadecimal and binary numbers of a column.
class csv_lengths {
public:
    void see(const csv_digits& found) {
        if (found.has_length()) {
            std::size_t& longest = of(found);
            longest = std::max(longest, found.number.digits.size());
        }
    }
    /// Returns the digits of the longest number, since they may determine the word width.
    [[nodiscard]] std::size_t digits_of(const csv_digits& found) const {
        if (!found.has_length()) {
            return 1;
        }
        const std::size_t longest = found.number.digits_radix == radix::hex ? hexadecimal : binary;
        return longest <= most_canonical_digits ? longest : digits_of_the_text;
    }

private:
    [[nodiscard]] std::size_t& of(const csv_digits& found) {
        return found.number.digits_radix == radix::hex ? hexadecimal : binary;
    }

    std::size_t hexadecimal = 0;
    std::size_t binary = 0;
};

/// The roles of the columns of a table and the lengths of their numbers.
class csv_columns_in_use {
public:
    csv_columns_in_use(const csv_layout& of_file, const csv_value_rules& of_file_values)
        : layout(of_file),
          rules(of_file_values) {}

    void see(std::size_t column, std::string_view field) {
        if (const auto found = digits_of(column, field)) {
            lengths_of(column).see(*found);
        }
    }
    /// Returns the laid-out text of @p field; unchanged if it is not a number of the memory.
    [[nodiscard]] std::string written(std::size_t column, std::string_view field) {
        const auto found = digits_of(column, field);
        if (!found) {
            return std::string(field);
        }
        const std::size_t digits = lengths_of(column).digits_of(*found);
        return std::string(found->prefix) + canonical_number(found->number.digits, digits);
    }

private:
    /// Returns nothing for fields of other columns, and for fractions, which stay unchanged.
    [[nodiscard]] std::optional<csv_digits> digits_of(std::size_t column, std::string_view field) const {
        if (column == layout.address) {
            return csv_digits_of(field, {});
        }
        const bool is_value = layout.value.value_or(column) == column;
        if (is_value && !rules.fixed) {
            return csv_digits_of(field, rules);
        }
        return std::nullopt;
    }
    [[nodiscard]] csv_lengths& lengths_of(std::size_t column) {
        return column == layout.address ? of_addresses : of_values;
    }

    const csv_layout& layout;
    const csv_value_rules& rules;
    csv_lengths of_addresses;
    csv_lengths of_values;
};

/// Calls functions with the column and place of each field, and with the end of each row.
template <class Field, class Row>
class csv_walk final : public csv_sink {
public:
    csv_walk(Field&& of_field, Row&& of_row) : field(of_field), row(of_row) {}

    void take(const csv_piece& piece) override {
        if (piece.what == csv_piece::kind::field) {
            field(column, piece.where);
            ++column;
        } else { // csv_piece::kind::row_end; a table with other pieces is broken
            row();
            column = 0;
        }
    }

private:
    Field& field;
    Row& row;
    std::size_t column = 0;
};

template <class Field, class Row>
void for_each_csv_field(std::string_view contents, Field&& field, Row&& row) {
    csv_walk<Field, Row> walk(std::forward<Field>(field), std::forward<Row>(row));
    csv_parser(contents, walk).parse();
}

bool has_quotes(std::string_view contents, const span& field) {
    return field.offset != 0 && contents[field.offset - 1] == '"';
}

/// Returns whether @p field has another meaning without quotation marks.
bool needs_quotes(std::string_view field) {
    return field.empty() || field.starts_with(' ') || field.ends_with(' ') ||
           field.find_first_of("\t;,\r\n\"") != std::string_view::npos;
}

class csv_formatter {
public:
    csv_formatter(std::string_view contents, const csv_layout& layout, const csv_value_rules& rules)
        : text(contents),
          columns(layout, rules),
          has_header(layout.has_header),
          separator(1, csv_separator(contents)),
          source(contents),
          lines(line_end_at(contents, 0)) {}

    std::string lay_out() {
        bool in_header = has_header;
        for_each_csv_field(
            text,
            [&](std::size_t column, const span& where) {
                if (!in_header) {
                    columns.see(column, where.in(text));
                }
            },
            [&] { in_header = false; });
        in_header = has_header;
        for_each_csv_field(
            text,
            [&](std::size_t column, const span& where) {
                begin_field(column, where);
                const std::string_view field = where.in(text);
                add(in_header ? std::string(field) : columns.written(column, field),
                    has_quotes(text, where) && needs_quotes(field));
            },
            [&] { in_header = false; });
        return std::string(byte_order_mark_of(text)) + lines.finish();
    }

private:
    void begin_field(std::size_t column, const span& where) {
        if (column != 0) {
            lines.append(separator);
        } else {
            if (source.gap_before(where.offset) == line_gap::blank) {
                lines.separate();
            }
            lines.begin_line("");
        }
        source.pass(where);
    }
    void add(const std::string& field, bool with_quotes) {
        lines.append(with_quotes ? "\"" : "");
        lines.append(field);
        lines.append(with_quotes ? "\"" : "");
    }

    std::string_view text;
    csv_columns_in_use columns;
    bool has_header;
    std::string separator;
    source_lines source;
    aligned_lines lines;
};

} // namespace

std::string lay_out_csv(std::string_view contents, const read_options& options, const read_result& /*ours*/) {
    std::optional<diagnostic> fault;
    const csv_value_rules rules = csv_rules_of(options, fault);
    const csv_layout layout = csv_layout_of(contents, options, rules, fault);
    return csv_formatter(contents, layout, rules).lay_out();
}

} // namespace kvrimage
