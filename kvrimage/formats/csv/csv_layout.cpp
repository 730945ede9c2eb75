#include "kvrimage/formats/csv/csv_layout.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/csv/csv_parser.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

constexpr std::array<std::string_view, 3> address_names = {"address", "addr", "offset"};
constexpr std::array<std::string_view, 3> value_names = {"value", "data", "word"};

using csv_row = std::vector<std::string_view>;

/// Collects the fields of a row.
class csv_row_sink final : public csv_sink {
public:
    explicit csv_row_sink(std::string_view contents) : text(contents) {}
    void take(const csv_piece& piece) override {
        if (piece.what == csv_piece::kind::field) {
            row.push_back(piece.where.in(text));
        }
    }
    [[nodiscard]] csv_row take_row() { return std::exchange(row, {}); }

private:
    std::string_view text;
    csv_row row;
};

/// Returns the first two rows; missing rows are empty.
std::array<csv_row, 2> first_csv_rows(std::string_view contents) {
    std::array<csv_row, 2> rows;
    csv_row_sink sink(contents);
    csv_parser parser(contents, sink);
    for (csv_row& each : rows) {
        parser.parse_row();
        each = sink.take_row();
    }
    return rows;
}

bool begins_with_letter(std::string_view field) {
    return !field.empty() &&
           (kvr::is_upper_case(field.front()) || kvr::is_lower_case(field.front()) || field.front() == '_');
}

bool is_csv_header(const csv_row& row, const csv_value_rules& rules) {
    return std::ranges::any_of(row, [&rules](std::string_view field) {
        // Fractions do not begin with a letter.
        return begins_with_letter(field) &&
               (rules.fixed || scan_csv_number(field, rules).what == csv_number::kind::none);
    });
}

std::optional<std::size_t> column_of_name(const csv_row& header, std::span<const std::string_view> names) {
    for (std::size_t column = 0; column < header.size(); ++column) {
        for (const std::string_view name : names) {
            if (kvr::equal_ignoring_case(header[column], name)) {
                return column;
            }
        }
    }
    return std::nullopt;
}

diagnostic no_column(std::string_view wanted, const csv_row& first, bool has_header) {
    std::string columns = fmt::format("it has {}, without names: give a number from 1 on", first.size());
    if (has_header) {
        columns = "its columns are";
        for (const std::string_view name : first) {
            columns += fmt::format("{} {}", columns.ends_with("are") ? "" : ",", name);
        }
    }
    return diagnose::csv_column({}, wanted, columns);
}

/// Returns the column named @p wanted, or with this number, counted from 1.
std::optional<std::size_t> find_csv_column(std::string_view wanted, const csv_row& first, bool has_header) {
    if (const auto named =
            has_header ? column_of_name(first, std::span(&wanted, 1)) : std::optional<std::size_t>()) {
        return named;
    }
    const auto number = csv_address_of(wanted);
    if (number && *number != 0 && *number <= first.size()) {
        return *number - 1;
    }
    return std::nullopt;
}

/// Returns whether the first of several columns counts words, like addresses.
bool counts_words(const csv_row& first, const csv_row& second) {
    if (second.empty()) {
        return false;
    }
    const auto one = csv_address_of(first.front());
    const auto next = csv_address_of(second.front());
    return one && next && *next == *one + (first.size() - 1);
}

/// Finds the columns by name if the options do not state them.
class csv_columns {
public:
    csv_columns(const std::array<csv_row, 2>& first_rows, const read_options& given, bool header)
        : rows(first_rows),
          options(given) {
        layout.has_header = header;
        layout.columns = rows[0].size();
    }

    csv_layout find(std::optional<diagnostic>& fault) {
        const auto address = chosen(options.choices, "address-column");
        const auto value = chosen(options.choices, "value-column");
        if (address != "none") {
            layout.address = find_one(address, address_names, fault);
        }
        layout.value = find_one(value, value_names, fault);
        if (!fault && !layout.value && is_unclear(address.has_value())) {
            fault = diagnose::csv_columns_unclear({});
        }
        return layout;
    }

private:
    std::optional<std::size_t> find_one(std::optional<std::string_view> wanted,
                                        std::span<const std::string_view> names,
                                        std::optional<diagnostic>& fault) const {
        if (!wanted) {
            return layout.has_header ? column_of_name(rows[0], names) : std::nullopt;
        }
        const auto found = find_csv_column(*wanted, rows[0], layout.has_header);
        if (!found) {
            fault = no_column(*wanted, rows[0], layout.has_header);
        }
        return found;
    }
    /// Returns whether several columns may hold the values, or one of them addresses.
    [[nodiscard]] bool is_unclear(bool address_is_said) const {
        const std::size_t others = layout.columns - (layout.address ? 1 : 0);
        if (layout.columns < 2 || others == 1) {
            return false;
        }
        if (layout.has_header) {
            return layout.address ? !has_numbered_columns() : !address_is_said;
        }
        return !address_is_said && counts_words(rows[0], rows[1]);
    }
    /// Returns whether the columns are named by their offsets from the address.
    [[nodiscard]] bool has_numbered_columns() const {
        for (std::size_t column = 0; column < layout.columns; ++column) {
            if (column != layout.address && !csv_address_of(rows[0][column])) {
                return false;
            }
        }
        return true;
    }

    const std::array<csv_row, 2>& rows;
    const read_options& options;
    csv_layout layout;
};

} // namespace

csv_layout csv_layout_of(std::string_view contents, const read_options& options, const csv_value_rules& rules,
                         std::optional<diagnostic>& fault) {
    const std::array<csv_row, 2> rows = first_csv_rows(contents);
    return csv_columns(rows, options, is_csv_header(rows[0], rules)).find(fault);
}

bool names_csv_columns(std::string_view contents) {
    const std::array<csv_row, 2> rows = first_csv_rows(contents);
    return column_of_name(rows[0], address_names) && column_of_name(rows[0], value_names);
}

} // namespace kvrimage
