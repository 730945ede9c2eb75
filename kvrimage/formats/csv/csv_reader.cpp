#include "kvrimage/formats/csv/csv_reader.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/csv/csv_cells.h"
#include "kvrimage/formats/csv/csv_layout.h"
#include "kvrimage/formats/csv/csv_values.h"
#include "kvrimage/formats/word_digits.h"
#include "kvrimage/formats/word_list.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

namespace kvrimage {

namespace {

/// Determines the smallest width for all values of a file.
class csv_widths {
public:
    explicit csv_widths(const csv_value_rules& value_rules) : rules(value_rules) {}

    void add(std::string_view text) {
        const csv_number number = scan_csv_number(text, rules);
        if (number.what != csv_number::kind::number) {
            return;
        }
        switch (number.digits_radix) {
        case radix::hex:
            widest = std::max(widest, std::uint64_t{number.digits.size()} * bits_per_hex_digit);
            break;
        case radix::bin:
            widest = std::max<std::uint64_t>(widest, number.digits.size());
            break;
        case radix::uns:
            widest_unsigned = std::max(widest_unsigned, bits_of(number));
            break;
        default:
            widest = std::max(widest, bits_of(number));
            has_negative = has_negative || number.digits.front() == '-';
        }
    }
    /// Returns nothing without values.
    [[nodiscard]] std::optional<std::uint32_t> width() const {
        if (widest == 0 && widest_unsigned == 0) {
            return std::nullopt;
        }
        const std::uint64_t decimal = widest_unsigned + (has_negative && widest_unsigned != 0 ? 1 : 0);
        return static_cast<std::uint32_t>(std::min<std::uint64_t>(std::max(widest, decimal), widest_word));
    }

private:
    std::uint64_t bits_of(const csv_number& number) {
        const auto fault = make_word(number.digits, number.digits_radix, 1, scratch);
        return fault ? fault->bits_needed : 1;
    }

    const csv_value_rules& rules;
    std::uint64_t widest = 0;
    std::uint64_t widest_unsigned = 0;
    bool has_negative = false;
    std::string scratch;
};

/// The places with the same fault, and the first cell.
struct csv_cause {
    places where;
    csv_cell first = {};

    void add(const csv_cell& cell) {
        if (where.empty()) {
            first = cell;
        }
        where.add(cell.where);
    }
};

class csv_reading {
public:
    csv_reading(std::string_view contents, const read_options& given)
        : text(contents),
          options(given),
          list(given.most_diagnostics, given.wants_repairs) {}

    read_result read() {
        std::optional<diagnostic> fault;
        rules = csv_rules_of(options, fault);
        if (!fault) {
            layout = csv_layout_of(text, options, rules, fault);
        }
        if (fault) {
            list.add(*std::move(fault));
        } else {
            read_cells();
        }
        result.facts.data_radix = rules.digits;
        result.diagnostics = list.finish(text);
        result.facts.diagnostics_left_out = list.left_out();
        return std::move(result);
    }

private:
    void read_cells() {
        stated_sizes stated;
        stated.width = width();
        bits = stated.width.value_or(1);
        words.emplace(text, options, radix::hex, stated);
        for_each_csv_cell(text, layout, [this](const csv_cell& cell) { take(cell); });
        report();
        words->finish(list, result);
        result.facts.width_source = options.width || rules.fixed || !stated.width ? "" : "the widest value";
    }

    std::optional<std::uint32_t> width() {
        if (options.width || rules.fixed) {
            return options.width ? options.width : rules.fixed->bits();
        }
        csv_widths widths(rules);
        for_each_csv_cell(text, layout, [&](const csv_cell& cell) {
            if (cell.what == csv_cell::kind::value) {
                widths.add(cell.where.in(text));
            }
        });
        return widths.width();
    }

