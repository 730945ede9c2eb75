#include "tests/models/assignment_file_operations.h"

#include "tools/kvrmem/edit/assignment_file.h"
#include "tools/kvrmem/edit/edit_operand.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace kvr_test {

namespace {

using kvrmem::assignment_line;
using kvrmem::edit_operand;
using kvrmem::edit_values;

constexpr const char* operand_example = "ADDRESS=VALUE";

void expect_of_line(bool holds, std::string_view what, std::string_view line) {
    if (!holds) {
        throw std::logic_error(fmt::format("{}: {}", what, line));
    }
}

/// The end of the text that begins at @p begin of @p line: after its closing quote, or the end of the line.
std::size_t end_of_text(std::string_view line, std::size_t begin) {
    std::size_t at = begin + 1;
    while (at < line.size() && line[at] != '"') {
        at += line[at] == '\\' ? 2U : 1U;
    }
    return std::min(at + 1, line.size());
}

std::string plain_line(std::string_view line) {
    std::string kept;
    for (std::size_t at = 0; at < line.size() && line[at] != '#';) {
        const std::size_t end = line[at] == '"' ? end_of_text(line, at) : at + 1;
        kept += line.substr(at, end - at);
        at = end;
    }
    return kept;
}

std::vector<assignment_line> plain_lines(const std::string& path, std::string_view contents) {
    constexpr std::string_view blanks = " \t\r";
    std::vector<assignment_line> lines;
    std::string line;
    std::size_t number = 1;
    for (std::size_t at = 0; at <= contents.size(); ++at) {
        if (at != contents.size() && contents[at] != '\n') {
            line += contents[at];
            continue;
        }
        std::string kept = plain_line(std::exchange(line, ""));
        while (!kept.empty() && blanks.find(kept.back()) != std::string_view::npos) {
            kept.pop_back();
        }
        std::size_t column = 1;
        while (!kept.empty() && blanks.find(kept.front()) != std::string_view::npos) {
            kept.erase(0, 1);
            ++column;
        }
        if (!kept.empty()) {
            lines.push_back({kept, fmt::format("{}:{}:{}", path, number, column)});
        }
        ++number;
    }
    return lines;
}

/// The result of @p make; no value if it reports wrong usage with a message. No other refusal is allowed.
template <class Make>
auto unless_refused(std::string_view line, const Make& make) -> std::optional<decltype(make())> {
    try {
        return make();
    } catch (const kvrmem::tool_error& error) {
        expect_of_line(error.code() == kvrmem::exit_code::wrong_usage && !error.message().empty(),
                       "an assignment is refused as something else", line);
        return std::nullopt;
    }
}

/// The assignment of @p operand in one plain form.
std::string written_plainly(const edit_operand& operand, const edit_values& values) {
    std::string text = fmt::format("{}..{}", operand.addresses.first, operand.addresses.last);
    text += operand.field ? fmt::format("[{}:{}]", operand.field->high, operand.field->low) : "";
    for (std::size_t index = 0; index < values.words.size(); ++index) {
        text += index == 0 ? "=" : ",";
        text += "0b" + values.words[index].to_text(kvrimage::radix::bin).value();
    }
    return text;
}

void compare_operand(std::string_view line, std::uint32_t width, bool are_lists) {
    const auto operand =
        unless_refused(line, [&] { return kvrmem::parse_edit_operand(line, operand_example); });
    if (!operand) {
        return;
    }
    expect_of_line(operand->addresses.first <= operand->addresses.last, "a range that descends", line);
    const auto values = unless_refused(
        line, [&] { return values_of(*operand, width, {.saturate = width == 16, .are_lists = are_lists}); });
    if (!values) {
        return;
    }
    expect_of_line(!values->words.empty(), "an assignment without a value", line);
    for (const kvrimage::word& each : values->words) {
        expect_of_line(each.width() == operand->value_width(width), "the width of a value", line);
    }
    const std::string written = written_plainly(*operand, *values);
    const edit_operand again = kvrmem::parse_edit_operand(written, operand_example);
    expect_of_line(again.addresses == operand->addresses, "the addresses, written again", line);
    expect_of_line(again.field.has_value() == operand->field.has_value(), "the bits, written again", line);
    expect_of_line(values_of(again, width, {.are_lists = true}).words == values->words,
                   "the values, written again", line);
}

} // namespace

void compare_assignment_file(const std::string& path, std::string_view contents) {
    const std::vector<assignment_line> lines = kvrmem::read_assignment_file(path);
    const std::vector<assignment_line> expected = plain_lines(path, contents);
    expect_of_line(lines.size() == expected.size(), "how many lines there are", contents);
    for (std::size_t index = 0; index < lines.size(); ++index) {
        expect_of_line(lines[index].operand == expected[index].operand, "an assignment", contents);
        expect_of_line(lines[index].place == expected[index].place, "the place of an assignment", contents);
        for (const std::uint32_t width : {1U, 8U, 16U, 70U}) {
            compare_operand(lines[index].operand, width, false);
            compare_operand(lines[index].operand, width, true);
        }
    }
}

void assignment_file_operations::step() {
    constexpr std::array<std::string_view, 40> pieces = {
        "0",     "7",          "0x10", "0b1X", "12",    "..",           "[",  "]",    "[7:4]",  "[3]",
        "=",     "=",          "=",    ",",    " ",     "\t",           "\r", "#",    "# c",    "\"",
        "\"a\"", "\"v1.2.3\"", "\\\"", "\\",   "\\x41", "\\n",          "\n", "\n",   "fixed:", "1.15:",
        "8.8:",  "0.5",        "-1",   "-",    "_",     "\xE2\x88\x92", "FF", "0xFF", "5=1\n",  "0..3=1,2\n"};
    std::string contents;
    for (std::uint32_t count = chosen.below(25); count > 0; --count) {
        contents += chosen.one_of(pieces);
    }
    compare_assignment_file(folder.write("assignments", contents), contents);
}

} // namespace kvr_test
