#include "tools/kvrmem/command_line/format_table.h"

#include "kvrimage/formats/registry.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::address_unit;
using kvrimage::format;

/// Returns the names whose condition is true.
std::vector<std::string_view> true_ones(std::initializer_list<std::pair<bool, std::string_view>> named) {
    std::vector<std::string_view> names;
    for (const auto& [is_true, name] : named) {
        if (is_true) {
            names.push_back(name);
        }
    }
    return names;
}

std::string listed_or_none(const std::vector<std::string_view>& names) {
    return names.empty() ? "-" : fmt::format("{}", fmt::join(names, ", "));
}

std::string extensions_of(const format& one) {
    std::string text;
    for (const std::string_view extension : one.extensions) {
        text += fmt::format("{}.{}", text.empty() ? "" : " ", extension);
    }
    return text.empty() ? "-" : text;
}

using table_row = std::vector<std::string>;

std::string aligned(std::span<const table_row> rows) {
    std::vector<std::size_t> widths(rows.front().size());
    for (const table_row& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], row[column].size());
        }
    }
    std::string text;
    for (const table_row& row : rows) {
        for (std::size_t column = 0; column + 1 < row.size(); ++column) {
            text += fmt::format("{:<{}}  ", row[column], widths[column]);
        }
        text += row.back() + "\n";
    }
    return text;
}

table_row short_row(const format& one) {
    return {std::string(one.id), std::string(one.title), extensions_of(one), listed_or_none(uses_of(one)),
            std::string(title_of(one.counts))};
}

table_row short_titles() {
    return {"NAME", "FORMAT", "EXTENSIONS", "USES", "ADDRESSES"};
}

} // namespace

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

std::string format_table() {
    std::vector<table_row> rows = {short_titles()};
    rows.front().insert(rows.front().end(), {"STATES", "HOLDS"});
    for (const format* one : kvrimage::formats()) {
        table_row row = short_row(*one);
        row.push_back(listed_or_none(stated_by(*one)));
        row.push_back(listed_or_none(held_by(*one)));
        rows.push_back(std::move(row));
    }
    return aligned(rows);
}

std::string short_format_table() {
    std::vector<table_row> rows = {short_titles()};
    for (const format* one : kvrimage::formats()) {
        rows.push_back(short_row(*one));
    }
    return aligned(rows);
}

} // namespace kvrmem