    void take(const csv_cell& cell) {
        if (cell.what == csv_cell::kind::address) {
            return;
        }
        if (cell.what != csv_cell::kind::value) {
            causes[static_cast<std::size_t>(cell.what)].add(cell);
        } else if (rules.fixed ? make_fixed(cell) : make_whole(cell)) {
            if (cell.address) {
                words->add(*cell.address, word, cell.where);
            }
            return;
        }
        if (cell.address && (cell.what == csv_cell::kind::value || cell.what == csv_cell::kind::empty)) {
            words->add_unreadable(*cell.address, cell.where);
        }
    }
    bool make_fixed(const csv_cell& cell) {
        const auto fault =
            make_fixed_point(cell.where.in(text), *rules.fixed, rules.how, rules.saturate, word);
        if (fault) {
            (*fault == fixed_point_fault::syntax ? bad_values : out_of_range).add(cell);
        }
        return !fault;
    }
    bool make_whole(const csv_cell& cell) {
        const csv_number number = scan_csv_number(cell.where.in(text), rules);
        if (number.what != csv_number::kind::number) {
            (number.what == csv_number::kind::fraction ? fractions : bad_values).add(cell);
            return false;
        }
        const auto fault = make_word(number.digits, number.digits_radix, bits, word);
        if (fault) {
            first_bits = too_wide.where.empty() ? fault->bits_needed : first_bits;
            most_bits = std::max(most_bits, fault->bits_needed);
            too_wide.add(cell);
        }
        return !fault;
    }

    [[nodiscard]] const csv_cause& cause_of(csv_cell::kind what) const {
        return causes[static_cast<std::size_t>(what)];
    }
    void report() {
        report_rows();
        if (!bad_values.where.empty()) {
            report_bad_values();
        }
        if (!fractions.where.empty()) {
            list.add(diagnose::csv_fraction(fractions.where, fractions.first.where.in(text)));
        }
        if (!out_of_range.where.empty()) {
            list.add(diagnose::csv_range(
                out_of_range.where, out_of_range.first.where.in(text),
                fmt::format("fixed:{}.{}", rules.fixed->integer_bits, rules.fixed->fraction_bits),
                rules.fixed->integer_bits - 1, rules.fixed->integer_bits - 1));
        }
        if (!too_wide.where.empty()) {
            list.add(diagnose::too_wide(too_wide.where, too_wide.first.where.in(text), first_bits, bits,
                                        "--width", most_bits));
        }
    }
    void report_rows() {
        if (const csv_cause& cause = cause_of(csv_cell::kind::bad_address); !cause.where.empty()) {
            list.add(diagnose::csv_address(cause.where, cause.first.where.in(text)));
        }
        if (const csv_cause& cause = cause_of(csv_cell::kind::empty); !cause.where.empty()) {
            list.add(diagnose::csv_empty(cause.where, cause.first.number + 1));
        }
        if (const csv_cause& cause = cause_of(csv_cell::kind::extra); !cause.where.empty()) {
            list.add(diagnose::csv_fields(cause.where, cause.first.number, layout.columns));
        }
        if (const csv_cause& cause = cause_of(csv_cell::kind::after_quote); !cause.where.empty()) {
            list.add(diagnose::csv_after_quote(cause.where, cause.first.where.in(text)));
        }
        if (const csv_cause& cause = cause_of(csv_cell::kind::open_quote); !cause.where.empty()) {
            list.add(diagnose::csv_quote(cause.where));
        }
    }
    void report_bad_values() {
        std::string kind = "number";
        std::string_view instead = "write numbers as 31, -5, 0x1F or 0b11111";
        if (rules.fixed) {
            kind = "decimal number";
            instead = "write numbers as -1.5, .25 or 2e-3";
        } else if (rules.digits) {
            kind = fmt::format("{} number", adjective_of(*rules.digits));
            instead = rules.digits == radix::uns ? "use --value-radix dec for signed numbers" : "";
        }
        list.add(diagnose::csv_value(bad_values.where, bad_values.first.where.in(text), kind, instead));
    }

    std::string_view text;
    const read_options& options;
    diagnostic_list list;
    read_result result;
    csv_value_rules rules;
    csv_layout layout;
    std::uint32_t bits = 1;
    std::optional<word_list> words;
    std::string word;
    std::array<csv_cause, 7> causes; ///< by csv_cell::kind
    csv_cause bad_values;
    csv_cause fractions;
    csv_cause out_of_range;
    csv_cause too_wide;
    std::uint64_t first_bits = 0; ///< needed by the first value that is too wide
    std::uint64_t most_bits = 0;
};

} // namespace

read_result read_csv(std::string_view contents, const read_options& options) {
    return csv_reading(contents, options).read();
}

} // namespace kvrimage
