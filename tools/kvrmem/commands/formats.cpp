#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/surroundings/json.h"
#include "tools/kvrmem/surroundings/standard_output.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::address_unit;
using kvrimage::format;

/// The names of those that are true.
std::vector<std::string_view> true_ones(std::initializer_list<std::pair<bool, std::string_view>> named) {
    std::vector<std::string_view> names;
    for (const auto& [is_true, name] : named) {
        if (is_true) {
            names.push_back(name);
        }
    }
    return names;
}

std::vector<std::string_view> uses_of(const format& one) {
    return true_ones(
        {{one.read != nullptr, "read"}, {one.write != nullptr, "write"}, {one.edit != nullptr, "edit"}});
}

std::vector<std::string_view> stated_by(const format& one) {
    return true_ones({{one.states_width, "width"}, {one.states_depth, "depth"}, {one.states_radix, "radix"}});
}

std::vector<std::string_view> held_by(const format& one) {
    return true_ones(
        {{one.holds_unset, "gaps"}, {one.holds_dont_care, "don't-care bits"}, {one.holds_ranges, "ranges"}});
}

std::string_view title_of(address_unit counted) {
    switch (counted) {
    case address_unit::word:
        return "words";
    case address_unit::byte:
        return "bytes";
    case address_unit::either:
        break;
    }
    return "words or bytes";
}

std::string listed(const std::vector<std::string_view>& names) {
    return names.empty() ? "-" : fmt::format("{}", fmt::join(names, ", "));
}

std::string extensions_of(const format& one) {
    std::string text;
    for (const std::string_view extension : one.extensions) {
        text += fmt::format("{}.{}", text.empty() ? "" : " ", extension);
    }
    return text.empty() ? "-" : text;
}

constexpr std::size_t column_count = 7;
using table_row = std::array<std::string, column_count>;

std::vector<table_row> table_of_formats() {
    std::vector<table_row> rows = {{"NAME", "FORMAT", "EXTENSIONS", "USES", "ADDRESSES", "STATES", "HOLDS"}};
    for (const format* one : kvrimage::formats()) {
        rows.push_back({std::string(one->id), std::string(one->title), extensions_of(*one),
                        listed(uses_of(*one)), std::string(title_of(one->counts)), listed(stated_by(*one)),
                        listed(held_by(*one))});
    }
    return rows;
}

std::string as_text(const std::vector<table_row>& rows) {
    std::array<std::size_t, column_count> widths{};
    for (const table_row& row : rows) {
        for (std::size_t column = 0; column < column_count; ++column) {
            widths[column] = std::max(widths[column], row[column].size());
        }
    }
    std::string text;
    for (const table_row& row : rows) {
        for (std::size_t column = 0; column + 1 < column_count; ++column) {
            text += fmt::format("{:<{}}  ", row[column], widths[column]);
        }
        text += row.back() + "\n";
    }
    return text;
}

json_value as_json() {
    json_value all = json_value::array();
    for (const format* one : kvrimage::formats()) {
        all.push_back(
            {{"name", one->id},
             {"title", one->title},
             {"extensions", std::vector<std::string>(one->extensions.begin(), one->extensions.end())},
             {"uses", uses_of(*one)},
             {"addresses", title_of(one->counts)},
             {"states", stated_by(*one)},
             {"holds", held_by(*one)}});
    }
    return {{"schema", "kvrmem-formats-1"}, {"formats", std::move(all)}};
}

exit_code list_formats(const arguments& given) {
    if (given.json) {
        print_json(as_json());
    } else {
        print(as_text(table_of_formats()));
    }
    return exit_code::fine;
}

constexpr std::array formats_options = {option_id::json};

} // namespace

const command formats_command = {
    "formats",
    "",
    "List the file formats: their names, and what they can do and hold.",
    "  $ kvrmem formats\n"
    "  $ kvrmem formats --json | jq -r '.formats[].name'\n",
    "NAME is what --from and --to take. A format STATES what its files say of\n"
    "themselves, and HOLDS words that are not set (gaps), bits that are neither 0\n"
    "nor 1, and ranges of equal words in one line.\n",
    0,
    0,
    formats_options,
    list_formats};

} // namespace kvrmem
